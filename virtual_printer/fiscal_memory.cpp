#include "virtual_printer/fiscal_memory.h"

#include <utility>

namespace virtual_printer {

std::int64_t Sums::turnover() const
{
    std::int64_t total = 0;
    for (const auto& [vat, sum] : byVat) {
        total += sum;
    }
    return total;
}

void Sums::add(const Sums& other)
{
    for (const auto& [vat, sum] : other.byVat) {
        byVat[vat] += sum;
    }
    receipts += other.receipts;
    cancelled += other.cancelled;
    drawer += other.drawer;
}

void FiscalMemory::addReceipt(const std::map<char, std::int64_t>& totalsByVat)
{
    for (const auto& [vat, sum] : totalsByVat) {
        today.byVat[vat] += sum;
    }
    ++today.receipts;
}

void FiscalMemory::closeDay(const std::string& moment)
{
    closed.push_back({.number = nextClosure(), .moment = moment, .sums = std::exchange(today, {})});
}

Sums FiscalMemory::ever() const
{
    Sums all = today;
    for (const Closure& closure : closed) {
        all.add(closure.sums);
    }
    return all;
}

} // namespace virtual_printer
