#include "device/number_text.h"

#include <charconv>
#include <limits>

namespace telvofm {

NumberText NumberText::whole(long long value)
{
    NumberText text;
    const auto end = std::to_chars(text.digits.begin(), text.digits.end(), value).ptr;
    text.length = static_cast<std::size_t>(end - text.digits.begin());
    return text;
}

NumberText NumberText::fixed(double value, int decimals)
{
    NumberText text;
    const auto end =
        std::to_chars(text.digits.begin(), text.digits.end(), value, std::chars_format::fixed, decimals).ptr;
    text.length = static_cast<std::size_t>(end - text.digits.begin());
    return text;
}

NumberText NumberText::general(double value)
{
    constexpr int significantDigits = 6;
    NumberText text;
    const auto end = std::to_chars(text.digits.begin(), text.digits.end(), value, std::chars_format::general,
                                   significantDigits)
                         .ptr;
    text.length = static_cast<std::size_t>(end - text.digits.begin());
    return text;
}

int truncated(double value)
{
    constexpr double beyondSmallest = -2147483649.0;
    constexpr double beyondLargest = 2147483648.0;
    if (value > beyondSmallest && value < beyondLargest) {
        return static_cast<int>(value);
    }
    return std::numeric_limits<int>::min();
}

} // namespace telvofm
