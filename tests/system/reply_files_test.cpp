// Replies that go into files, and replies of many blocks.
#include "telvofm.h"
#include "tests/system/replying_printer.h"
#include "tests/unit/own_folder.h"

#include <gtest/gtest.h>

#include <functional>

namespace telvofm::test {
namespace {

using FileExport = std::function<int(const char* fileName)>;

// The file is written when the whole reply has come.
const std::vector<FileExport> filesAfterFetch = {
    [](const char* name) { return getJournal_str_tofile(1, name); },
    [](const char* name) { return getJournalStructD_str_tofile(1, "F", "", "", name); },
    [](const char* name) { return getJournalStructD1_tofile(1, "F", "", "", name); },
    [](const char* name) { return getJournalStructZ_tofile(1, 1, 2, name); },
    [](const char* name) { return getJournalStructU_tofile(1, "7", name); },
};

// The file is created before anything is sent.
const std::vector<FileExport> filesWhileReading = {
    [](const char* name) { return getJournalStructZ1_tofile(1, "P", 1, 2, name); },
    [](const char* name) { return saveJournalToFile(1, 'F', 1, name); },
    [](const char* name) { return saveJournalToFile_str(1, "F", 1, name); },
    [](const char* name) { return saveBCKP(1, "p", 1, name); },
    [](const char* name) { return saveRAMMP(1, "p", name); },
};

// 256 full blocks and one of a single byte; every byte value occurs, 0x00 and the protocol's own too.
std::string longReply()
{
    constexpr std::size_t length = 65537;
    std::string reply(length, '\0');
    for (std::size_t i = 0; i < length; ++i) {
        reply[i] = static_cast<char>(i * 7 + i / 256);
    }
    return reply;
}

// Sends the first of several blocks and then nothing but the end of the connection.
void breakOffInTheMiddle(wire::Connection& connection)
{
    receiveRequest(connection);
    connection.send(block("first block", etb));
    receiveBytes(connection, 1);
    connection.close();
}

class ReplyFiles : public ::testing::Test
{
protected:
    // The failure that getJournalStructZ1_tofile logs in spite of the switch stays in the test's own folder.
    void SetUp() override
    {
        setLogginOn(folder.file("calls.log").c_str());
        setLogginOff();
        std::ofstream(name, std::ios::binary) << "what the file held before";
    }
    void TearDown() override { closeFM(); }

    OwnFolder folder;
    const std::string name = folder.file("reply");
};

TEST_F(ReplyFiles, HoldTheWholeOfALongReplyAndNothingElse)
{
    const std::string reply = longReply();
    PrinterThread printer(replyingWith(reply));
    ASSERT_EQ(openFM(printer.address().c_str()), 0);
    for (const auto& exports : {filesAfterFetch, filesWhileReading}) {
        for (std::size_t index = 0; index < exports.size(); ++index) {
            SCOPED_TRACE(index);
            std::filesystem::remove(name);
            EXPECT_EQ(exports[index](name.c_str()), 0);
            EXPECT_TRUE(contentOf(name) == reply);
        }
    }
    closeFM();
}

TEST_F(ReplyFiles, LoseWhatTheyHeldBefore)
{
    PrinterThread printer(replyingWith("new"));
    ASSERT_EQ(openFM(printer.address().c_str()), 0);
    EXPECT_EQ(getJournal_str_tofile(1, name.c_str()), 0);
    EXPECT_EQ(contentOf(name), "new");
    std::ofstream(name, std::ios::binary) << "what the file held before";
    EXPECT_EQ(saveRAMMP(1, "p", name.c_str()), 0);
    EXPECT_EQ(contentOf(name), "new");
    closeFM();
}

TEST_F(ReplyFiles, NeedAName)
{
    PrinterThread printer(replyingWith("reply"));
    ASSERT_EQ(openFM(printer.address().c_str()), 0);
    for (const auto& exports : {filesAfterFetch, filesWhileReading}) {
        for (const FileExport& toFile : exports) {
            EXPECT_EQ(toFile(nullptr), -10201);
        }
    }
    closeFM();
}

TEST_F(ReplyFiles, StayCreatedWhenTheReplyBreaksOff)
{
    for (std::size_t index = 0; index < filesWhileReading.size(); ++index) {
        SCOPED_TRACE(index);
        std::filesystem::remove(name);
        PrinterThread printer(breakOffInTheMiddle);
        ASSERT_EQ(openFM(printer.address().c_str()), 0);
        EXPECT_EQ(filesWhileReading[index](name.c_str()), -10201);
        EXPECT_TRUE(std::filesystem::exists(name));
        closeFM();
    }
}

TEST_F(ReplyFiles, AreLeftAloneWhenAReplyThatIsFetchedFirstBreaksOff)
{
    for (std::size_t index = 0; index < filesAfterFetch.size(); ++index) {
        SCOPED_TRACE(index);
        PrinterThread printer(breakOffInTheMiddle);
        ASSERT_EQ(openFM(printer.address().c_str()), 0);
        EXPECT_EQ(filesAfterFetch[index](name.c_str()), -10201);
        EXPECT_EQ(contentOf(name), "what the file held before");
        closeFM();
    }
}

class ReplyOfLength : public ::testing::TestWithParam<std::size_t>
{
protected:
    void SetUp() override { setLogginOff(); }
    void TearDown() override { closeFM(); }
};

TEST_P(ReplyOfLength, ArrivesWholeInABufferAResultObjectAndAFile)
{
    const OwnFolder folder;
    const std::string name = folder.file("reply");
    const std::string reply = longReply().substr(0, GetParam());
    PrinterThread printer(replyingWith(reply));
    ASSERT_EQ(openFM(printer.address().c_str()), 0);
    std::string buffer(reply.size() + 1, '#');
    const int size = static_cast<int>(reply.size());
    EXPECT_EQ(getJournal(1, buffer.data(), size), 0);
    EXPECT_TRUE(buffer == reply + '#');

    unsigned int count = 0;
    EXPECT_EQ(getJournal_str_count(1, buffer.data(), size, &count), 0);
    EXPECT_EQ(count, reply.size());

    ResultObject* const object = createResultObject();
    EXPECT_EQ(getJournal_ResultObject(1, object), 0);
    ASSERT_EQ(getResultObjectLength(object), size);
    EXPECT_TRUE(std::string_view(getResultObjectString(object), reply.size()) == reply);
    destroyResultObject(object);

    EXPECT_EQ(getJournal_str_tofile(1, name.c_str()), 0);
    EXPECT_TRUE(contentOf(name) == reply);
    EXPECT_EQ(saveJournalToFile(1, 'F', 1, name.c_str()), 0);
    EXPECT_TRUE(contentOf(name) == reply);
    closeFM();
}

INSTANTIATE_TEST_SUITE_P(, ReplyOfLength, ::testing::Values(0, 1, 2, 255, 256, 257, 512, 65537));

} // namespace
} // namespace telvofm::test
