// Numbers as text, as the wire and the call log carry them: always with ".", never grouped, whatever locale
// the host program has set. The buffer holds any double, the largest ones in fixed notation included.
#pragma once

#include <array>
#include <string_view>

namespace telvofm {

class NumberText
{
public:
    // Of a whole number, and of one with six significant digits.
    static constexpr std::size_t mostCharacters = 20;

    // Plain decimal text, "-" in front of negatives.
    static NumberText whole(long long value);
    // Fixed notation with exactly `decimals` decimals, rounded from the exact binary value.
    static NumberText fixed(double value, int decimals);
    // Six significant digits, shortest of fixed and scientific: 1.5, 16.6667, 1.23457e+06.
    static NumberText general(double value);

    [[nodiscard]] std::string_view view() const { return {digits.data(), length}; }

private:
    // 309 digits before the point, the sign, the point and up to 10 decimals need 321.
    std::array<char, 336> digits;
    std::size_t length = 0;
};

} // namespace telvofm
