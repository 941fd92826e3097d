// Uploads: data cut into blocks, and what the printer may answer to each.
#include "tests/unit/bytes.h"
#include "tests/unit/scripted_link.h"

#include <gmock/gmock.h>

namespace telvofm::test {
namespace {

using ::testing::ElementsAre;

TEST(Upload, OfNothingSendsNothing)
{
    ScriptedLink link(tcpRules, {});
    link.sendBlocks("", true);
    EXPECT_THAT(link.sent, ElementsAre());
}

TEST(Upload, KnowsABlockByItsBytes)
{
    ScriptedLink link(tcpRules, {{ack}});
    link.sendBlocks("A", true);
    EXPECT_THAT(link.sent, ElementsAre(bytes({0x3A, 0x00, 0x41, 0x03, 0x78})));
}

TEST(Upload, CutsTheDataIntoPiecesOf256Bytes)
{
    const std::string full(256, 'x');
    ScriptedLink one(tcpRules, {{ack}});
    one.sendBlocks(full, true);
    EXPECT_THAT(one.sent, ElementsAre(block(full, etx)));

    ScriptedLink two(tcpRules, {{ack}, {ack}});
    two.sendBlocks(full + "y", true);
    EXPECT_THAT(two.sent, ElementsAre(block(full, etb), block("y", etx)));
}

TEST(Upload, APartThatIsNotTheLastEndsWithMoreToFollow)
{
    ScriptedLink link(tcpRules, {{ack}, {ack}});
    link.sendBlocks(std::string(257, 'x'), false);
    EXPECT_THAT(link.sent, ElementsAre(block(std::string(256, 'x'), etb), block("x", etb)));
}

TEST(Upload, EndsWhenThePrinterWantsNoMore)
{
    for (const char enough : {etx, eot}) {
        for (const auto* rules : {&tcpRules, &serialRules}) {
            ScriptedLink link(*rules, {{enough}});
            link.sendBlocks(std::string(600, 'x'), true);
            EXPECT_EQ(link.sent.size(), 1U);
        }
    }
}

TEST(Upload, TcpThrowsANegativeReplyAtOnce)
{
    ScriptedLink link(tcpRules, {{ack}, bytes({0x15, 0x21})});
    EXPECT_EQ(codeOf([&] { link.sendBlocks(std::string(257, 'x'), true); }), 0x21);
    EXPECT_EQ(link.sent.size(), 2U);
}

TEST(Upload, TcpTriesABlockThreeTimesAgainstAnyOtherByte)
{
    ScriptedLink link(tcpRules, {"Z", "Z", "Z"});
    EXPECT_EQ(codeOf([&] { link.sendBlocks("A", true); }), -10202);
    EXPECT_THAT(link.sent, ElementsAre(block("A", etx), block("A", etx), block("A", etx)));
}

TEST(Upload, TcpTriesABlockThreeTimesAgainstSilence)
{
    ScriptedLink link(tcpRules, {});
    EXPECT_EQ(codeOf([&] { link.sendBlocks("A", true); }), -10202);
    EXPECT_EQ(link.sent.size(), 3U);
}

TEST(Upload, SerialReadsOneMoreByteWhateverItIsRefusedWith)
{
    ScriptedLink link(serialRules, {"ZQR", "ZQR", "ZQR"});
    EXPECT_EQ(codeOf([&] { link.sendBlocks("A", true); }), -10001);
    EXPECT_EQ(link.unread, "R");
}

TEST(Upload, SerialDiscardsTheCodeOfARefusalAndTriesAgain)
{
    ScriptedLink accepted(serialRules, {bytes({0x15, 0x21}), "Z\x06", {ack}});
    accepted.sendBlocks("A", true);
    EXPECT_EQ(accepted.sent.size(), 3U);

    ScriptedLink refused(serialRules, {bytes({0x15, 0x21}), bytes({0x15, 0x21}), bytes({0x15, 0x21})});
    EXPECT_EQ(codeOf([&] { refused.sendBlocks("A", true); }), -10001);
    EXPECT_EQ(refused.sent.size(), 3U);
}

TEST(Upload, EachBlockHasItsOwnThreeTries)
{
    ScriptedLink link(tcpRules, {"Z", "Z", {ack}, "Z", "Z", {ack}});
    link.sendBlocks(std::string(257, 'x'), true);
    EXPECT_EQ(link.sent.size(), 6U);
}

} // namespace
} // namespace telvofm::test
