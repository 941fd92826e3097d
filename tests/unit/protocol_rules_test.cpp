// Each rule by itself: a link whose rules are those of TCP or of a serial line but for one.
#include "tests/unit/bytes.h"
#include "tests/unit/scripted_link.h"

#include <gmock/gmock.h>

namespace telvofm::test {
namespace {

using ::testing::ElementsAre;
using ::testing::internal::CaptureStdout;
using ::testing::internal::GetCapturedStdout;

template <typename Rule>
ProtocolRules but(ProtocolRules rules, Rule ProtocolRules::*rule, Rule value)
{
    rules.*rule = value;
    return rules;
}

const std::string refusal = bytes({0x15, 0x07});

TEST(NegativeReply, EndsTheExchangeOrCostsATry)
{
    ScriptedLink tcp(but(tcpRules, &ProtocolRules::negativeReplyEndsExchange, false), {refusal, {ack}});
    EXPECT_EQ(tcp.sendCommand("a"), 0x06);

    ScriptedLink serial(but(serialRules, &ProtocolRules::negativeReplyEndsExchange, true), {refusal, {ack}});
    EXPECT_EQ(codeOf([&] { serial.sendCommand("a"); }), 7);
}

TEST(Silence, CostsATryOrEndsTheExchange)
{
    ScriptedLink tcp(but(tcpRules, &ProtocolRules::silenceCostsTry, false), {{}, {ack}});
    EXPECT_EQ(codeOf([&] { tcp.sendCommand("a"); }), code::timeout);
    EXPECT_EQ(tcp.sent.size(), 1U);

    ScriptedLink serial(but(serialRules, &ProtocolRules::silenceCostsTry, true), {{}, {}, {ack}});
    EXPECT_EQ(serial.sendCommand("a"), 0x06);
    EXPECT_EQ(serial.sent.size(), 3U);
}

TEST(AnyByte, RefusesARequestOrIsNoAnswer)
{
    ScriptedLink tcp(but(tcpRules, &ProtocolRules::anyByteRefusesRequest, true), {bytes({'x', 0x07})});
    EXPECT_EQ(codeOf([&] { tcp.sendCommand("a"); }), 7);

    ScriptedLink serial(but(serialRules, &ProtocolRules::anyByteRefusesRequest, false), {bytes({'x', 0x07})});
    EXPECT_EQ(codeOf([&] { serial.sendCommand("a"); }), code::unexpectedAnswer);
}

// A code follows the byte that refuses a block; after one that means nothing there may be none.
TEST(AnyByte, RefusesABlockOrIsNoAnswer)
{
    ScriptedLink tcp(but(tcpRules, &ProtocolRules::anyByteRefusesRequest, true), {bytes({'x', 0x07}), {ack}});
    EXPECT_EQ(codeOf([&] { tcp.sendBlocks("a", true); }), 7);

    ScriptedLink serial(but(serialRules, &ProtocolRules::anyByteRefusesRequest, false), {"x", {ack}});
    serial.sendBlocks("a", true);
    EXPECT_EQ(serial.sent.size(), 2U);
}

TEST(StrayBytes, AreSkippedBeforeAReplyOrAreAnError)
{
    const std::string reply = "xx" + block("data", etx);
    ScriptedLink tcp(but(tcpRules, &ProtocolRules::querySkipsStrayBytes, true), {reply});
    EXPECT_EQ(tcp.query("a"), "data");

    ScriptedLink serial(but(serialRules, &ProtocolRules::querySkipsStrayBytes, false), {reply});
    EXPECT_EQ(codeOf([&] { serial.query("a"); }), code::unexpectedAnswer);
}

TEST(UnknownTerminator, IsPrintedOrNot)
{
    const std::string reply = block("data", 'x') + eot;
    ScriptedLink tcp(but(tcpRules, &ProtocolRules::queryReportsUnknownTerminator, true), {reply});
    CaptureStdout();
    EXPECT_EQ(tcp.query("a"), "data");
    EXPECT_EQ(GetCapturedStdout(), "Odpoved na potvrdenie prijatia bloku: \n");

    ScriptedLink serial(but(serialRules, &ProtocolRules::queryReportsUnknownTerminator, false), {reply});
    CaptureStdout();
    EXPECT_EQ(serial.query("a"), "data");
    EXPECT_EQ(GetCapturedStdout(), "");
}

TEST(ExceptionOfTheStandardLibrary, IsPrintedOrNot)
{
    ScriptedLink tcp(but(tcpRules, &ProtocolRules::printsRuntimeFailure, true), {{ack}});
    tcp.trouble = "no memory";
    CaptureStdout();
    EXPECT_EQ(codeOf([&] { tcp.sendCommand("a"); }), code::uploadRefusedOrRuntimeFailure);
    EXPECT_EQ(GetCapturedStdout(), "no memory\n");

    ScriptedLink serial(but(serialRules, &ProtocolRules::printsRuntimeFailure, false), {{ack}});
    serial.trouble = "no memory";
    CaptureStdout();
    EXPECT_EQ(codeOf([&] { serial.sendCommand("a"); }), code::runtimeFailure);
    EXPECT_EQ(GetCapturedStdout(), "");
}

} // namespace
} // namespace telvofm::test
