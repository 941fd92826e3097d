#include "virtual_printer/fiscal/money.h"

#include <algorithm>
#include <cstdlib>

namespace virtual_printer {
namespace {

bool isDigits(std::string_view text)
{
    return std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

std::int64_t valueOf(std::string_view digits)
{
    constexpr std::int64_t base = 10;
    std::int64_t value = 0;
    for (const char digit : digits) {
        if (value > largestUnits / base) {
            return largestUnits;
        }
        value = value * base + (digit - '0');
    }
    return value;
}

// The last digits of the number, with their zeros in front.
std::string padded(std::int64_t number, std::size_t digits)
{
    const std::string text = std::to_string(number);
    return std::string(digits - std::min(digits, text.size()), '0') + text;
}

} // namespace

std::optional<Decimal> parseDecimal(std::string_view text, int decimals)
{
    const bool isNegative = text.starts_with('-');
    if (isNegative) {
        text.remove_prefix(1);
    }
    const std::size_t point = std::min(text.find('.'), text.size());
    const std::string_view wholes = text.substr(0, point);
    std::string fraction(text.substr(std::min(point + 1, text.size())));
    if (wholes.empty() || !isDigits(wholes) || !isDigits(fraction) || text.ends_with('.')) {
        return std::nullopt;
    }
    fraction.erase(fraction.find_last_not_of('0') + 1);
    Decimal decimal;
    decimal.decimals = static_cast<int>(fraction.size());
    fraction.resize(static_cast<std::size_t>(decimals), '0');
    decimal.units = valueOf(std::string(wholes) + fraction);
    if (isNegative) {
        decimal.units = -decimal.units;
    }
    return decimal;
}

std::string formatCents(Cents cents)
{
    constexpr Cents whole = 100;
    const Cents size = std::abs(cents);
    return (cents < 0 ? "-" : "") + std::to_string(size / whole) + "." + padded(size % whole, 2);
}

std::string formatThousandths(Thousandths quantity)
{
    constexpr Thousandths whole = 1000;
    const Thousandths size = std::abs(quantity);
    std::string text = (quantity < 0 ? "-" : "") + std::to_string(size / whole);
    if (size % whole != 0) {
        text += "." + padded(size % whole, 3);
        text.erase(text.find_last_not_of('0') + 1);
    }
    return text;
}

std::int64_t scaled(std::int64_t value, std::int64_t numerator, std::int64_t denominator)
{
    const std::int64_t product = value * numerator;
    const std::int64_t half = product < 0 ? -(denominator / 2) : denominator / 2;
    return (product + half) / denominator;
}

} // namespace virtual_printer
