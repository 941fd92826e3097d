// Amounts as whole numbers of their smallest unit: a printer does not round twice.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace virtual_printer {

// A decimal text in units of 10^-decimals ("12.5" with 2 decimals is 1250); digits beyond are cut. Nothing
// when it is no decimal number or too large.
std::optional<std::int64_t> parseDecimal(std::string_view text, int decimals);
// "-12.50".
std::string formatCents(std::int64_t cents);

} // namespace virtual_printer
