#include "link/telvo06fm_exception.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace telvofm {
namespace {

std::string textOf(std::int32_t failureCode)
{
    return Telvo06FMException(failureCode).what();
}

// The text begins as many bytes into the constant as the code says.
TEST(ExceptionText, OfCodesZeroToTwelveIsTheRestOfTheConstant)
{
    EXPECT_EQ(textOf(0), "Telvo error ");
    EXPECT_EQ(textOf(1), "elvo error ");
    EXPECT_EQ(textOf(6), "error ");
    EXPECT_EQ(textOf(11), " ");
    EXPECT_EQ(textOf(12), "");
}

TEST(ExceptionText, OfOtherCodesEndsWithTheCode)
{
    EXPECT_EQ(textOf(13), "Telvo error 13");
    EXPECT_EQ(textOf(255), "Telvo error 255");
    EXPECT_EQ(textOf(-1), "Telvo error -1");
    EXPECT_EQ(textOf(-10202), "Telvo error -10202");
}

TEST(Exception, IsARuntimeErrorThatCopiesItsTextAndCode)
{
    static_assert(std::is_base_of_v<std::runtime_error, Telvo06FMException>);
    const Telvo06FMException original(7);
    const Telvo06FMException copy(original); // NOLINT(performance-unnecessary-copy-initialization)
    EXPECT_EQ(copy.code, 7);
    EXPECT_STREQ(copy.what(), "rror ");
}

} // namespace
} // namespace telvofm
