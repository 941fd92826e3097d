// What faults do to the bytes of an answer: bits, blocks, what comes before and behind it.
#pragma once

#include "virtual_printer/faults/faults.h"

#include <string>

namespace virtual_printer {

// `answerBefore` is the last one on this connection.
std::string damaged(std::string answer, const Hits& hits, const std::string& answerBefore = {});

} // namespace virtual_printer
