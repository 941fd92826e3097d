#include "device/floating_point.h"

#include "device/amount.h"
#include "tests/unit/hostile_floating_point.h"

#include <gtest/gtest.h>

#include <bit>
#include <cfloat>
#include <climits>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>

namespace telvofm::test {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double signalling = std::numeric_limits<double>::signaling_NaN();
constexpr double smallest = std::numeric_limits<double>::denorm_min();

// Compared by their bits, which tell 0 from -0.
std::uint64_t bitsOf(double value)
{
    return std::bit_cast<std::uint64_t>(value);
}

TEST(Truncated, GoesTowardZero)
{
    EXPECT_EQ(truncated(0.0), 0);
    EXPECT_EQ(truncated(0.999), 0);
    EXPECT_EQ(truncated(1.0), 1);
    EXPECT_EQ(truncated(1.9), 1);
    EXPECT_EQ(truncated(-1.9), -1);
    EXPECT_EQ(truncated(-0.0), 0);
    EXPECT_EQ(truncated(20.9), 20);
    EXPECT_EQ(truncated(1048577.5), 1048577);
    EXPECT_EQ(truncated(smallest), 0);
    EXPECT_EQ(truncated(-DBL_MIN), 0);
}

TEST(Truncated, HoldsUpToBothEndsOfTheRange)
{
    EXPECT_EQ(truncated(2147483647.0), INT_MAX);
    EXPECT_EQ(truncated(2147483647.9), INT_MAX);
    EXPECT_EQ(truncated(-2147483648.0), INT_MIN);
    EXPECT_EQ(truncated(-2147483648.9), INT_MIN);
    EXPECT_EQ(truncated(-2147483647.9), -INT_MAX);
}

TEST(Truncated, TheLargestDoublesBelowAWholeNumberAreBelowIt)
{
    EXPECT_EQ(truncated(std::nextafter(1.0, 0.0)), 0);
    EXPECT_EQ(truncated(std::nextafter(2.0, 0.0)), 1);
    EXPECT_EQ(truncated(std::nextafter(-3.0, 0.0)), -2);
    EXPECT_EQ(truncated(std::nextafter(4.0, 0.0)), 3);
    EXPECT_EQ(truncated(std::nextafter(2147483648.0, 0.0)), INT_MAX);
}

TEST(Truncated, BeyondTheRangeIsTheSmallestInteger)
{
    EXPECT_EQ(truncated(2147483648.0), INT_MIN);
    EXPECT_EQ(truncated(3000000000.0), INT_MIN);
    EXPECT_EQ(truncated(4294967297.0), INT_MIN);
    EXPECT_EQ(truncated(1e300), INT_MIN);
    EXPECT_EQ(truncated(-1e300), INT_MIN);
    EXPECT_EQ(truncated(infinity), INT_MIN);
    EXPECT_EQ(truncated(-infinity), INT_MIN);
    EXPECT_EQ(truncated(notANumber), INT_MIN);
}

TEST(Sign, ANegativeZeroIsZeroAndNotNegative)
{
    EXPECT_TRUE(isZero(0.0));
    EXPECT_TRUE(isZero(-0.0));
    EXPECT_FALSE(isZero(smallest));
    EXPECT_FALSE(isZero(-smallest));
    EXPECT_FALSE(isZero(notANumber));
    EXPECT_FALSE(isNegative(-0.0));
    EXPECT_FALSE(isNegative(0.0));
    EXPECT_FALSE(isNegative(smallest));
    EXPECT_TRUE(isNegative(-smallest));
    EXPECT_TRUE(isNegative(-1.0));
    EXPECT_TRUE(isNegative(-infinity));
    EXPECT_FALSE(isNegative(infinity));
}

TEST(Sign, WhatIsNoNumberIsNotNegative)
{
    EXPECT_FALSE(isNegative(notANumber));
    EXPECT_FALSE(isNegative(-notANumber));
    EXPECT_FALSE(isNegative(std::bit_cast<double>(bitsOf(-infinity) + 1)));
}

TEST(Quotient, IsTheNearestDouble)
{
    EXPECT_EQ(bitsOf(quotient(1, 100)), bitsOf(0.01));
    EXPECT_EQ(bitsOf(quotient(83333, 10000)), bitsOf(8.3333));
    EXPECT_EQ(bitsOf(quotient(INT_MIN, 100)), bitsOf(-21474836.48));
    EXPECT_EQ(bitsOf(quotient(0, 100)), bitsOf(0.0));
}

class InAHostileEnvironment : public ::testing::TestWithParam<unsigned>
{
protected:
    // What the call returns there; it leaves the environment alone.
    template <typename Call>
    static auto there(Call call)
    {
        bool isUntouched = false;
        const auto result = [&] {
            const HostileFloatingPoint environment(GetParam());
            const auto value = call();
            isUntouched = environment.isUntouched();
            return value;
        }();
        EXPECT_TRUE(isUntouched);
        return result;
    }

