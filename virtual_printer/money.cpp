#include "virtual_printer/money.h"

#include <algorithm>
#include <cctype>

namespace virtual_printer {

std::optional<std::int64_t> parseDecimal(std::string_view text, int decimals)
{
    constexpr std::size_t mostDigits = 12; // so that no sum of a day leaves 64 bits
    const bool isNegative = text.starts_with('-');
    if (isNegative || text.starts_with('+')) {
        text.remove_prefix(1);
    }
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    const std::size_t point = std::min(text.find('.'), text.size());
    const std::string_view wholes = text.substr(0, point);
    std::string fraction(text.substr(std::min(point + 1, text.size())));
    if (wholes.empty() || wholes.size() > mostDigits || !std::all_of(wholes.begin(), wholes.end(), isDigit) ||
        !std::all_of(fraction.begin(), fraction.end(), isDigit)) {
        return std::nullopt;
    }
    fraction.resize(static_cast<std::size_t>(decimals), '0');
    std::int64_t value = 0;
    for (const char digit : std::string(wholes) + fraction) {
        value = value * 10 + (digit - '0');
    }
    return isNegative ? -value : value;
}

std::string formatCents(std::int64_t cents)
{
    constexpr std::int64_t unit = 100;
    const std::int64_t size = cents < 0 ? -cents : cents;
    std::string text = cents < 0 ? "-" : "";
    text.append(std::to_string(size / unit)).append(".");
    return text.append(std::to_string(unit + size % unit), 1, 2); // with its leading zero
}

} // namespace virtual_printer
