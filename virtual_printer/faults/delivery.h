// What faults do to the way of an answer: when it comes, in which pieces, and whether the link lives.
#pragma once

#include "virtual_printer/faults/faults.h"
#include "virtual_printer/faults/steps.h"

#include <string>

namespace virtual_printer {

// Those of the answer, and not what a busy printer says before it.
std::string answerOf(const Steps& steps);
// What a serial line shows of a printer that has no power for so long.
Steps withoutPower(std::uint64_t fault, std::chrono::milliseconds duration);
// Nothing is said where something was done, and otherwise why nothing could be. Kinds that have nothing to do
// with the way of an answer say nothing.
std::string deliver(Steps& steps, const Faults::Hit& hit, bool isSerial);

} // namespace virtual_printer
