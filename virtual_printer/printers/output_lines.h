// What has happened at a printer, as lines for standard output.
#pragma once

#include "virtual_printer/printers/codes.h"
#include "virtual_printer/printers/station.h"

#include <string>
#include <vector>

namespace virtual_printer {

// A refusal has the number that the till was sent.
std::vector<std::string> linesFor(const Happened& event, std::size_t columns, const Codes& codes);

} // namespace virtual_printer
