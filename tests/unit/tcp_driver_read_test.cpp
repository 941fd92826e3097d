// Reading one byte: the waits, the probe, the printer's flow-control bytes, and a connection that is gone.
#include "tests/unit/tcp_driver_fixture.h"

#include <algorithm>
#include <array>

namespace telvofm::test {
namespace {

using ::testing::ElementsAre;

TEST_F(TcpDriverTest, TakesBytesFromTheBufferBeforeItWaits)
{
    network().play({arrive("ab")});
    EXPECT_EQ(driver.readByte(false, 0), 'a');
    EXPECT_EQ(driver.readByte(false, 0), 'b');
    EXPECT_THAT(network().calls, ElementsAre("wait 3000", "receive 256"));
}

TEST_F(TcpDriverTest, ProbesOnceAndThenGivesUp)
{
    network().play({silence, silence});
    EXPECT_EQ(codeOf([&] { driver.readByte(false, 0); }), -10202);
    EXPECT_THAT(network().calls, ElementsAre("wait 3000", "send 11", "wait 3000"));
}

TEST_F(TcpDriverTest, ReturnsAByteThatComesAfterTheProbe)
{
    network().play({silence, arrive("\x06")});
    EXPECT_EQ(driver.readByte(false, 0), 0x06);
}

TEST_F(TcpDriverTest, AReadyByteAfterTheProbeEndsTheWait)
{
    network().play({silence, arrive("\x11")});
    EXPECT_EQ(codeOf([&] { driver.readByte(false, 0); }), -10202);
    EXPECT_THAT(network().calls, ElementsAre("wait 3000", "send 11", "wait 3000", "receive 256"));
}

TEST_F(TcpDriverTest, AReadyByteWithoutAProbeIsDropped)
{
    network().play({arrive("\x11\x11\x06")});
    EXPECT_EQ(driver.readByte(false, 0), 0x06);
}

TEST_F(TcpDriverTest, ABusyPrinterIsWaitedForAsLongAsItAnswersProbes)
{
    network().play(
        {silence, arrive("\x13"), silence, arrive("\x13"), silence, arrive("\x13"), arrive("\x06")});
    EXPECT_EQ(driver.readByte(false, 0), 0x06);
    EXPECT_EQ(std::count(network().calls.begin(), network().calls.end(), "send 11"), 3);
}

TEST_F(TcpDriverTest, ABusyByteStartsTheWaitAnew)
{
    network().play({silence, arrive("\x13"), arrive("\x11"), silence, silence});
    EXPECT_EQ(codeOf([&] { driver.readByte(false, 0); }), -10202);
    EXPECT_THAT(network().calls, ElementsAre("wait 3000", "send 11", "wait 3000", "receive 256", // busy
                                             "wait 3000", "receive 256", // ready, unprobed: dropped
                                             "wait 3000", "send 11", "wait 3000"));
}

TEST_F(TcpDriverTest, GivesEachByteWithAllItsBits)
{
    network().play({arrive("\x80\xFF\x7F")});
    for (const int byte : {0x80, 0xFF, 0x7F}) {
        EXPECT_EQ(driver.readByte(false, 0), byte);
    }
}

TEST_F(TcpDriverTest, PassThroughTakesFlowControlBytesAsData)
{
    network().play({arrive("\x11\x13")});
    EXPECT_EQ(driver.readByte(true, 0), 0x11);
    EXPECT_EQ(driver.readByte(true, 0), 0x13);
}

// Raw access reads beside a call: what it leaves in the buffer comes before what the network has next.
TEST_F(TcpDriverTest, TakesWhatAnotherThreadHasReceivedMeanwhile)
{
    network().play({arrive("ab"), arrive("c")});
    network().meanwhile("wait 3000", [this] { EXPECT_EQ(driver.readByte(true, 1), 'a'); });
    EXPECT_EQ(driver.readByte(false, 0), 'b');
    EXPECT_EQ(driver.readByte(false, 0), 'c');
}

TEST_F(TcpDriverTest, AGivenWaitIsKeptWithoutAProbe)
{
    network().play({silence});
    EXPECT_EQ(codeOf([&] { driver.readByte(false, 1500); }), -10202);
    EXPECT_THAT(network().calls, ElementsAre("wait 1500"));
}

TEST_F(TcpDriverTest, AGivenWaitTakesFlowControlBytesAsData)
{
    network().play({arrive("\x11\x13")});
    EXPECT_EQ(driver.readByte(false, 10), 0x11);
    EXPECT_EQ(driver.readByte(false, 10), 0x13);
}

TEST_F(TcpDriverTest, AConnectionClosedByThePrinterIsAFailure)
{
    network().play({closed});
    EXPECT_EQ(codeOf([&] { driver.readByte(false, 0); }), -10201);
    EXPECT_THAT(network().calls, ElementsAre("wait 3000", "receive 256"));
}

TEST_F(TcpDriverTest, ABrokenReceiveIsAFailure)
{
    network().play({brokenRead});
    EXPECT_EQ(codeOf([&] { driver.readByte(false, 0); }), -10201);
}

TEST_F(TcpDriverTest, ABrokenWaitIsAFailure)
{
    network().play({brokenWait});
    EXPECT_EQ(codeOf([&] { driver.readByte(false, 0); }), -10201);
}

TEST_F(TcpDriverTest, AProbeThatCannotBeSentIsAFailure)
{
    network().failingSend = 1;
    network().play({silence});
    EXPECT_EQ(codeOf([&] { driver.readByte(false, 0); }), -10201);
}

TEST_F(TcpDriverTest, WritesRawBytesInOneSend)
{
    EXPECT_EQ(driver.writeRaw("abc"), 3U);
    EXPECT_THAT(network().calls, ElementsAre("send 616263"));
}

TEST_F(TcpDriverTest, AFailingSendIsAFailure)
{
    network().failingSend = 1;
    EXPECT_EQ(codeOf([&] { driver.writeRaw("abc"); }), -10201);
}

TEST_F(TcpDriverTest, ReadRawReturnsWhatCameBeforeTheSilence)
{
    network().play({arrive("a\x11"), arrive("bc"), silence, silence});
    std::array<unsigned char, 5> buffer{};
    EXPECT_EQ(driver.readRaw(buffer.data(), 5, &buffer), 3);
    EXPECT_EQ(buffer, (std::array<unsigned char, 5>{'a', 'b', 'c'}));
}

} // namespace
} // namespace telvofm::test
