#include "device/number_text.h"

#include <gtest/gtest.h>

#include <array>
#include <cfloat>
#include <climits>
#include <cmath>
#include <cstdio>
#include <limits>
#include <locale>
#include <random>
#include <string>

namespace telvofm {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

std::string fixed(double value, int decimals)
{
    return std::string(NumberText::fixed(value, decimals).view());
}

std::string general(double value)
{
    return std::string(NumberText::general(value).view());
}

std::string whole(long long value)
{
    return std::string(NumberText::whole(value).view());
}

TEST(NumberText, WholeNumbersArePlainDecimal)
{
    EXPECT_EQ(whole(0), "0");
    EXPECT_EQ(whole(-5), "-5");
    EXPECT_EQ(whole(INT_MAX), "2147483647");
    EXPECT_EQ(whole(INT_MIN), "-2147483648");
    EXPECT_EQ(whole(LLONG_MIN), "-9223372036854775808");
}

TEST(NumberText, FixedKeepsTheWantedDecimals)
{
    EXPECT_EQ(fixed(1234567.0, 2), "1234567.00");
    EXPECT_EQ(fixed(1.5, 3), "1.500");
    EXPECT_EQ(fixed(8.3333, 2), "8.33");
    EXPECT_EQ(fixed(-0.5, 2), "-0.50");
    EXPECT_EQ(fixed(7.0, 0), "7");
    EXPECT_EQ(fixed(0.1, 4), "0.1000");
    EXPECT_EQ(fixed(std::ldexp(1.0, -510), 2), "0.00");
}

// 12.345 is stored a little above, 2.675 a little below, 0.005 a little above what it reads.
TEST(NumberText, FixedRoundsTheStoredBinaryValue)
{
    EXPECT_EQ(fixed(12.345, 2), "12.35");
    EXPECT_EQ(fixed(2.675, 2), "2.67");
    EXPECT_EQ(fixed(0.005, 2), "0.01");
}

TEST(NumberText, FixedCarriesIntoTheWholes)
{
    EXPECT_EQ(fixed(0.999, 2), "1.00");
    EXPECT_EQ(fixed(-9.9996, 3), "-10.000");
    EXPECT_EQ(fixed(4503599627370495.5, 1), "4503599627370495.5"); // the last doubles with a fraction
    EXPECT_EQ(fixed(4503599627370497.0, 1), "4503599627370497.0");
    EXPECT_EQ(fixed(0.0004, 3), "0.000");
    EXPECT_EQ(fixed(-0.0004, 2), "-0.00");
}

TEST(NumberText, FixedRoundsATrueTieToTheEvenDigit)
{
    EXPECT_EQ(fixed(0.125, 2), "0.12");
    EXPECT_EQ(fixed(0.375, 2), "0.38");
    EXPECT_EQ(fixed(0.0625, 3), "0.062");
    EXPECT_EQ(fixed(-1.5, 0), "-2");
    EXPECT_EQ(fixed(2.5, 0), "2");
}

TEST(NumberText, FixedRoundsTheNeighboursOfATieToTheirOwnSide)
{
    EXPECT_EQ(fixed(std::nextafter(0.125, 1.0), 2), "0.13");
    EXPECT_EQ(fixed(std::nextafter(0.375, 0.0), 2), "0.37");
    EXPECT_EQ(fixed(std::nextafter(0.0625, 1.0), 3), "0.063");
    EXPECT_EQ(fixed(std::nextafter(0.5625, 0.0), 3), "0.562");
    EXPECT_EQ(fixed(std::nextafter(1.25, 2.0), 1), "1.3");
    EXPECT_EQ(fixed(std::nextafter(1.75, 1.0), 1), "1.7");
}

// With half of the last digit in the highest of 63 bits, and in a bit more than that.
TEST(NumberText, FixedRoundsTheSmallestFractionsThatItCanHold)
{
    EXPECT_EQ(fixed(0.0005, 3), "0.001"); // stored a little above
    EXPECT_EQ(fixed(std::nextafter(0.0005, 0.0), 3), "0.000");
    EXPECT_EQ(fixed(0.0009765625, 3), "0.001");
    EXPECT_EQ(fixed(0.00048828125, 3), "0.000");
    EXPECT_EQ(fixed(std::nextafter(0.00048828125, 0.0), 3), "0.000");
}

TEST(NumberText, FixedHoldsTheLargestDoubleWithAllItsDigits)
{
    // (2^53 - 1) * 2^971
    const std::string largest =
        "17976931348623157081452742373170435679807056752584499659891747680315726078002853"
        "87605895586327668781715404589535143824642343213268894641827684675467035375169860"
        "49910576551282076245490090389328944075868508455133942304583236903222948165808559"
        "332123348274797826204144723168738177180919299881250404026184124858368";
    EXPECT_EQ(fixed(DBL_MAX, 2), largest + ".00");
    EXPECT_EQ(fixed(-DBL_MAX, 10), "-" + largest + ".0000000000");
}

TEST(NumberText, NegativeZeroKeepsItsSign)
{
    EXPECT_EQ(fixed(-0.0, 2), "-0.00");
    EXPECT_EQ(general(-0.0), "-0");
}

TEST(NumberText, WhatIsNoNumberIsSaidInWords)
{
    EXPECT_EQ(fixed(infinity, 2), "inf");
    EXPECT_EQ(fixed(-infinity, 2), "-inf");
    EXPECT_EQ(fixed(notANumber, 2), "nan");
    EXPECT_EQ(general(infinity), "inf");
    EXPECT_EQ(general(notANumber), "nan");
}

TEST(NumberText, GeneralHasSixSignificantDigits)
{
    EXPECT_EQ(general(0.0), "0");
    EXPECT_EQ(general(1.5), "1.5");
    EXPECT_EQ(general(12.345), "12.345");
    EXPECT_EQ(general(8.3333), "8.3333");
    EXPECT_EQ(general(100.0 / 6.0), "16.6667");
    EXPECT_EQ(general(999999.0), "999999");
    EXPECT_EQ(general(1000000.0), "1e+06");
    EXPECT_EQ(general(1234567.0), "1.23457e+06");
    EXPECT_EQ(general(0.0001), "0.0001");
    EXPECT_EQ(general(0.00001), "1e-05");
    EXPECT_EQ(general(DBL_MAX), "1.79769e+308");
}

TEST(NumberText, GeneralRoundsATrueTieToTheEvenDigit)
{
    EXPECT_EQ(general(100000.5), "100000");
    EXPECT_EQ(general(100001.5), "100002");
    EXPECT_EQ(general(-1000.125), "-1000.12");
    EXPECT_EQ(general(1000.375), "1000.38");
    EXPECT_EQ(general(1.000025), "1.00002"); // stored a little below
    EXPECT_EQ(general(1.000015), "1.00002"); // a little above
}

TEST(NumberText, GeneralRoundsTheNeighboursOfATieToTheirOwnSide)
{
    EXPECT_EQ(general(std::nextafter(100000.5, 200000.0)), "100001");
    EXPECT_EQ(general(std::nextafter(100001.5, 0.0)), "100001");
    EXPECT_EQ(general(std::nextafter(1000.125, 2000.0)), "1000.13");
    EXPECT_EQ(general(std::nextafter(1000.375, 0.0)), "1000.37");
    EXPECT_EQ(general(std::nextafter(10.03125, 20.0)), "10.0313");
    EXPECT_EQ(general(std::nextafter(10.09375, 0.0)), "10.0937");
}

TEST(NumberText, GeneralCarriesIntoTheWholes)
{
    EXPECT_EQ(general(9.999996), "10");
    EXPECT_EQ(general(-99999.96), "-100000");
    EXPECT_EQ(general(99999.94), "99999.9");
    EXPECT_EQ(general(999999.5), "1e+06");
    EXPECT_EQ(general(999999.4), "999999");
    EXPECT_EQ(general(0.9999999), "1");
}

TEST(NumberText, GeneralWritesNoZerosBehindTheLastDigit)
{
    EXPECT_EQ(general(1.0), "1");
    EXPECT_EQ(general(10.0), "10");
    EXPECT_EQ(general(-120.0), "-120");
    EXPECT_EQ(general(100000.0), "100000");
    EXPECT_EQ(general(1.05), "1.05");
    EXPECT_EQ(general(20.3), "20.3");
}

// What C's own %g writes, the standard's measure of general notation with six digits.
TEST(NumberText, GeneralIsWhatTheStandardLibraryWrites)
{
    std::mt19937_64 random(20261122);
    std::array<char, 32> expected;
    for (int count = 0; count < 200000; ++count) {
        const auto cents = static_cast<double>(random() % 200000000);
        const double scale = std::array{1.0, 8.0, 100.0, 1000.0, 65536.0, 1e7}[random() % 6];
        const double value = (random() % 2 == 0 ? cents : -cents) / scale;
        std::snprintf(expected.data(), expected.size(), "%g", value);
        ASSERT_EQ(general(value), expected.data()) << count;
    }
}

class DecimalComma : public std::numpunct<char>
{
protected:
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return ' '; }
    std::string do_grouping() const override { return "\3"; }
};

TEST(NumberText, ALocaleOfTheHostChangesNothing)
{
    const std::locale before = std::locale::global(std::locale(std::locale::classic(), new DecimalComma));
    EXPECT_EQ(fixed(1234567.5, 2), "1234567.50");
    EXPECT_EQ(general(12345.5), "12345.5");
    EXPECT_EQ(whole(1234567), "1234567");
    std::locale::global(before);
}

} // namespace
} // namespace telvofm
