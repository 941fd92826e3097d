// Requests and their first answer: acceptance, refusal, silence and garbage, by the rules of both links.
#include "tests/unit/bytes.h"
#include "tests/unit/scripted_link.h"

#include <gmock/gmock.h>

namespace telvofm::test {
namespace {

using ::testing::ElementsAre;

const std::string request = bytes({0x1C, 0x01, 0xE0, 0x04});
const std::string sentRequest = request + '\xF9';

TEST(SendCommand, ReturnsTheAcknowledgeByte)
{
    for (const auto* rules : {&tcpRules, &serialRules}) {
        ScriptedLink link(*rules, {{ack}});
        EXPECT_EQ(link.sendCommand(request), 0x06);
        EXPECT_THAT(link.sent, ElementsAre(sentRequest));
    }
}

TEST(SendCommand, AnEmptyRequestIsJustTheChecksumByteZero)
{
    ScriptedLink link(tcpRules, {{ack}});
    link.sendCommand("");
    EXPECT_THAT(link.sent, ElementsAre(bytes({0x00})));
}

TEST(SendCommand, TcpThrowsANegativeReplyAtOnce)
{
    ScriptedLink link(tcpRules, {bytes({0x15, 0x07}), {ack}});
    EXPECT_EQ(codeOf([&] { link.sendCommand(request); }), 7);
    EXPECT_EQ(link.sent.size(), 1U);
}

TEST(SendCommand, SerialThrowsTheLastErrorCodeAfterThreeNegativeReplies)
{
    ScriptedLink link(serialRules, {bytes({0x15, 0x07}), bytes({0x15, 0x08}), bytes({0x15, 0xFF})});
    EXPECT_EQ(codeOf([&] { link.sendCommand(request); }), 255);
    EXPECT_THAT(link.sent, ElementsAre(sentRequest, sentRequest, sentRequest));
}

TEST(SendCommand, SerialAcceptsASecondTry)
{
    ScriptedLink link(serialRules, {bytes({0x15, 0x07}), {ack}});
    EXPECT_EQ(link.sendCommand(request), 0x06);
    EXPECT_EQ(link.sent.size(), 2U);
}

TEST(SendCommand, SerialTakesAnyByteForARefusalAndTheNextForItsCode)
{
    ScriptedLink link(serialRules, {"Z\x09", "Z\x09", "Z\x0A"});
    EXPECT_EQ(codeOf([&] { link.sendCommand(request); }), 10);
}

TEST(SendCommand, TcpThrowsAtOnceOnAByteThatMeansNothing)
{
    ScriptedLink link(tcpRules, {"Z", {ack}});
    EXPECT_EQ(codeOf([&] { link.sendCommand(request); }), -10002);
    EXPECT_EQ(link.sent.size(), 1U);
}

TEST(SendCommand, TcpTriesThreeTimesAgainstSilence)
{
    ScriptedLink link(tcpRules, {});
    EXPECT_EQ(codeOf([&] { link.sendCommand(request); }), -10202);
    EXPECT_THAT(link.sent, ElementsAre(sentRequest, sentRequest, sentRequest));
}

TEST(SendCommand, TcpAcceptsTheThirdTry)
{
    ScriptedLink link(tcpRules, {"", "", {ack}});
    EXPECT_EQ(link.sendCommand(request), 0x06);
}

TEST(SendCommand, SerialDoesNotTryAgainAfterSilence)
{
    ScriptedLink link(serialRules, {"", {ack}});
    EXPECT_EQ(codeOf([&] { link.sendCommand(request); }), -10202);
    EXPECT_EQ(link.sent.size(), 1U);
}

TEST(Query, AnAnswerWithoutDataIsAnEmptyReply)
{
    for (const auto* rules : {&tcpRules, &serialRules}) {
        ScriptedLink link(*rules, {{eot}, {eot}});
        EXPECT_EQ(link.query(request), "");
        EXPECT_EQ(link.queryStrict(request), "");
        EXPECT_THAT(link.sent, ElementsAre(sentRequest, sentRequest));
    }
}

TEST(Query, TcpThrowsANegativeReplyAtOnce)
{
    ScriptedLink link(tcpRules, {bytes({0x15, 0x00}), bytes({0x15, 0x11})});
    EXPECT_EQ(codeOf([&] { link.query(request); }), 0);
    EXPECT_EQ(codeOf([&] { link.queryStrict(request); }), 0x11);
    EXPECT_EQ(link.sent.size(), 2U);
}

TEST(Query, SerialThrowsTheLastErrorCodeAfterThreeNegativeReplies)
{
    ScriptedLink link(serialRules, {bytes({0x15, 1}), bytes({0x15, 2}), bytes({0x15, 3})});
    EXPECT_EQ(codeOf([&] { link.query(request); }), 3);
    EXPECT_EQ(link.sent.size(), 3U);
}

TEST(Query, SerialSkipsStrayBytesInFrontOfTheReply)
{
    ScriptedLink link(serialRules, {std::string("ab\x06") + block("A", etx)});
    EXPECT_EQ(link.query(request), "A");
}

TEST(Query, StrictAndTcpTakeAStrayByteForAnErrorAtOnce)
{
    ScriptedLink serial(serialRules, {std::string("a") + block("A", etx), {eot}});
    EXPECT_EQ(codeOf([&] { serial.queryStrict(request); }), -10002);
    EXPECT_EQ(serial.sent.size(), 1U);

    ScriptedLink tcp(tcpRules, {std::string("a") + block("A", etx), "\x06"});
    EXPECT_EQ(codeOf([&] { tcp.query(request); }), -10002);
    EXPECT_EQ(codeOf([&] { tcp.queryStrict(request); }), -10002);
    EXPECT_EQ(tcp.sent.size(), 2U);
}

TEST(Query, TcpTriesThreeTimesAgainstSilence)
{
    ScriptedLink link(tcpRules, {"", "", block("A", etx)});
    EXPECT_EQ(link.query(request), "A");
    EXPECT_EQ(codeOf([&] { link.queryStrict(request); }), -10202);
    EXPECT_EQ(link.sent.size(), 6U);
}

} // namespace
} // namespace telvofm::test
