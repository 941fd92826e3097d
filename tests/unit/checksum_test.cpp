#include "link/block_protocol.h"
#include "tests/unit/bytes.h"

#include <gtest/gtest.h>

namespace telvofm::test {
namespace {

TEST(Checksum, OfNothingIsZero)
{
    EXPECT_EQ(checksum(""), 0);
}

TEST(Checksum, IsTheXorOfEveryByteOfARequest)
{
    EXPECT_EQ(checksum(bytes({0x1C, 0x01, 0xE0, 0x04})), 0xF9);
    EXPECT_EQ(checksum(bytes({0x1C, 0x01, 0x29, 0x30, 0x00, 0x04})), 0x00);
}

TEST(Checksum, TakesBytesAsUnsigned)
{
    EXPECT_EQ(checksum(bytes({0xFF})), 0xFF);
    EXPECT_EQ(checksum(bytes({0xFF, 0x80})), 0x7F);
}

} // namespace
} // namespace telvofm::test
