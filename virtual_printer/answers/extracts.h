// Extracts of the journal and of the fiscal memory: which documents or closures lie within the bounds of a
// request. The command that prints an extract and the one that reads it select alike.
#pragma once

#include "virtual_printer/answers/question.h"
#include "virtual_printer/answers/replies.h"

namespace virtual_printer {

// All documents, or those of the day that this closure ends; 0 is all.
Reply wholeJournal(const Question& question);
Reply journalOfDay(const Question& question);
// The letter Z selects daily closures, any other receipts.
Reply documentsByDates(const Question& question);
Reply documentsByNumbers(const Question& question);
Reply receiptsByNumbers(const Question& question);
Reply receiptByNumber(const Question& question);

Reply closuresByDates(const Question& question);
Reply closuresByNumbers(const Question& question);

// The same, but only of the year that the last field names.
Reply archivedDocumentsByDates(const Question& question);
Reply archivedReceipt(const Question& question);
Reply archivedClosuresByDates(const Question& question);

} // namespace virtual_printer
