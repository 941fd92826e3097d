// What reports and extracts look like on the paper.
#pragma once

#include "virtual_printer/fiscal_memory.h"
#include "virtual_printer/paper.h"

#include <string>
#include <string_view>

namespace virtual_printer {

// The day that runs, as it stands.
void printDay(Paper& paper, const FiscalMemory& memory, std::string_view title, std::string_view moment);
// The closures of a year ("2026").
void printYear(Paper& paper, const FiscalMemory& memory, std::string_view year);
// A text whose lines end with 0D 0A.
void printExtract(Paper& paper, std::string_view title, std::string_view text);
// The entry of a closure in extracts of the fiscal memory, as it would be printed.
std::string closureText(const Closure& closure);
// A receipt once more; it says that it is a copy.
void printCopy(Paper& paper, std::string_view receipt);

} // namespace virtual_printer
