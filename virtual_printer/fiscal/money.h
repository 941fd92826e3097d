// Amounts as whole numbers of their smallest unit: a printer does not round twice.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace virtual_printer {

using Cents = std::int64_t;
using Thousandths = std::int64_t; // quantities

// A decimal number and how many decimals its text had.
struct Decimal
{
    std::int64_t units = 0; // of 10^-decimals, with the decimals that were asked for
    int decimals = 0;       // that the text had, without zeros at its end
};

// What larger numbers are taken for: it is beyond every range.
inline constexpr std::int64_t largestUnits = 999'999'999'999'999'999;

// A decimal text in units of 10^-decimals ("12.5" with 2 decimals is 1250). When it has digits beyond,
// `units` leaves them out and `decimals` of the result tells it. Nothing when it is no decimal number.
std::optional<Decimal> parseDecimal(std::string_view text, int decimals);
// "-12.50".
std::string formatCents(Cents cents);
// "1.5", "8", "0.333": without zeros at the end.
std::string formatThousandths(Thousandths quantity);

// value * numerator / denominator, rounded half away from zero; the denominator is above zero, and the
// product has at most 18 digits.
std::int64_t scaled(std::int64_t value, std::int64_t numerator, std::int64_t denominator);

} // namespace virtual_printer
