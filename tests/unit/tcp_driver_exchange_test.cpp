// Whole exchanges over TCP: one send for the request and one for its checksum byte, tries, and replies that
// arrive whole, halved and byte by byte.
#include "tests/unit/tcp_driver_fixture.h"

namespace telvofm::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::Not;

const std::string command = bytes({0x1C, 0x01, 0xE0, 0x04});

TEST_F(TcpDriverTest, SendsTheRequestAndItsChecksumByteApart)
{
    network().play({arrive("\x06")});
    EXPECT_EQ(driver.sendCommand(command), 0x06);
    EXPECT_THAT(network().calls, ElementsAre("send 1c01e004", "send f9", "wait 3000", "receive 256"));
}

TEST_F(TcpDriverTest, TriesASilentPrinterThreeTimesWithOneProbeEach)
{
    EXPECT_EQ(codeOf([&] { driver.sendCommand(command); }), -10202);
    EXPECT_THAT(network().calls,
                ElementsAre("send 1c01e004", "send f9", "wait 3000", "send 11", "wait 3000", //
                            "send 1c01e004", "send f9", "wait 3000", "send 11", "wait 3000", //
                            "send 1c01e004", "send f9", "wait 3000", "send 11", "wait 3000"));
}

TEST_F(TcpDriverTest, AnIdlePrinterThatAnswersTheProbeCostsATry)
{
    network().play({silence, arrive("\x11"), arrive("\x06")});
    EXPECT_EQ(driver.sendCommand(command), 0x06);
    EXPECT_THAT(network().calls, Contains("send 1c01e004").Times(2));
}

TEST_F(TcpDriverTest, ForgetsLateBytesBeforeTheNextTry)
{
    network().play({arrive("\x06stale")});
    driver.sendCommand(command);
    network().play({arrive("\x06")});
    EXPECT_EQ(driver.sendCommand(command), 0x06);
}

TEST_F(TcpDriverTest, ANegativeReplyEndsTheCommandAtOnce)
{
    network().play({arrive("\x15\x07")});
    EXPECT_EQ(codeOf([&] { driver.sendCommand(command); }), 7);
    EXPECT_THAT(network().calls, Contains("send 1c01e004").Times(1));
}

TEST_F(TcpDriverTest, AnErrorCodeThatLooksLikeFlowControlIsTheCode)
{
    network().play({arrive("\x15\x11")});
    EXPECT_EQ(codeOf([&] { driver.sendCommand(command); }), 0x11);
    network().play({arrive("\x15"), arrive("\x13")});
    EXPECT_EQ(codeOf([&] { driver.query(command); }), 0x13);
}

TEST_F(TcpDriverTest, GarbageEndsTheExchangeAtOnce)
{
    network().play({arrive("ZZZ")});
    EXPECT_EQ(codeOf([&] { driver.sendCommand(command); }), -10002);
    network().play({arrive("ZZZ")});
    EXPECT_EQ(codeOf([&] { driver.query(command); }), -10002);
    network().play({arrive("ZZZ")});
    EXPECT_EQ(codeOf([&] { driver.queryStrict(command); }), -10002);
    EXPECT_THAT(network().calls, Contains("send 1c01e004").Times(3));
}

TEST_F(TcpDriverTest, ALostConnectionEndsTheExchangeAtOnce)
{
    network().play({closed});
    EXPECT_EQ(codeOf([&] { driver.sendCommand(command); }), -10201);
    EXPECT_THAT(network().calls, Contains("send 1c01e004").Times(1));
}

TEST_F(TcpDriverTest, ARequestThatCannotBeSentEndsTheExchangeAtOnce)
{
    network().failingSend = 2;
    EXPECT_EQ(codeOf([&] { driver.sendCommand(command); }), -10201);
    EXPECT_THAT(network().calls, ElementsAre("send 1c01e004", "send f9"));
}

TEST_F(TcpDriverTest, ABusyByteBeforeABlockIsSkippedAndInsideABlockIsData)
{
    const std::string data = bytes({0x13, 0x11, 0x13});
    network().play({arrive("\x13" + block(data, etx))});
    EXPECT_EQ(driver.query(command), data);
}

