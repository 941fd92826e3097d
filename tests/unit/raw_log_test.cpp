// The raw log's file, byte by byte, and what switching it does.
#include "link/raw_log.h"

#include "tests/unit/own_folder.h"
#include "tests/unit/tcp_driver_fixture.h"

namespace telvofm::test {
namespace {

class RawLogTest : public ::testing::Test
{
protected:
    // Text files of some systems end their lines with two bytes.
    static std::string linesOf(const std::string& path)
    {
        std::string content = contentOf(path);
        std::erase(content, '\r');
        return content;
    }

    OwnFolder folder;
    const std::string path = folder.file("raw.txt");
    RawLog log;
};

TEST_F(RawLogTest, HasOneLineForEachChangeOfDirection)
{
    log.switchOn(path);
    log.record(RawLog::sent, bytes({0x1C, 0x01, 0xE0, 0x04}));
    log.record(RawLog::sent, "\xF9");
    log.record(RawLog::received, "\x06");
    EXPECT_EQ(linesOf(path), "C: 1c 01 e0 04 f9 \nS: 06 ");
}

TEST_F(RawLogTest, TwoRequestsWithoutAReplyShareALine)
{
    log.switchOn(path);
    log.record(RawLog::sent, "\x01");
    log.record(RawLog::sent, "\x02");
    EXPECT_EQ(linesOf(path), "C: 01 02 ");
}

TEST_F(RawLogTest, IsOffUntilItIsSwitchedOn)
{
    log.record(RawLog::sent, "\x01");
    log.switchOn(path);
    EXPECT_EQ(contentOf(path), "");
    log.record(RawLog::received, "\x02");
    EXPECT_EQ(linesOf(path), "S: 02 ");
}

TEST_F(RawLogTest, SwitchingOnEmptiesTheFile)
{
    std::ofstream(path) << "old";
    log.switchOn(path);
    EXPECT_EQ(contentOf(path), "");
}

// So a new file may begin in the middle of a line, or with a line end.
TEST_F(RawLogTest, ThePrefixSurvivesTheEmptyingOfTheFile)
{
    log.switchOn(path);
    log.record(RawLog::sent, "\x01");
    log.switchOn(path);
    log.record(RawLog::sent, "\x02");
    EXPECT_EQ(linesOf(path), "02 ");
    log.switchOn(path);
    log.record(RawLog::received, "\x03");
    EXPECT_EQ(linesOf(path), "\nS: 03 ");
}

TEST_F(RawLogTest, AnEmptyPathMeansTheEarlierOneAndKeepsItsContent)
{
    log.switchOn(path);
    log.record(RawLog::sent, "\x01");
    log.switchOff();
    log.record(RawLog::sent, "\x02");
    log.switchOn("");
    log.record(RawLog::sent, "\x03");
    EXPECT_EQ(linesOf(path), "C: 01 03 ");
}

TEST_F(RawLogTest, AnEmptyPathWithoutAnEarlierOneLeavesItOff)
{
    log.switchOn("");
    log.record(RawLog::sent, "\x01");
    log.switchOn(path);
    log.record(RawLog::sent, "\x02");
    EXPECT_EQ(linesOf(path), "C: 02 ");
}

TEST_F(RawLogTest, AFileThatCannotBeWrittenLosesTheRecordOnly)
{
    log.switchOn(folder.file("missing/raw.txt"));
    log.record(RawLog::sent, "\x01");
    EXPECT_EQ(contentOf(folder.file("missing/raw.txt")), "(no file)");
    log.switchOn(path);
    log.record(RawLog::received, "\x02");
    EXPECT_EQ(linesOf(path), "S: 02 ");
}

// Somebody may take the file away at any time: no record holds it.
TEST_F(RawLogTest, TheFileIsClosedAfterEachRecord)
{
    log.switchOn(path);
    log.record(RawLog::sent, "\x01");
    std::filesystem::rename(path, folder.file("taken.txt"));
    log.record(RawLog::received, "\x02");
    EXPECT_EQ(linesOf(folder.file("taken.txt")), "C: 01 ");
    EXPECT_EQ(linesOf(path), "\nS: 02 ");
    std::filesystem::remove(path);
    log.record(RawLog::received, "\x03");
    EXPECT_EQ(linesOf(path), "03 ");
}

class RawLogOfDriver : public TcpDriverTest
{
protected:
    // Each begins as if the library had received something before, in whatever order the tests run.
    void SetUp() override
    {
        TcpDriverTest::SetUp();
        rawLog().switchOn(path);
        rawLog().record(RawLog::received, "\x06");
        rawLog().switchOn(path);
    }
    void TearDown() override { rawLog().switchOff(); }

    [[nodiscard]] std::string lines() const
    {
        std::string content = contentOf(path);
        std::erase(content, '\r');
        return content;
    }

    OwnFolder folder;
    const std::string path = folder.file("raw.txt");
};

TEST_F(RawLogOfDriver, ShowsWhatPassesTheLink)
{
    network().play({silence, arrive("\x13"), arrive("\x06late")});
    driver.sendCommand(bytes({0x1C, 0x01, 0xE0, 0x04}));
    EXPECT_EQ(lines(), "\nC: 1c 01 e0 04 f9 11 \nS: 13 06 6c 61 74 65 ");
}

TEST_F(RawLogOfDriver, ShowsASendThatFailed)
{
    network().failingSend = 2;
    EXPECT_EQ(codeOf([&] { driver.sendCommand(bytes({0x1C, 0x01, 0xE0, 0x04})); }), -10201);
    EXPECT_EQ(lines(), "\nC: 1c 01 e0 04 f9 ");
}

} // namespace
} // namespace telvofm::test
