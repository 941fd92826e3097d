// The variables that tills can read, by their names.
#pragma once

#include "virtual_printer/fiscal_memory.h"

#include <optional>
#include <string>
#include <string_view>

namespace virtual_printer {

// Nothing when there is no such variable.
std::optional<std::string> variableText(std::string_view name, const FiscalMemory& memory,
                                        bool isReceiptOpen);

} // namespace virtual_printer
