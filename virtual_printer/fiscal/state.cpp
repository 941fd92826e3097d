#include "virtual_printer/fiscal/state.h"

#include <numeric>

namespace virtual_printer {

std::string nameOf(Life life)
{
    switch (life) {
    case Life::training:
        return "training";
    case Life::fiscal:
        return "fiscal";
    case Life::defiscalized:
        break;
    }
    return "defiscalized";
}

Cents Sums::turnover() const
{
    return std::accumulate(byVat.begin(), byVat.end(), Cents{0},
                           [](Cents sum, const auto& ofLetter) { return sum + ofLetter.second; });
}

void Sums::add(const Sums& other)
{
    for (const auto& [vat, sum] : other.byVat) {
        byVat[vat] += sum;
    }
    for (const auto& [type, sum] : other.byPayment) {
        byPayment[type] += sum;
    }
    receipts += other.receipts;
    cancelled += other.cancelled;
    discounts += other.discounts;
    returns += other.returns;
    drawerMovements += other.drawerMovements;
}

} // namespace virtual_printer
