#include "virtual_printer/control/day_hours.h"

namespace virtual_printer {

bool DayHours::readOn(const Printer& printer)
{
    constexpr std::int64_t atOnce = 2'000;
    const int present = printer.state().standing->closures + 1;
    if (present != closure) {
        *this = {};
        closure = present;
    }
    DocumentQuery query;
    query.closure = closure;
    query.skip = documentsRead;
    query.most = atOnce;
    std::int64_t found = 0;
    printer.memory().read(query, [&](const Document& document, std::int64_t /*position*/) {
        ++found;
        if (document.kind == Document::Kind::receipt) {
            Hour& hour = hours[std::chrono::floor<std::chrono::hours>(document.moment)];
            ++hour.receipts;
            hour.turnover += document.total;
        }
        return true;
    });
    documentsRead += found;
    return found < atOnce;
}

} // namespace virtual_printer
