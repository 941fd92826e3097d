// Receipts by what identifies them: their numbers, one a line.
#pragma once

#include "virtual_printer/answers/question.h"
#include "virtual_printer/answers/replies.h"

namespace virtual_printer {

Reply lookUpReceipts(const Question& question);

} // namespace virtual_printer
