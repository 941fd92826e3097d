// The drawer: what lies in it, by payment type. Change comes out of its cash.
#pragma once

#include "virtual_printer/fiscal/state.h"
#include "virtual_printer/fiscal/verdict.h"

namespace virtual_printer {

// Two payment types have a meaning beyond their settings.
inline constexpr int cash = 1;
inline constexpr int foreignCurrency = 5; // without a rate it takes the euro exchange rate

// 0 when nothing has come in under the type.
inline Cents contentOf(const ByPayment& sums, int type)
{
    const auto found = sums.find(type);
    return found == sums.end() ? 0 : found->second;
}

// Why no more goes out of it than is in it.
inline Verdict missingInDrawer(const State& state, int type, Cents wanted, Cents content)
{
    return {Refusal::drawerTooEmpty, "Of " + state.settings->payments.at(type).name + " " +
                                         formatCents(wanted) + " is to go out, and " + formatCents(content) +
                                         " is there."};
}

} // namespace virtual_printer
