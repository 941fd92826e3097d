// The kinds of delivery, each with room and with the last byte of it.
#include "api/delivery.h"

#include <gtest/gtest.h>

#include <string>

namespace telvofm::test {
namespace {

using namespace std::string_literals;

constexpr char untouched = '#';

// What a delivery makes of 8 bytes when it is told of `size` of them.
template <typename Deliver>
std::string delivered(Deliver deliver, std::string_view reply, int size)
{
    std::string buffer(8, untouched);
    deliver(reply, buffer.data(), size);
    return buffer;
}

TEST(Delivery, ExactlyIsByteForByteWithoutTerminator)
{
    EXPECT_EQ(delivered(copyExactly, "A\0C"s, 8), "A\0C#####"s);
    EXPECT_EQ(delivered(copyExactly, "A\0C"s, 3), "A\0C#####"s);
}

TEST(Delivery, ExactlyLeavesTheBufferAloneWithoutReply)
{
    EXPECT_EQ(delivered(copyExactly, "", 8), "########");
    EXPECT_EQ(delivered(copyExactly, "", 0), "########");
    EXPECT_EQ(delivered(copyExactly, "", -1), "########");
    copyExactly("", nullptr, 8);
}

TEST(Delivery, BlankedEndsWithATerminator)
{
    EXPECT_EQ(delivered(copyBlanked, "AB\0C"s, 8), "AB C\0###"s);
    EXPECT_EQ(delivered(copyBlanked, ""s, 8), "\0#######"s);
}

TEST(Delivery, BlankedClipsTheCopyAndNotTheTerminator)
{
    EXPECT_EQ(delivered(copyBlanked, "AB\0C"s, 4), "AB C\0###"s);
    EXPECT_EQ(delivered(copyBlanked, "AB\0C"s, 2), "AB##\0###"s);
    EXPECT_EQ(delivered(copyBlanked, "AB\0C"s, 0), "####\0###"s);
    EXPECT_EQ(delivered(copyBlanked, "AB\0C"s, -5), "####\0###"s);
}

TEST(Delivery, BlankedWithoutABufferDoesNothing)
{
    copyBlanked("AB", nullptr, 8);
    copyBlankedWithoutTerminator("AB", nullptr, 8);
}

TEST(Delivery, BlankedWithoutTerminatorOnlyClips)
{
    EXPECT_EQ(delivered(copyBlankedWithoutTerminator, "AB\0C"s, 8), "AB C####");
    EXPECT_EQ(delivered(copyBlankedWithoutTerminator, "AB\0C"s, 3), "AB #####");
    EXPECT_EQ(delivered(copyBlankedWithoutTerminator, "AB\0C"s, 0), "########");
    EXPECT_EQ(delivered(copyBlankedWithoutTerminator, "AB\0C"s, -5), "########");
    EXPECT_EQ(delivered(copyBlankedWithoutTerminator, "", 8), "########");
}

TEST(Delivery, TextEndsAtItsFirstZero)
{
    EXPECT_EQ(delivered(copyText, "AB"s, 8), "AB\0#####"s);
    EXPECT_EQ(delivered(copyText, "AB\0C"s, 8), "AB\0#####"s);
    EXPECT_EQ(delivered(copyText, "", 8), "\0#######"s);
}

TEST(Delivery, TextMayFillTheBufferWithItsTerminator)
{
    EXPECT_EQ(delivered(copyText, "AB"s, 3), "AB\0#####"s);
    EXPECT_EQ(delivered(copyText, "AB\0CDEFGH"s, 3), "AB\0#####"s);
    EXPECT_EQ(delivered(copyText, "", 1), "\0#######"s);
}

} // namespace
} // namespace telvofm::test
