// A decimal number for amounts, exact: 12.50_d, Decimal::parse("12.50"), Decimal(12).
#pragma once

#include "result.hpp"

#include <compare>
#include <concepts>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace telvofm {

// Up to four decimals, and up to 900 million million to either side.
class Decimal
{
public:
    constexpr Decimal() = default;
    // A whole number.
    template <std::integral Whole>
    constexpr Decimal(Whole whole) : tenThousandths_(static_cast<std::int64_t>(whole) * 10000)
    {
    }
    // 2.675 would be something less; write 2.675_d.
    template <std::floating_point Binary>
    Decimal(Binary) = delete;

    // A number as "12.50" or "-3"; nothing when it is none or has more than four decimals.
    static constexpr std::optional<Decimal> parse(std::string_view text)
    {
        const bool isNegative = text.starts_with('-');
        text.remove_prefix(isNegative ? 1 : 0);
        const std::size_t point = text.find('.');
        const std::string_view whole = text.substr(0, point);
        const std::string_view decimals = point == std::string_view::npos ? "" : text.substr(point + 1);
        if (whole.empty() || whole.size() > 14 || decimals.size() > 4 ||
            (point != std::string_view::npos && decimals.empty())) {
            return std::nullopt;
        }
        std::int64_t value = 0;
        for (std::size_t i = 0; i < whole.size() + 4; ++i) {
            const std::size_t behind = i - whole.size();
            const char digit = i < whole.size()           ? whole[i]
                               : behind < decimals.size() ? decimals[behind]
                                                          : '0';
            if (digit < '0' || digit > '9') {
                return std::nullopt;
            }
            value = value * 10 + (digit - '0');
        }
        Decimal number;
        number.tenThousandths_ = isNegative ? -value : value;
        return number;
    }

    // With exactly so many decimals, at most four; fails when the number has more: nothing is rounded.
    [[nodiscard]] Result<std::string> text(unsigned decimals) const
    {
        std::string digits = std::to_string(tenThousandths_ < 0 ? -tenThousandths_ : tenThousandths_);
        digits.insert(0, digits.size() < 5 ? 5 - digits.size() : 0, '0');
        digits.insert(digits.size() - 4, ".");
        const std::string sign = tenThousandths_ < 0 ? "-" : "";
        const std::size_t size = digits.size() - (4 - decimals);
        const std::size_t written = digits.find_last_not_of('0') + 1;
        if (written > size) {
            return wrongArgument(Kind::amountError, sign + digits.substr(0, written) + " has more than " +
                                                        std::to_string(decimals) +
                                                        " decimals; round it first");
        }
        return sign + digits.substr(0, size);
    }

    constexpr Decimal operator-() const { return Decimal() - *this; }
    constexpr Decimal& operator+=(Decimal other)
    {
        tenThousandths_ += other.tenThousandths_;
        return *this;
    }
    friend constexpr Decimal operator+(Decimal left, Decimal right) { return left += right; }
    friend constexpr Decimal operator-(Decimal left, Decimal right)
    {
        left.tenThousandths_ -= right.tenThousandths_;
        return left;
    }
    friend constexpr bool operator==(Decimal, Decimal) = default;
    // NOLINTNEXTLINE(modernize-use-nullptr): there is none
    friend constexpr auto operator<=>(Decimal, Decimal) = default;

private:
    std::int64_t tenThousandths_ = 0;
};

namespace literals {

// 12.50_d; what is no decimal number of at most four decimals does not compile.
consteval Decimal operator""_d(const char* digits)
{
    return Decimal::parse(digits).value();
}

} // namespace literals
} // namespace telvofm
