// Receipts once more: read as text, or printed as copies, which say what they are.
#pragma once

#include "virtual_printer/answers/question.h"
#include "virtual_printer/answers/replies.h"

namespace virtual_printer {

// The text of the last receipt; empty before the first one.
Reply lastReceipt(const Question& question);
Reply copyOfLastReceipt(const Question& question);
// By its number and, unless it is empty, its date.
Reply copyOfIssuedReceipt(const Question& question);

} // namespace virtual_printer
