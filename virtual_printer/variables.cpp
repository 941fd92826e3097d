#include "virtual_printer/variables.h"

#include "virtual_printer/money.h"

namespace virtual_printer {

std::optional<std::string> variableText(std::string_view name, const FiscalMemory& memory, bool isReceiptOpen)
{
    if (name == "RECEIPTS") {
        return std::to_string(memory.day().receipts);
    }
    if (name == "TURNOVER") {
        return formatCents(memory.day().turnover());
    }
    if (name == "RECEIPTS_EVER") {
        return std::to_string(memory.ever().receipts);
    }
    if (name == "TURNOVER_EVER") {
        return formatCents(memory.ever().turnover());
    }
    if (name == "CLOSURES") {
        return std::to_string(memory.closures().size());
    }
    if (name == "STATE") {
        return isReceiptOpen ? "open" : "closed";
    }
    return std::nullopt;
}

} // namespace virtual_printer
