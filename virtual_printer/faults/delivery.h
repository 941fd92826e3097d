// What faults do to the way of an answer: when it comes, in which pieces, and whether the link lives.
#pragma once

#include "virtual_printer/faults/faults.h"
#include "virtual_printer/faults/steps.h"

#include <string>

namespace virtual_printer {

// What a busy printer says over TCP.
inline constexpr char busyByte = 0x13;

std::string allBytesOf(const Steps& steps);
void deliver(Steps& steps, const Faults::Hit& hit, bool isSerial);

} // namespace virtual_printer