    static std::string fixed(double value)
    {
        return std::string(there([value] { return NumberText::fixed(value, 2); }).view());
    }
    static std::string general(double value)
    {
        return std::string(there([value] { return NumberText::general(value); }).view());
    }
};

INSTANTIATE_TEST_SUITE_P(Environments, InAHostileEnvironment, ::testing::ValuesIn(environment::all));

TEST_P(InAHostileEnvironment, QuotientsAreTheNearestDoubles)
{
    EXPECT_EQ(bitsOf(there([] { return quotient(1, 100); })), bitsOf(0.01));
    EXPECT_EQ(bitsOf(there([] { return quotient(-1, 100); })), bitsOf(-0.01));
    EXPECT_EQ(bitsOf(there([] { return quotient(7, 10000); })), bitsOf(0.0007));
    EXPECT_EQ(bitsOf(there([] { return quotient(INT_MAX, 1000); })), bitsOf(2147483.647));
}

TEST_P(InAHostileEnvironment, NumbersBecomeTheSameTexts)
{
    EXPECT_EQ(fixed(notANumber), "nan");
    EXPECT_EQ(fixed(signalling), "nan");
    EXPECT_EQ(fixed(-infinity), "-inf");
    EXPECT_EQ(fixed(smallest), "0.00");
    EXPECT_EQ(fixed(-0.0), "-0.00");
    EXPECT_EQ(fixed(2.675), "2.67"); // stored a little below
    EXPECT_EQ(fixed(0.005), "0.01"); // stored a little above
    EXPECT_EQ(fixed(1e22), "10000000000000000000000.00");
    EXPECT_EQ(general(smallest), "4.94066e-324");
    EXPECT_EQ(general(-smallest), "-4.94066e-324");
    EXPECT_EQ(general(notANumber), "nan");
    EXPECT_EQ(general(signalling), "nan");
    EXPECT_EQ(general(DBL_MAX), "1.79769e+308");
    EXPECT_EQ(general(100.0 / 6.0), "16.6667");
}

TEST_P(InAHostileEnvironment, DoublesAreTakenForWhatTheyAre)
{
    EXPECT_FALSE(there([] { return isZero(smallest); }));
    EXPECT_FALSE(there([] { return isZero(signalling); }));
    EXPECT_TRUE(there([] { return isZero(-0.0); }));
    EXPECT_TRUE(there([] { return isNegative(-smallest); }));
    EXPECT_FALSE(there([] { return isNegative(signalling); }));
    EXPECT_EQ(there([] { return truncated(-1.9); }), -1);
    EXPECT_EQ(there([] { return truncated(notANumber); }), INT_MIN);
    EXPECT_EQ(there([] { return truncated(1e300); }), INT_MIN);
    EXPECT_EQ(there([] { return truncated(smallest); }), 0);
    EXPECT_FALSE(there([] { return number(smallest).isZero(); }));
}

} // namespace
} // namespace telvofm::test
