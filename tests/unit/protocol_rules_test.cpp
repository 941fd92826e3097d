// Each rule by itself: a link whose rules are those of TCP or of a serial line but for one.
#include "tests/unit/bytes.h"
#include "tests/unit/scripted_link.h"

#include <gtest/gtest.h>

namespace telvofm::test {
namespace {

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
    const ProtocolRules rulesOfTcp = but(tcpRules, &ProtocolRules::negativeReplyEndsExchange, false);
    ScriptedLink tcp(rulesOfTcp, {refusal, {ack}});
    EXPECT_EQ(tcp.sendCommand("a"), 0x06);

    const ProtocolRules rulesOfSerial = but(serialRules, &ProtocolRules::negativeReplyEndsExchange, true);
    ScriptedLink serial(rulesOfSerial, {refusal, {ack}});
    EXPECT_EQ(codeOf([&] { serial.sendCommand("a"); }), 7);
}

TEST(Silence, CostsATryOrEndsTheExchange)
{
    const ProtocolRules rulesOfTcp = but(tcpRules, &ProtocolRules::silenceCostsTry, false);
    ScriptedLink tcp(rulesOfTcp, {{}, {ack}});
    EXPECT_EQ(codeOf([&] { tcp.sendCommand("a"); }), code::timeout);
    EXPECT_EQ(tcp.sent.size(), 1U);

    const ProtocolRules rulesOfSerial = but(serialRules, &ProtocolRules::silenceCostsTry, true);
    ScriptedLink serial(rulesOfSerial, {{}, {}, {ack}});
    EXPECT_EQ(serial.sendCommand("a"), 0x06);
    EXPECT_EQ(serial.sent.size(), 3U);
}

TEST(AnyByte, RefusesARequestOrIsNoAnswer)
{
    const ProtocolRules rulesOfTcp = but(tcpRules, &ProtocolRules::anyByteRefusesRequest, true);
    ScriptedLink tcp(rulesOfTcp, {bytes({'x', 0x07})});
    EXPECT_EQ(codeOf([&] { tcp.sendCommand("a"); }), 7);

    const ProtocolRules rulesOfSerial = but(serialRules, &ProtocolRules::anyByteRefusesRequest, false);
    ScriptedLink serial(rulesOfSerial, {bytes({'x', 0x07})});
    EXPECT_EQ(codeOf([&] { serial.sendCommand("a"); }), code::unexpectedAnswer);
}

// A code follows the byte that refuses a block; after one that means nothing there may be none.
TEST(AnyByte, RefusesABlockOrIsNoAnswer)
{
    const ProtocolRules rulesOfTcp = but(tcpRules, &ProtocolRules::anyByteRefusesRequest, true);
    ScriptedLink tcp(rulesOfTcp, {bytes({'x', 0x07}), {ack}});
    EXPECT_EQ(codeOf([&] { tcp.sendBlocks("a", true); }), 7);

    const ProtocolRules rulesOfSerial = but(serialRules, &ProtocolRules::anyByteRefusesRequest, false);
    ScriptedLink serial(rulesOfSerial, {"x", {ack}});
    serial.sendBlocks("a", true);
    EXPECT_EQ(serial.sent.size(), 2U);
}

TEST(StrayBytes, AreSkippedBeforeAReplyOrAreAnError)
{
    const std::string reply = "xx" + block("data", etx);
    const ProtocolRules rulesOfTcp = but(tcpRules, &ProtocolRules::querySkipsStrayBytes, true);
    ScriptedLink tcp(rulesOfTcp, {reply});
    EXPECT_EQ(tcp.query("a"), "data");

    const ProtocolRules rulesOfSerial = but(serialRules, &ProtocolRules::querySkipsStrayBytes, false);
    ScriptedLink serial(rulesOfSerial, {reply});
    EXPECT_EQ(codeOf([&] { serial.query("a"); }), code::unexpectedAnswer);
}

TEST(UnknownTerminator, IsPrintedOrNot)
{
    const std::string reply = block("data", 'x') + eot;
    const ProtocolRules rulesOfTcp = but(tcpRules, &ProtocolRules::queryReportsUnknownTerminator, true);
    ScriptedLink tcp(rulesOfTcp, {reply});
    CaptureStdout();
    EXPECT_EQ(tcp.query("a"), "data");
    EXPECT_EQ(GetCapturedStdout(), "Odpoved na potvrdenie prijatia bloku: \n");

    const ProtocolRules rulesOfSerial =
        but(serialRules, &ProtocolRules::queryReportsUnknownTerminator, false);
    ScriptedLink serial(rulesOfSerial, {reply});
    CaptureStdout();
    EXPECT_EQ(serial.query("a"), "data");
    EXPECT_EQ(GetCapturedStdout(), "");
}

TEST(ExceptionOfTheStandardLibrary, IsPrintedOrNot)
{
    const ProtocolRules rulesOfTcp = but(tcpRules, &ProtocolRules::printsRuntimeFailure, true);
    ScriptedLink tcp(rulesOfTcp, {{ack}});
    tcp.trouble = "no memory";
    CaptureStdout();
    EXPECT_EQ(codeOf([&] { tcp.sendCommand("a"); }), code::uploadRefusedOrRuntimeFailure);
    EXPECT_EQ(GetCapturedStdout(), "no memory\n");

    const ProtocolRules rulesOfSerial = but(serialRules, &ProtocolRules::printsRuntimeFailure, false);
    ScriptedLink serial(rulesOfSerial, {{ack}});
    serial.trouble = "no memory";
    CaptureStdout();
    EXPECT_EQ(codeOf([&] { serial.sendCommand("a"); }), code::runtimeFailure);
    EXPECT_EQ(GetCapturedStdout(), "");
}

} // namespace
} // namespace telvofm::test
