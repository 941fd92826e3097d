// What has happened at a printer, as lines for standard output.
#pragma once

#include "virtual_printer/printers/station.h"

#include <string>
#include <vector>

namespace virtual_printer {

std::vector<std::string> linesFor(const Happened& event, std::size_t columns);

} // namespace virtual_printer
