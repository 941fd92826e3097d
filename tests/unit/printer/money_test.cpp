// Decimal numbers, their text, and rounding.
#include "virtual_printer/fiscal/money.h"

#include <gtest/gtest.h>

namespace virtual_printer {
namespace {

void expectDecimal(std::string_view text, int decimals, std::int64_t units, int decimalsOfText)
{
    const auto decimal = parseDecimal(text, decimals);
    ASSERT_TRUE(decimal.has_value()) << text;
    EXPECT_EQ(decimal->units, units) << text;
    EXPECT_EQ(decimal->decimals, decimalsOfText) << text;
}

TEST(PrinterMoney, IsReadInItsSmallestUnit)
{
    expectDecimal("12.5", 2, 1250, 1);
    expectDecimal("-0.01", 2, -1, 2);
    expectDecimal("7", 0, 7, 0);
    expectDecimal("0012", 2, 1200, 0);
    expectDecimal("-0", 2, 0, 0);
}

TEST(PrinterMoney, TellsDigitsBeyondInsteadOfRounding)
{
    expectDecimal("12.509", 2, 1250, 3);
    expectDecimal("12.5000", 2, 1250, 1);
    expectDecimal("1.1", 0, 1, 1);
}

TEST(PrinterMoney, TakesWhatIsTooLargeForTheLargest)
{
    expectDecimal("99999999999999999999", 0, largestUnits, 0);
    expectDecimal("-1000000000000000000", 0, -largestUnits, 0);
    expectDecimal("999999999999999999", 0, 999999999999999999, 0);
}

TEST(PrinterMoney, IsNothingElseThanADecimalNumber)
{
    for (const char* text :
         {"", "-", ".", ".5", "5.", "12,5", "1e3", "+1", "--1", " 1", "1 ", "1.2.3", "0x1"}) {
        EXPECT_EQ(parseDecimal(text, 2).has_value(), false) << text;
    }
}

TEST(PrinterMoney, IsWritten)
{
    EXPECT_EQ(formatCents(0), "0.00");
    EXPECT_EQ(formatCents(-5), "-0.05");
    EXPECT_EQ(formatCents(123456), "1234.56");
    EXPECT_EQ(formatThousandths(1500), "1.5");
    EXPECT_EQ(formatThousandths(8000), "8");
    EXPECT_EQ(formatThousandths(333), "0.333");
    EXPECT_EQ(formatThousandths(-20), "-0.02");
}

TEST(PrinterMoney, IsRoundedHalfAwayFromZero)
{
    EXPECT_EQ(scaled(5, 1, 10), 1);
    EXPECT_EQ(scaled(-5, 1, 10), -1);
    EXPECT_EQ(scaled(4, 1, 10), 0);
    EXPECT_EQ(scaled(10000, 100, 123), 8130); // 81.3008
    EXPECT_EQ(scaled(1, 3, 2), 2);
    EXPECT_EQ(scaled(999'999'999, 999'999'999, 10'000), 99'999'999'800'000); // 99999999800000.0001
}

} // namespace
} // namespace virtual_printer
