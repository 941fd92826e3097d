// What faults do to the bytes of an answer: bits, blocks, what comes before and behind it.
#pragma once

#include "virtual_printer/faults/faults.h"

#include <string>

namespace virtual_printer {

// Nothing is said where something was done, and otherwise why nothing could be. `answerBefore` is the last
// one on this connection. Kinds that damage no bytes leave them as they are and say nothing.
std::string damage(std::string& answer, const Fault& fault, const std::string& answerBefore = {});
bool damagesAnswer(FaultKind kind);

// Why an answer with so few bytes is none that this could be done to.
std::string unfit(std::string_view whatIsNotThere, std::size_t size);

} // namespace virtual_printer
