// Reading on a serial link: the printer that is silent, the one that is busy, and bytes that are there
// already.
#include "tests/unit/serial_driver_fixture.h"

#include <array>

namespace telvofm::test {
namespace {

using namespace std::chrono_literals;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::Not;

// The calls behind "read" and "look" of an answer that is waited for; the request is one byte.
class SerialAnswer : public SerialDriverTest
{
protected:
    std::int32_t codeOfCommand()
    {
        return codeOf([&] { driver.sendCommand("a"); });
    }

    // Looks at the lines that belong to writing the request and its checksum byte.
    static constexpr int looksOfRequest = 3;

    static void lookWhileWaiting(std::initializer_list<CSerial::ModemStatus> looks)
    {
        port().looks.assign(looksOfRequest, bothOn);
        port().looks.insert(port().looks.end(), looks);
    }

    static std::vector<std::string> callsWhileWaiting()
    {
        constexpr int callsOfRequest = 6;
        return {port().calls.begin() + callsOfRequest, port().calls.end()};
    }

    static constexpr std::int32_t succeeded = 0x7FFFFFFF;
};

TEST_F(SerialAnswer, SilenceOfMoreThan15SecondsWithClearToSendOnIsCode64)
{
    port().play({silence(15001ms)});
    EXPECT_EQ(codeOfCommand(), 64);
    EXPECT_THAT(callsWhileWaiting(), ElementsAre("read 1 15000", "look"));
}

TEST_F(SerialAnswer, SilenceOfJust15SecondsIsWaitedForOnceMore)
{
    port().play({silence(15000ms), silence(15000ms), arrive({ack})});
    EXPECT_EQ(codeOfCommand(), 64);
    EXPECT_THAT(callsWhileWaiting(), ElementsAre("read 1 15000", "look", "read 1 15000", "look"));
    EXPECT_EQ(port().events.size(), 1U);
}

TEST_F(SerialAnswer, AByteInTheSecondWaitCounts)
{
    port().play({silence(15000ms), arrive({ack})});
    EXPECT_EQ(codeOfCommand(), succeeded);
}

TEST_F(SerialAnswer, Code64CostsNoTry)
{
    port().play({silence(15001ms), arrive({ack})});
    EXPECT_EQ(codeOfCommand(), 64);
    EXPECT_EQ(port().written(), "aa") << "the request and its checksum byte, once";
    EXPECT_EQ(codeOfCommand(), succeeded) << "and the next call works";
}

TEST_F(SerialAnswer, APrinterWithoutClearToSendIsBusyAndWaitedForWithoutLimit)
{
    constexpr int waits = 1000;
    port().looks.assign(looksOfRequest, bothOn);
    port().looks.insert(port().looks.end(), waits, onlyDsr);
    port().events.assign(waits, silence(15001ms));
    port().events.push_back(arrive({ack}));
    EXPECT_EQ(codeOfCommand(), succeeded);
    EXPECT_EQ(port().count("read 1 15000"), waits + 1);
}

TEST_F(SerialAnswer, TheSilenceCountsFromTheLastLookAtABusyPrinter)
{
    lookWhileWaiting({onlyDsr, bothOn, bothOn});
    port().play({silence(15001ms), silence(15000ms), silence(1ms), arrive({ack})});
    EXPECT_EQ(codeOfCommand(), 64);
    EXPECT_EQ(port().events.size(), 1U) << "three waits: busy, not yet too long, too long";
}

TEST_F(SerialAnswer, AnUnreadableStatusCountsAsBusy)
{
    port().fail("look", 5, looksOfRequest);
    port().play({silence(15001ms), arrive({ack})});
    EXPECT_EQ(codeOfCommand(), succeeded);
}

TEST_F(SerialAnswer, AFailingReadGivesTheCodeOfItsError)
{
    port().play({brokenRead(2)});
    EXPECT_EQ(codeOfCommand(), -10200);
    port().play({brokenRead(995)});
    EXPECT_EQ(codeOfCommand(), -10201);
    port().play({arrive({ack})});
    EXPECT_EQ(codeOfCommand(), succeeded) << "and the next call works";
}

TEST_F(SerialAnswer, TheSilenceOfTheErrorCodeByteIsCode64Too)
{
    port().play({arrive({nak}), silence(15001ms)});
    EXPECT_EQ(codeOfCommand(), 64);
}

TEST_F(SerialDriverTest, TheTimeOfSilenceBeginsAnewWithEachByte)
{
    const std::string reply = block("abcdef", etx);
    for (const char byte : reply) {
        port().events.push_back(silence(15000ms));
        port().events.push_back(arrive({byte}));
    }
    EXPECT_EQ(driver.queryStrict("\x93"), "abcdef");
}

TEST_F(SerialDriverTest, SilenceInsideABlockIsCode64)
{
    port().play({arrive(block("abc", etx).substr(0, 4)), silence(15001ms)});
    EXPECT_EQ(codeOf([&] { driver.query("\x93"); }), 64);
}

TEST_F(SerialDriverTest, ABlockIsReadHoweverItComes)
{
    const std::string data(256, 'x');
    const std::string reply = block(data, etb) + block("y", etx);
    for (const std::size_t piece : {reply.size(), reply.size() / 2, std::size_t{7}, std::size_t{1}}) {
        for (std::size_t from = 0; from < reply.size(); from += piece) {
            port().events.push_back(arrive(reply.substr(from, piece)));
        }
        EXPECT_EQ(driver.query("\x93"), data + "y") << "in pieces of " << piece;
    }
}

TEST_F(SerialDriverTest, TakesTheRestOfABlockInOneRead)
{
    port().play({arrive(block(std::string(256, 'x'), etx))});
    driver.queryStrict("\x93");
    EXPECT_THAT(port().calls,
                ElementsAre("look", "look", "write 93 15000", "look", "write 93 15000", "read 1 15000",
                            "read 1 15000", "read 258 15000", "look", "write 03 15000"));
}

TEST_F(SerialDriverTest, ReadByteWaitsForTheGivenTimeAtMost)
{
    port().play({silence(700ms)});
    EXPECT_EQ(codeOf([&] { driver.readByte(false, 700); }), -10202);
    EXPECT_THAT(port().calls, ElementsAre("read 1 700"));
}

TEST_F(SerialDriverTest, ReadByteWithoutATimeDoesNotWait)
{
    port().play({arrive("late")});
    EXPECT_EQ(codeOf([&] { driver.readByte(false, 0); }), -10202);
    EXPECT_THAT(port().takeCalls(), ElementsAre("read 1 0"));
    port().waiting = "x";
    EXPECT_EQ(driver.readByte(false, 0), 'x');
}

TEST_F(SerialDriverTest, NoByteIsFlowControl)
{
    port().waiting = "\x11\x13\x11\x13";
    for (const bool passThrough : {false, true}) {
        EXPECT_EQ(driver.readByte(passThrough, 0), 0x11);
        EXPECT_EQ(driver.readByte(passThrough, 0), 0x13);
    }
}

TEST_F(SerialDriverTest, ReadByteGivesTheCodeOfAFailure)
{
    port().fail("read", 2);
    EXPECT_EQ(codeOf([&] { driver.readByte(false, 0); }), -10200);
    port().fail("read", 5);
    EXPECT_EQ(codeOf([&] { driver.readByte(false, 0); }), -10201);
}

TEST_F(SerialDriverTest, ReadRawReturnsOnlyWhatHasBeenReceived)
{
    std::array<unsigned char, 5> buffer{};
    EXPECT_EQ(driver.readRaw(buffer.data(), 5, &buffer), 0);
    port().waiting = "abc";
    port().play({arrive("de")});
    EXPECT_EQ(driver.readRaw(buffer.data(), 5, &buffer), 3);
    EXPECT_EQ(buffer, (std::array<unsigned char, 5>{'a', 'b', 'c'}));
    EXPECT_THAT(port().calls, Not(Contains("read 1 15000")));
}

TEST_F(SerialDriverTest, ReadRawWithoutAMarkerReadsNothing)
{
    std::array<unsigned char, 5> buffer{};
    port().waiting = "abc";
    EXPECT_EQ(driver.readRaw(buffer.data(), 5, nullptr), 0);
    EXPECT_THAT(port().calls, ElementsAre());
}

TEST_F(SerialDriverTest, ReadRawOnAClosedPortIsRefusedWithAndWithoutAMarker)
{
    driver.close();
    std::array<unsigned char, 5> buffer{};
    EXPECT_EQ(codeOf([&] { driver.readRaw(buffer.data(), 5, &buffer); }), -10103);
    EXPECT_EQ(codeOf([&] { driver.readRaw(buffer.data(), 5, nullptr); }), -10103);
}

TEST_F(SerialDriverTest, ReadRawPassesFailuresOn)
{
    std::array<unsigned char, 5> buffer{};
    port().waiting = "abc";
    port().fail("read", 5, 3);
    EXPECT_EQ(codeOf([&] { driver.readRaw(buffer.data(), 5, &buffer); }), -10201);
}

} // namespace
} // namespace telvofm::test
