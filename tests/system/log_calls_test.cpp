// A log's calls of the system: records that are taken in part, interrupted, or refused, and files that are
// opened in the end.
#include "link/raw_log.h"
#include "tests/system/system_calls.h"
#include "tests/unit/own_folder.h"

#include <gtest/gtest.h>

#include <cerrno>

namespace telvofm::test {
namespace {

class LogCalls : public ::testing::Test
{
protected:
    void SetUp() override { log.switchOn(path); }

    OwnFolder folder;
    const std::string path = folder.file("raw.txt");
    RawLog log;
    SystemCalls calls;
};

TEST_F(LogCalls, ARecordThatIsTakenInPartIsWrittenToItsEnd)
{
    calls.mostBytesPerFileWrite = 2;
    log.record(RawLog::sent, "\x01\x02\x03");
    EXPECT_EQ(contentOf(path), "C: 01 02 03 ");
}

TEST_F(LogCalls, ARecordThatIsNotTakenAtOnceIsWrittenThen)
{
    calls.fileWritesOfNothing = 2;
    log.record(RawLog::sent, "\x01\x02\x03");
    EXPECT_EQ(contentOf(path), "C: 01 02 03 ");
    EXPECT_EQ(calls.fileWritesOfNothing, 0);
}

TEST_F(LogCalls, ARecordThatASignalInterruptsIsWrittenOnce)
{
    calls.fileWriteErrors = {EINTR, EINTR};
    log.record(RawLog::sent, "\x01\x02\x03");
    EXPECT_EQ(contentOf(path), "C: 01 02 03 ");
    EXPECT_TRUE(calls.fileWriteErrors.empty());
}

// Opening waits where a pipe with a name, or a file of a network, stands in the place of the log.
TEST_F(LogCalls, ARecordWhoseFileASignalKeepsFromOpeningIsWrittenOnce)
{
    calls.opensToInterrupt = 2;
    log.record(RawLog::sent, "\x01\x02\x03");
    EXPECT_EQ(contentOf(path), "C: 01 02 03 ");
    EXPECT_EQ(calls.opensToInterrupt, 0);
}

TEST_F(LogCalls, ARecordThatTheDiskHasNoRoomForIsLostAndTheNextIsNot)
{
    calls.fileWriteErrors = {ENOSPC};
    log.record(RawLog::sent, "\x01");
    EXPECT_EQ(contentOf(path), "");
    log.record(RawLog::sent, "\x02");
    EXPECT_EQ(contentOf(path), "02 ");
}

} // namespace
} // namespace telvofm::test
