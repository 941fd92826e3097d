#include "device/number_text.h"

#include "device/floating_point.h"

#include <bit>
#include <charconv>
#include <cstdint>

namespace telvofm {
namespace {

constexpr std::array<std::uint64_t, 4> powersOfTen = {1, 10, 100, 1000};

// Most amounts have few digits and two or three decimals. For these the binary fraction, times the power of
// ten, fits 64 bits, so that plain integers round it exactly: several times faster than the general way.
// Returns the end of the text, or nothing when the value needs the general way.
char* writeSmallAmount(char* target, char* end, double value, int decimals)
{
    constexpr unsigned mantissaBits = 52;
    constexpr std::uint64_t mantissaMask = (std::uint64_t{1} << mantissaBits) - 1;
    constexpr int exponentOfOnes = 1075; // of a mantissa that counts ones
    const auto bits = std::bit_cast<std::uint64_t>(value);
    const int fractionBits = exponentOfOnes - static_cast<int>((bits >> mantissaBits) & 0x7FFU);
    if (fractionBits < 1 || fractionBits > 63 || decimals < 1 || decimals > 3) {
        return nullptr;
    }
    const auto shift = static_cast<unsigned>(fractionBits);
    const std::uint64_t mantissa = (bits & mantissaMask) | (mantissaMask + 1);
    const std::uint64_t fractionMask = (std::uint64_t{1} << shift) - 1;
    const std::uint64_t half = std::uint64_t{1} << (shift - 1);
    const std::uint64_t scale = powersOfTen[static_cast<std::size_t>(decimals)];

    std::uint64_t wholes = mantissa >> shift;
    const std::uint64_t scaled = (mantissa & fractionMask) * scale;
    std::uint64_t fraction = scaled >> shift;
    const std::uint64_t rest = scaled & fractionMask;
    if (rest > half || (rest == half && fraction % 2 == 1)) {
        ++fraction;
    }
    if (fraction == scale) {
        fraction = 0;
        ++wholes;
    }
    if ((bits >> 63U) != 0) {
        *target++ = '-';
    }
    target = std::to_chars(target, end, wholes).ptr;
    *target++ = '.';
    for (int position = decimals - 1; position >= 0; --position) {
        target[position] = static_cast<char>('0' + fraction % 10);
        fraction /= 10;
    }
    return target + decimals;
}

} // namespace

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
    char* end = writeSmallAmount(text.digits.begin(), text.digits.end(), value, decimals);
    if (end == nullptr) {
        const DefaultFloatingPoint environment;
        end = std::to_chars(text.digits.begin(), text.digits.end(), value, std::chars_format::fixed, decimals)
                  .ptr;
    }
    text.length = static_cast<std::size_t>(end - text.digits.begin());
    return text;
}

NumberText NumberText::general(double value)
{
    constexpr int significantDigits = 6;
    const DefaultFloatingPoint environment;
    NumberText text;
    const auto end = std::to_chars(text.digits.begin(), text.digits.end(), value, std::chars_format::general,
                                   significantDigits)
                         .ptr;
    text.length = static_cast<std::size_t>(end - text.digits.begin());
    return text;
}

} // namespace telvofm
