#include "device/number_text.h"

#include "device/floating_point.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cstdint>

namespace telvofm {
namespace {

constexpr std::array<std::uint64_t, 7> powersOfTen = {1, 10, 100, 1000, 10000, 100000, 1000000};

// A double as the integers that make it: its size is mantissa / 2^fractionBits.
struct BinaryFraction
{
    explicit BinaryFraction(double value)
    {
        constexpr unsigned mantissaBits = 52;
        constexpr std::uint64_t mantissaMask = (std::uint64_t{1} << mantissaBits) - 1;
        constexpr int exponentOfOnes = 1075; // of a mantissa that counts ones
        const auto bits = std::bit_cast<std::uint64_t>(value);
        isNegative = (bits >> 63U) != 0;
        mantissa = (bits & mantissaMask) | (mantissaMask + 1);
        fractionBits = exponentOfOnes - static_cast<int>((bits >> mantissaBits) & 0x7FFU);
    }

    bool isNegative;
    std::uint64_t mantissa;
    int fractionBits;
};

// Rounds the exact binary value as the standard library does, and writes it. The fraction, times a power of
// ten, fits 64 bits with up to three decimals and 63 fraction bits; with up to five and 52 it does in two
// steps. Each number of decimals at most has code of its own, which is what makes it fast.
template <std::size_t mostDecimals>
char* writeRounded(char* target, char* end, const BinaryFraction& value, std::size_t decimals)
{
    constexpr std::size_t mostAtOnce = 3;
    const auto shift = static_cast<unsigned>(value.fractionBits);
    const std::uint64_t fractionMask = (std::uint64_t{1} << shift) - 1;
    const std::uint64_t half = std::uint64_t{1} << (shift - 1);
    std::size_t first = decimals;
    if constexpr (mostDecimals > mostAtOnce) {
        first = std::min(decimals, mostAtOnce);
    }

    std::uint64_t wholes = value.mantissa >> shift;
    std::uint64_t scaled = (value.mantissa & fractionMask) * powersOfTen[first];
    std::uint64_t fraction = scaled >> shift;
    if constexpr (mostDecimals > mostAtOnce) {
        if (decimals > first) {
            const std::uint64_t scale = powersOfTen[decimals - first];
            scaled = (scaled & fractionMask) * scale;
            fraction = fraction * scale + (scaled >> shift);
        }
    }
    const std::uint64_t rest = scaled & fractionMask;
    const bool isOdd = ((decimals == 0 ? wholes : fraction) & 1U) != 0;
    if (rest > half || (rest == half && isOdd)) {
        ++fraction;
    }
    if (fraction == powersOfTen[decimals]) {
        fraction = 0;
        ++wholes;
    }
    if (value.isNegative) {
        *target++ = '-';
    }
    target = std::to_chars(target, end, wholes).ptr;
    *target++ = '.';
    for (std::size_t position = decimals; position > 0; --position) {
        target[position - 1] = static_cast<char>('0' + fraction % 10);
        fraction /= 10;
    }
    return target + decimals;
}

// Most amounts have few digits and two or three decimals: plain integers write them several times faster than
// the general way. Returns the end of the text, or nothing when the value needs the general way.
char* writeSmallFixed(char* target, char* end, double value, int decimals)
{
    const BinaryFraction parts(value);
    if (parts.fractionBits < 1 || parts.fractionBits > 63 || decimals < 1 || decimals > 3) {
        return nullptr;
    }
    return writeRounded<3>(target, end, parts, static_cast<std::size_t>(decimals));
}

// The same for six significant digits of an amount from 1 to 999,998: as many decimals as the wholes leave
// room for, without the zeros at their end.
char* writeSmallGeneral(char* target, char* end, double value)
{
    constexpr std::size_t significantDigits = 6;
    constexpr int mostFractionBits = 52; // of 1
    const BinaryFraction parts(value);
    if (parts.fractionBits < 1 || parts.fractionBits > mostFractionBits) {
        return nullptr;
    }
    const std::uint64_t wholes = parts.mantissa >> static_cast<unsigned>(parts.fractionBits);
    if (wholes >= powersOfTen[significantDigits] - 1) { // which rounding may give one digit more
        return nullptr;
    }
    std::size_t decimals = significantDigits - 1;
    while (wholes >= powersOfTen[significantDigits - decimals]) {
        --decimals;
    }
    char* last = writeRounded<significantDigits - 1>(target, end, parts, decimals);
    while (last[-1] == '0') { // the point ends it
        --last;
    }
    return last[-1] == '.' ? last - 1 : last;
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
    char* end = writeSmallFixed(text.digits.begin(), text.digits.end(), value, decimals);
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
    NumberText text;
    char* end = writeSmallGeneral(text.digits.begin(), text.digits.end(), value);
    if (end == nullptr) {
        const DefaultFloatingPoint environment;
        end = std::to_chars(text.digits.begin(), text.digits.end(), value, std::chars_format::general,
                            significantDigits)
                  .ptr;
    }
    text.length = static_cast<std::size_t>(end - text.digits.begin());
    return text;
}

} // namespace telvofm
