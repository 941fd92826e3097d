// The sum of the daily closures of the clock's year, printed; it clears nothing.
#pragma once

#include "virtual_printer/answers/question.h"
#include "virtual_printer/answers/replies.h"

namespace virtual_printer {

Reply yearlyClosure(const Question& question);

} // namespace virtual_printer
