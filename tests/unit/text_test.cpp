#include "device/text.h"

#include "device/amount.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <string_view>

namespace telvofm {
namespace {

// Around the length from which a text no longer lies in the object itself.
constexpr std::size_t lengths[] = {0, 1, 40, 63, 64, 65, 1000, 100000};

TEST(Text, StaysWhatItWasWhenTheCallersChanges)
{
    for (const std::size_t length : lengths) {
        std::string callers(length, 'a');
        const Text text(callers.c_str());
        std::fill(callers.begin(), callers.end(), 'b');
        EXPECT_EQ(std::string_view(text), std::string(length, 'a'));
    }
}

// Up to 64 characters; a longer one has to lie elsewhere.
TEST(Text, OfUsualLengthLiesInTheObjectItself)
{
    const auto isInside = [](std::size_t length) {
        const Text text(std::string(length, 'a').c_str());
        const char* const object = reinterpret_cast<const char*>(&text);
        const char* const characters = std::string_view(text).data();
        return std::less_equal<>()(object, characters) && std::less<>()(characters, object + sizeof text);
    };
    EXPECT_TRUE(isInside(0));
    EXPECT_TRUE(isInside(40));
    EXPECT_TRUE(isInside(64));
    EXPECT_FALSE(isInside(65));
}

TEST(Text, OfAnAmountStaysToo)
{
    for (const std::size_t length : lengths) {
        std::string callers(length, '1');
        const Amount amount = text(callers.c_str());
        std::fill(callers.begin(), callers.end(), '2');
        std::string written;
        amount.writeFixed(2, [&written](std::string_view characters) { written = characters; });
        EXPECT_EQ(written, std::string(length, '1'));
        amount.writeGeneral([&written](std::string_view characters) { written = characters; });
        EXPECT_EQ(written, std::string(length, '1'));
    }
}

TEST(Text, IsEmptyForANullPointer)
{
    EXPECT_EQ(std::string_view(Text(nullptr)), "");
}

TEST(FirstCharacter, IsTheFirstByteAndZeroWithoutOne)
{
    EXPECT_EQ(firstCharacter("AB"), 'A');
    EXPECT_EQ(firstCharacter(""), '\0');
    EXPECT_EQ(firstCharacter(nullptr), '\0');
}

} // namespace
} // namespace telvofm