TEST_F(TcpDriverTest, ABusyByteBetweenBlocksIsSkipped)
{
    network().play({arrive(block("a", etb)), arrive("\x13"), arrive(block("b", etx))});
    EXPECT_EQ(driver.query(command), "ab");
}

// The length, the terminator position and the checksum byte may have the value of a flow-control byte.
TEST_F(TcpDriverTest, ALengthByteThatLooksLikeFlowControlIsTheLength)
{
    const std::string data(0x12, 'x'); // sent as length byte 0x11
    network().play({arrive(block(data, etx))});
    EXPECT_EQ(driver.query(command), data);
}

TEST_F(TcpDriverTest, ReadsAReplyHoweverItIsCut)
{
    const std::string data(300, 'x');
    const std::string answer = block(data.substr(0, 256), etb) + block(data.substr(256), etx);
    for (const std::size_t piece : {answer.size(), answer.size() / 2, std::size_t{7}, std::size_t{1}}) {
        for (std::size_t from = 0; from < answer.size(); from += piece) {
            network().events.push_back(arrive(answer.substr(from, piece)));
        }
        EXPECT_EQ(driver.query(command), data) << "in pieces of " << piece;
        EXPECT_TRUE(network().events.empty());
        EXPECT_THAT(network().takeCalls(), Not(Contains("send 15")));
    }
}

TEST_F(TcpDriverTest, AReplyCutAtEachPlaceIsReadWhole)
{
    const std::string answer = block("ab", etb) + "\x13" + block("c", etx);
    for (std::size_t cut = 1; cut < answer.size(); ++cut) {
        network().play({arrive(answer.substr(0, cut)), arrive(answer.substr(cut))});
        EXPECT_EQ(driver.query(command), "abc") << "cut at " << cut;
    }
}

// Only the first answer byte of a try may be waited for again.
TEST_F(TcpDriverTest, SilenceInsideAReplyEndsTheQuery)
{
    network().play({arrive(":\x05")});
    EXPECT_EQ(codeOf([&] { driver.query(command); }), -10202);
    EXPECT_THAT(network().calls, Contains("send 1c01e004").Times(1));
    EXPECT_THAT(network().calls, Contains("send 11").Times(1));
}

TEST_F(TcpDriverTest, AQueryMayFollowAFailedOne)
{
    EXPECT_EQ(codeOf([&] { driver.query(command); }), -10202);
    network().play({arrive(block("A", etx))});
    EXPECT_EQ(driver.query(command), "A");
}

TEST_F(TcpDriverTest, UploadsEachBlockInTwoSends)
{
    network().play({arrive("\x06")});
    driver.sendBlocks("A", true);
    EXPECT_THAT(network().calls, ElementsAre("send 3a004103", "send 78", "wait 3000", "receive 256"));
}

// A late "no more data" behind the first answer would be taken for the second one and end the upload.
TEST_F(TcpDriverTest, AnUploadForgetsLateBytesBeforeEachBlock)
{
    network().play({arrive("\x06\x04"), arrive("\x06"), arrive("\x06")});
    driver.sendBlocks(std::string(513, 'x'), true);
    EXPECT_THAT(network().calls, Contains("send 3a007803")); // the third block
}

TEST_F(TcpDriverTest, EveryExchangeTurnsARunTimeExceptionIntoACode)
{
    ::testing::internal::CaptureStdout();
    network().play({throwing("out of luck")});
    EXPECT_EQ(codeOf([&] { driver.sendCommand(command); }), -10001);
    EXPECT_EQ(codeOf([&] { driver.query(command); }), -10000);
    EXPECT_EQ(codeOf([&] { driver.queryStrict(command); }), -10000);
    EXPECT_EQ(codeOf([&] { driver.sendBlocks("A", true); }), -10000);
    EXPECT_EQ(::testing::internal::GetCapturedStdout(), "") << "only serial links print its text";
}

} // namespace
} // namespace telvofm::test
