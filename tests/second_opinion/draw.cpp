#include "tests/second_opinion/draw.h"

#include <bit>
#include <limits>
#include <string_view>

namespace telvofm::test {
namespace {

using IntLimits = std::numeric_limits<int>;
using Limits = std::numeric_limits<double>;

constexpr double pastTheLargestInt = 2147483648.0;

} // namespace

int Draw::whole()
{
    switch (below(6)) {
    case 0:
    case 1:
        return between(-12, 12);
    case 2:
        return between(-100'000, 100'000);
    case 3:
        return oneOf({IntLimits::min(), IntLimits::min() + 1, IntLimits::max(), IntLimits::max() - 1, 255,
                      256, -1, 0, 99, 100, 32767, 32768, 65535});
    default:
        return static_cast<int>(static_cast<std::uint32_t>(engine()));
    }
}

double Draw::number()
{
    // Compilers draw the operands of one expression in an order of their own, hence the names.
    switch (below(10)) {
    case 0: { // ties of all the decimals that are sent: eighths, sixteenths, thirty-seconds
        const double divisor = oneOf({2.0, 8.0, 16.0, 32.0});
        return between(-100'000, 100'000) / divisor;
    }
    case 1: { // hundredths and their halves, which binary values only come near to
        const double divisor = oneOf({100.0, 200.0, 1000.0, 2000.0, 10'000.0, 20'000.0});
        return between(-1'000'000, 1'000'000) / divisor;
    }
    case 2: { // ties of six significant digits
        const double divisor = oneOf({1.0, 2.0, 4.0});
        const double scale = oneOf({1.0, 10.0, 1e6, 1e9});
        return between(-9'999'999, 9'999'999) / divisor * scale;
    }
    case 3:
        return oneOf({0.0, -0.0, 1.0, -1.0, 0.5, -0.5, 0.001, -0.001, 0.00005, -0.00005, 1e-10, 999999.5,
                      9999995.0, 0.0001, 0.00009999995, 99.995, 20.0, 20.9, -20.9});
    case 4:
        return oneOf({Limits::max(), Limits::lowest(), Limits::min(), Limits::denorm_min(),
                      -Limits::denorm_min(), Limits::epsilon(), Limits::infinity(), -Limits::infinity(),
                      Limits::quiet_NaN(), -Limits::quiet_NaN(), 1e15, 1e16, 1e22, 1e23, 1e300, -1e300});
    case 5: { // where an int ends
        const double sign = oneOf({1.0, -1.0});
        return sign * (pastTheLargestInt + between(-2, 2) / 2.0);
    }
    case 6:
        return std::bit_cast<double>(engine());
    case 7:
        return whole();
    default:
        return between(0, 100'000) / 100.0;
    }
}

char Draw::character()
{
    return oneIn(4) ? static_cast<char>(below(256)) : oneOf({'A', 'B', 'Z', 'd', ' ', '0', ','});
}

std::string Draw::textOf(std::size_t length)
{
    constexpr std::string_view amounts = "0123456789,.-+ e";
    constexpr std::string_view frames = "\x1C\x04\x06\x15\x03\x17:\x11\x13\r\n\t\x01";
    const auto kind = below(8);
    std::string made(length, '\0');
    for (char& byte : made) {
        switch (kind) {
        case 0:
            byte = amounts[below(amounts.size())];
            break;
        case 1:
            byte = static_cast<char>(between(0x80, 0xFF));
            break;
        case 2:
            byte = static_cast<char>(between(1, 0xFF));
            break;
        case 3:
            byte = frames[below(frames.size())];
            break;
        default:
            byte = static_cast<char>(between(' ', '~'));
        }
    }
    return made;
}

std::string Draw::text()
{
    switch (below(40)) {
    case 0:
    case 1:
    case 2:
        return {};
    case 3:
    case 4:
    case 5:
    case 6: // around the length of a name on two lines
        return textOf(static_cast<std::size_t>(between(38, 57)));
    case 7: // around the length of a block
        return textOf(static_cast<std::size_t>(between(250, 260)));
    case 8:
        return textOf(static_cast<std::size_t>(oneIn(1000) ? 70'000
                                               : oneIn(10) ? between(1000, 5000)
                                                           : between(500, 800)));
    default:
        return textOf(static_cast<std::size_t>(between(1, 12)));
    }
}

std::string Draw::reply()
{
    constexpr std::size_t block = 256;
    std::size_t length = 0;
    switch (below(8)) {
    case 0:
        length = static_cast<std::size_t>(between(1, 3));
        break;
    case 1:
        length = block * (1 + below(3));
        length += below(3);
        --length;
        break;
    default:
        length = static_cast<std::size_t>(between(1, 40));
    }
    std::string made = oneIn(3) ? bytes(length) : textOf(length);
    if (oneIn(3)) {
        made += oneOf({"\r\n", "\n\r", "\r", "\n", "\r\n\r\n"});
    }
    return made;
}

std::string Draw::bytes(std::size_t count)
{
    std::string made(count, '\0');
    for (char& byte : made) {
        byte = oneIn(6) ? '\0' : static_cast<char>(below(256));
    }
    return made;
}

} // namespace telvofm::test
