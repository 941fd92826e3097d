// Writing on a serial link: clear-to-send at the beginning, data-set-ready before each byte.
#include "tests/unit/own_folder.h"
#include "tests/unit/serial_driver_fixture.h"

#include "link/raw_log.h"

namespace telvofm::test {
namespace {

using ::testing::ElementsAre;

TEST_F(SerialDriverTest, WritesByteByByteWithOneLookAtClearToSendAndOneAtDataSetReadyForEach)
{
    EXPECT_EQ(driver.writeRaw("ab"), 2U);
    EXPECT_THAT(port().calls, ElementsAre("look", "look", "write 61 15000", "look", "write 62 15000"));
}

TEST_F(SerialDriverTest, ClosedItWritesNothing)
{
    driver.close();
    port().calls.clear();
    EXPECT_EQ(codeOf([&] { driver.writeRaw("a"); }), -10103);
    EXPECT_THAT(port().calls, ElementsAre());
}

TEST_F(SerialDriverTest, WithoutClearToSendItWritesNothing)
{
    port().looks = {onlyDsr};
    EXPECT_EQ(codeOf([&] { driver.writeRaw("ab"); }), -10103);
    EXPECT_THAT(port().calls, ElementsAre("look"));
    EXPECT_EQ(driver.writeRaw("ab"), 2U) << "and the next write works";
}

TEST_F(SerialDriverTest, AnUnreadableStatusIsNoClearToSendWhateverItsError)
{
    for (const std::uint32_t error : {2U, 5U}) {
        port().fail("look", error);
        EXPECT_EQ(codeOf([&] { driver.writeRaw("ab"); }), -10103);
        EXPECT_EQ(port().written(), "");
    }
}

TEST_F(SerialDriverTest, ClearToSendMattersOnlyWhereAWriteBegins)
{
    port().looks = {bothOn, onlyDsr, onlyDsr};
    EXPECT_EQ(driver.writeRaw("ab"), 2U);
}

TEST_F(SerialDriverTest, NothingIsWrittenAfterTheLookAtClearToSendWhenThereIsNothing)
{
    EXPECT_EQ(driver.writeRaw(""), 0U);
    EXPECT_THAT(port().calls, ElementsAre("look"));
}

// The first look of these tests is the one at clear-to-send.
TEST_F(SerialDriverTest, WaitsForDataSetReadyBeforeEachByteWithoutPauseWhileItSteersTheFlow)
{
    constexpr std::size_t looksInVain = 1000;
    port().looks.assign(looksInVain + 1, onlyCts);
    port().looks.push_back(bothOn);
    port().looks.insert(port().looks.end(), looksInVain, onlyCts);
    EXPECT_EQ(driver.writeRaw("ab"), 2U);
    EXPECT_EQ(port().written(), "ab");
    EXPECT_EQ(port().count("look"), 2 * static_cast<std::ptrdiff_t>(looksInVain) + 3);
    EXPECT_EQ(port().calls.size(), 2 * looksInVain + 5) << "looks and two writes, no pause";
}

TEST_F(SerialDriverTest, LooksOnceAMillisecondWithoutLimitAtAPrinterThatStaysOff)
{
    constexpr std::ptrdiff_t looksWithoutPause = 1000;
    constexpr std::ptrdiff_t looksWithPause = 100000;
    const auto started = port().clock;
    port().looks.assign(looksWithoutPause + looksWithPause + 1, onlyCts);
    EXPECT_EQ(driver.writeRaw("a"), 1U);
    EXPECT_EQ(port().count("pause 1"), looksWithPause);
    EXPECT_EQ(port().clock - started, std::chrono::milliseconds(looksWithPause));
}

// A port that has gone away must not be looked at for ever.
TEST_F(SerialDriverTest, AStatusThatFailsEndsTheWaitForDataSetReady)
{
    for (const auto& [error, code] : {std::pair{2U, -10200}, std::pair{5U, -10201}}) {
        port().looks = {bothOn, onlyCts, onlyCts};
        port().fail("look", error, 2);
        EXPECT_EQ(codeOf([&] { driver.writeRaw("a"); }), code);
        EXPECT_EQ(port().written(), "");
        port().looks.clear();
    }
}

TEST_F(SerialDriverTest, AFailingWriteGivesTheCodeOfItsError)
{
    port().fail("write", 2, 1);
    EXPECT_EQ(codeOf([&] { driver.writeRaw("abc"); }), -10200);
    EXPECT_THAT(port().takeCalls(), ElementsAre("look", "look", "write 61 15000", "look", "write 62 15000"));
    port().fail("write", 121);
    EXPECT_EQ(codeOf([&] { driver.writeRaw("abc"); }), -10201);
    EXPECT_EQ(driver.writeRaw("abc"), 3U) << "and the next write works";
}

// The request begins with clear-to-send on; its checksum byte goes out although it is off by then.
TEST_F(SerialDriverTest, AProtocolByteIsWrittenWithoutALookAtClearToSend)
{
    port().looks = {bothOn, onlyDsr, onlyDsr};
    port().play({arrive({ack})});
    EXPECT_EQ(driver.sendCommand("a"), 0x06);
    EXPECT_THAT(port().calls, ElementsAre("purge", "look", "look", "write 61 15000", "look", "write 61 15000",
                                          "read 1 15000"));
}

TEST_F(SerialDriverTest, AProtocolByteWaitsForDataSetReady)
{
    port().looks = {bothOn, bothOn, onlyCts, onlyCts, bothOn};
    port().play({arrive({ack})});
    EXPECT_EQ(driver.sendCommand("a"), 0x06);
    EXPECT_THAT(port().calls, ElementsAre("purge", "look", "look", "write 61 15000", "look", "look", "look",
                                          "write 61 15000", "read 1 15000"));
}

class SerialRawLog : public SerialDriverTest
{
protected:
    void TearDown() override { rawLog().switchOff(); }

    [[nodiscard]] std::string content() const
    {
        std::string lines = contentOf(folder.file("raw.txt"));
        std::erase(lines, '\r');
        return lines;
    }

    const OwnFolder folder;
};

TEST_F(SerialRawLog, HasOneLineForEachDirectionHoweverTheBytesCome)
{
    const std::string reply = block("ab", etx);
    const std::string lines = "C: 93 93 \nS: 3a 01 61 62 03 3b \nC: 03 ";
    rawLog().switchOn(folder.file("raw.txt"));
    port().play({arrive(reply)});
    driver.queryStrict("\x93");
    EXPECT_EQ(content(), lines);

    // From here on a new file begins in the direction of the last record.
    rawLog().switchOn(folder.file("raw.txt"));
    for (const char byte : reply) {
        port().events.push_back(arrive({byte}));
    }
    driver.queryStrict("\x93");
    EXPECT_EQ(content(), lines.substr(3));
}

TEST_F(SerialRawLog, ShowsOnlyWhatWasWritten)
{
    rawLog().switchOn(folder.file("raw.txt"));
    rawLog().record(RawLog::received, "\x01");
    port().fail("write", 5, 1);
    EXPECT_EQ(codeOf([&] { driver.writeRaw("abc"); }), -10201);
    EXPECT_TRUE(content().ends_with("S: 01 \nC: 61 ")) << content();
}

} // namespace
} // namespace telvofm::test
