#include "device/floating_point.h"

#include <bit>
#include <cstdint>
#include <limits>

namespace telvofm {
namespace {

constexpr unsigned mantissaBits = 52;
constexpr std::uint64_t hiddenOne = std::uint64_t{1} << mantissaBits;
constexpr std::uint64_t signBit = std::uint64_t{1} << 63U;
constexpr std::uint64_t infinity = std::uint64_t{0x7FF} << mantissaBits;

} // namespace

double quotient(int dividend, int divisor)
{
    const DefaultFloatingPoint environment;
    const volatile double whole = dividend;
    const volatile double result = whole / divisor;
    return result;
}

// These look at the bits: comparing doubles raises exceptions too.
bool isZero(double value)
{
    return (std::bit_cast<std::uint64_t>(value) & ~signBit) == 0;
}

bool isNegative(double value)
{
    const auto bits = std::bit_cast<std::uint64_t>(value);
    return bits > signBit && bits <= (signBit | infinity);
}

int truncated(double value)
{
    constexpr int exponentOfOne = 1023;
    constexpr int valueBits = std::numeric_limits<int>::digits;
    const auto bits = std::bit_cast<std::uint64_t>(value);
    const int exponent = static_cast<int>((bits & infinity) >> mantissaBits) - exponentOfOne;
    if (exponent < 0) {
        return 0;
    }
    if (exponent >= valueBits) {
        return std::numeric_limits<int>::min();
    }
    const std::uint64_t mantissa = (bits & (hiddenOne - 1)) | hiddenOne;
    const int magnitude = static_cast<int>(mantissa >> (mantissaBits - static_cast<unsigned>(exponent)));
    return (bits & signBit) != 0 ? -magnitude : magnitude;
}

} // namespace telvofm
