// Exchanges on a serial link: what stands before each try, what refuses, what is skipped, and what becomes of
// exceptions of the standard library.
#include "tests/unit/serial_driver_fixture.h"

namespace telvofm::test {
namespace {

using namespace std::chrono_literals;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::Not;

const std::string command = bytes({0x1C, 0x01, 0xE0, 0x04});
const std::string sentCommand = command + '\xF9';

TEST_F(SerialDriverTest, PurgesBeforeEachTryOfACommand)
{
    port().waiting = "stale";
    port().play({arrive({nak, 1}), arrive({nak, 2}), arrive({ack})});
    EXPECT_EQ(driver.sendCommand(command), 0x06);
    EXPECT_EQ(port().calls.front(), "purge");
    EXPECT_EQ(port().count("purge"), 3);
    EXPECT_EQ(port().count("pause 50"), 0);
    EXPECT_EQ(port().written(), sentCommand + sentCommand + sentCommand);
}

TEST_F(SerialDriverTest, PausesAndThenPurgesBeforeEachTryOfAQuery)
{
    port().waiting = "stale";
    port().play({arrive({nak, 1}), arrive(block("A", etx))});
    EXPECT_EQ(driver.query("a"), "A");
    EXPECT_THAT(port().calls,
                ElementsAre("pause 50", "purge", "look", "look", "write 61 15000", "look", "write 61 15000",
                            "read 1 15000", "read 1 15000", //
                            "pause 50", "purge", "look", "look", "write 61 15000", "look", "write 61 15000",
                            "read 1 15000", "read 1 15000", "read 3 15000", "look", "write 03 15000"));
}

TEST_F(SerialDriverTest, DoesNeitherBeforeAStrictQuery)
{
    port().waiting = block("stale", etx);
    EXPECT_EQ(driver.queryStrict(command), "stale");
    EXPECT_THAT(port().calls, Not(Contains("purge")));
    EXPECT_THAT(port().calls, Not(Contains("pause 50")));
}

TEST_F(SerialDriverTest, PurgesBeforeEachTryOfEachUploadedBlock)
{
    port().play({arrive({ack}), arrive({nak, 1}), arrive({ack})});
    driver.sendBlocks(std::string(257, 'x'), true);
    EXPECT_EQ(port().count("purge"), 3);
    EXPECT_EQ(port().count("pause 50"), 0);
    const std::string last = block("x", etx);
    EXPECT_EQ(port().written(), block(std::string(256, 'x'), etb) + last + last);
}

TEST_F(SerialDriverTest, APurgeThatFailsEndsTheExchange)
{
    port().fail("purge", 5);
    EXPECT_EQ(codeOf([&] { driver.sendCommand(command); }), -10201);
    port().fail("purge", 2);
    EXPECT_EQ(codeOf([&] { driver.query(command); }), -10200);
    EXPECT_EQ(port().written(), "");
}

TEST_F(SerialDriverTest, EveryExchangeOnAClosedPortIsRefused)
{
    driver.close();
    port().calls.clear();
    EXPECT_EQ(codeOf([&] { driver.sendCommand(command); }), -10103);
    EXPECT_EQ(codeOf([&] { driver.sendBlocks("x", true); }), -10103);
    EXPECT_EQ(codeOf([&] { driver.query(command); }), -10103);
    EXPECT_EQ(codeOf([&] { driver.queryStrict(command); }), -10103);
    EXPECT_THAT(port().calls, ElementsAre());
}

TEST_F(SerialDriverTest, WithoutClearToSendEveryExchangeIsRefusedWithNothingWritten)
{
    const auto refused = [&](auto exchange) {
        port().looks = {onlyDsr};
        return codeOf(exchange);
    };
    EXPECT_EQ(refused([&] { driver.sendCommand(command); }), -10103);
    EXPECT_EQ(refused([&] { driver.sendBlocks("x", true); }), -10103);
    EXPECT_EQ(refused([&] { driver.query(command); }), -10103);
    EXPECT_EQ(refused([&] { driver.queryStrict(command); }), -10103);
    EXPECT_EQ(port().written(), "");
}

TEST_F(SerialDriverTest, TheLastOfThreeErrorCodesIsThrown)
{
    port().play({arrive({nak, 1}), arrive({nak, 2}), arrive({nak, 3}), arrive({ack})});
    EXPECT_EQ(codeOf([&] { driver.sendCommand(command); }), 3);
    port().play({arrive({nak, 4}), arrive({nak, 5}), arrive({nak, 0}), arrive({eot})});
    EXPECT_EQ(codeOf([&] { driver.query(command); }), 0);
    port().play({arrive({nak, 4}), arrive({nak, 5}), arrive({nak, 7}), arrive({eot})});
    EXPECT_EQ(codeOf([&] { driver.queryStrict(command); }), 7);
}

TEST_F(SerialDriverTest, AnyByteButAcknowledgeRefusesARequestAndTheNextIsItsCode)
{
    port().play({arrive("Z\x09"), arrive({eot, ack}), arrive("\x11\x0A")});
    EXPECT_EQ(codeOf([&] { driver.sendCommand(command); }), 10);
    EXPECT_EQ(port().written(), sentCommand + sentCommand + sentCommand);
}

TEST_F(SerialDriverTest, AQuerySkipsStrayBytes)
{
    port().play({arrive("ab\x06\x11\x13"), arrive(block("A", etx))});
    EXPECT_EQ(driver.query(command), "A");
    port().play({arrive("ab"), arrive({eot})});
    EXPECT_EQ(driver.query(command), "");
}

TEST_F(SerialDriverTest, AStrictQueryRefusesAStrayByteAtOnce)
{
    port().play({arrive("a" + block("A", etx))});
    EXPECT_EQ(codeOf([&] { driver.queryStrict(command); }), -10002);
    EXPECT_EQ(port().written(), sentCommand);
}

TEST_F(SerialDriverTest, AReplyDamagedThreeTimesIsRefusedAndTheNextCallWorks)
{
    const std::string damaged = damagedBlock("A", etx);
    port().play({arrive(damaged), arrive(damaged), arrive(damaged), arrive(":")});
    EXPECT_EQ(codeOf([&] { driver.query(command); }), -10002);
    EXPECT_EQ(port().written(), sentCommand + std::string(3, nak));

    port().calls.clear();
    port().play({arrive(damaged), arrive(block("A", etx))});
    EXPECT_EQ(driver.query(command), "A");
    EXPECT_EQ(port().written(), sentCommand + nak + etx);
}

TEST_F(SerialDriverTest, ABlockThatIsRefusedThreeTimesEndsTheUpload)
{
    port().play({arrive({nak, 1}), arrive("Z\x02"), arrive({nak, 3})});
    EXPECT_EQ(codeOf([&] { driver.sendBlocks("x", true); }), -10001);
    const std::string sent = block("x", etx);
    EXPECT_EQ(port().written(), sent + sent + sent);
}

TEST_F(SerialDriverTest, APrinterThatWantsNoMoreEndsTheUpload)
{
    for (const char enough : {etx, eot}) {
        port().calls.clear();
        port().play({arrive({enough})});
        driver.sendBlocks(std::string(600, 'x'), true);
        EXPECT_EQ(port().written(), block(std::string(256, 'x'), etb));
    }
}

TEST_F(SerialDriverTest, OnlyAQueryReportsAnUnknownTerminator)
{
    const auto printedBy = [&](auto query) {
        port().play({arrive(block("A", 'Z')), arrive({eot})});
        ::testing::internal::CaptureStdout();
        EXPECT_EQ(query(), "A");
        std::string printed = ::testing::internal::GetCapturedStdout();
        std::erase(printed, '\r');
        return printed;
    };
    EXPECT_EQ(printedBy([&] { return driver.query(command); }), "Odpoved na potvrdenie prijatia bloku: \n");
    EXPECT_EQ(printedBy([&] { return driver.queryStrict(command); }), "");
}

TEST_F(SerialDriverTest, AnExceptionOfTheStandardLibraryIsPrintedAndBecomesACode)
{
    const auto printedBy = [&](auto exchange) {
        port().play({throwing("out of luck")});
        ::testing::internal::CaptureStdout();
        EXPECT_EQ(codeOf(exchange), -10000);
        std::string printed = ::testing::internal::GetCapturedStdout();
        std::erase(printed, '\r');
        return printed;
    };
    EXPECT_EQ(printedBy([&] { driver.sendCommand(command); }), "out of luck\n");
    EXPECT_EQ(printedBy([&] { driver.sendBlocks("x", true); }), "out of luck\n");
    EXPECT_EQ(printedBy([&] { driver.query(command); }), "out of luck\n");
    EXPECT_EQ(printedBy([&] { driver.queryStrict(command); }), "out of luck\n");
}

TEST_F(SerialDriverTest, AnExceptionOfOurOwnIsNotPrinted)
{
    ::testing::internal::CaptureStdout();
    port().play({silence(15001ms)});
    EXPECT_EQ(codeOf([&] { driver.sendCommand(command); }), 64);
    EXPECT_EQ(::testing::internal::GetCapturedStdout(), "");
}

TEST_F(SerialDriverTest, TheStoredTimeoutChangesNoWait)
{
    driver.setTimeout(1);
    port().play({arrive({ack})});
    driver.sendCommand("a");
    EXPECT_THAT(port().calls, Contains("read 1 15000"));
    EXPECT_THAT(port().calls, Contains("write 61 15000").Times(2));
}

} // namespace
} // namespace telvofm::test
