#include "tests/unit/bytes.h"
#include "tests/unit/scripted_link.h"

#include <gtest/gtest.h>

#include <array>

namespace telvofm::test {
namespace {

class ReadRaw : public ::testing::Test
{
protected:
    ScriptedLink link{tcpRules, {}};
    std::array<unsigned char, 8> buffer{};
    int marker = 0;
};

TEST_F(ReadRaw, ReturnsWhatCameBeforeTheTimeout)
{
    link.unread = "abc";
    EXPECT_EQ(link.readRaw(buffer.data(), 5, &marker), 3);
    EXPECT_EQ(buffer, (std::array<unsigned char, 8>{'a', 'b', 'c'}));
}

TEST_F(ReadRaw, TakesNoMoreThanAskedFor)
{
    link.unread = "abcdef";
    EXPECT_EQ(link.readRaw(buffer.data(), 2, &marker), 2);
    EXPECT_EQ(link.unread, "cdef");
    EXPECT_EQ(link.readRaw(buffer.data(), 0, &marker), 0);
}

TEST_F(ReadRaw, WithoutAMarkerReadsNothing)
{
    link.unread = "abc";
    EXPECT_EQ(link.readRaw(buffer.data(), 3, nullptr), 0);
    EXPECT_EQ(link.unread, "abc");
}

class FailingLink final : public LinkDriver
{
public:
    FailingLink() : LinkDriver("failing") {}
    void open() override {}
    void close() override {}
    Byte sendCommand(std::string_view /*request*/) override { return 0; }
    void sendBlocks(std::string_view /*data*/, bool /*lastPart*/) override {}
    std::string query(std::string_view /*request*/) override { return {}; }
    std::string queryStrict(std::string_view /*request*/) override { return {}; }
    std::size_t writeRaw(std::string_view /*bytes*/) override { return 0; }
    Byte readByte(bool /*passThrough*/, std::int64_t /*waitMs*/) override
    {
        throw Telvo06FMException(code::transportFailure);
    }
};

TEST_F(ReadRaw, OtherFailuresReachTheCaller)
{
    FailingLink failing;
    EXPECT_EQ(codeOf([&] { failing.readRaw(buffer.data(), 1, &marker); }), -10201);
}

TEST(LinkDriverTimeout, IsStoredAndKeptAndNothingMore)
{
    FailingLink link;
    EXPECT_EQ(link.timeout(), 5000);
    link.setTimeout(1);
    EXPECT_EQ(link.timeout(), 1);
}

} // namespace
} // namespace telvofm::test
