// Files as only this platform has them: a disk that is full, a pipe that makes the library wait while it
// writes, and a list of those that are open.
#include "telvofm.h"
#include "tests/system/replying_printer.h"
#include "tests/unit/own_folder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <future>
#include <iterator>
#include <mutex>
#include <sys/stat.h>

namespace telvofm::test {
namespace {

using namespace std::chrono_literals;

constexpr char getJournalCode = '\x9F';
constexpr char getBackupCode = '\x79';
constexpr char cancelCode = '\xE0';

// Replies to what asks for data, accepts everything else, and keeps the command codes in the order they came.
class OrderlyPrinter
{
public:
    std::string codes()
    {
        const std::scoped_lock guard(lock);
        return seen;
    }
    // Waits until that many requests have come.
    bool waitFor(std::size_t count)
    {
        const auto deadline = std::chrono::steady_clock::now() + 10s;
        while (codes().size() < count && std::chrono::steady_clock::now() < deadline) {
            std::this_thread::sleep_for(1ms);
        }
        return codes().size() >= count;
    }
    [[nodiscard]] std::string address() const { return printer.address(); }

private:
    void serve(wire::Connection& connection)
    {
        while (const auto request = receiveRequest(connection)) {
            const char code = (*request)[2];
            {
                const std::scoped_lock guard(lock);
                seen += code;
            }
            if (code == cancelCode) {
                connection.send(std::string(1, ack));
            } else {
                sendReply(connection, "reply");
            }
        }
    }

    std::mutex lock;
    std::string seen;
    PrinterThread printer{[this](wire::Connection& connection) { serve(connection); }};
};

class ReplyPipe : public ::testing::Test
{
protected:
    void SetUp() override
    {
        setLogginOff();
        ASSERT_EQ(::mkfifo(name.c_str(), 0600), 0);
        ASSERT_EQ(openFM(printer.address().c_str()), 0);
    }
    void TearDown() override { closeFM(); }

    // While the file export waits for a reader of the pipe, another thread's call waits for the export.
    void expectOneAfterTheOther(const std::function<int(const char*)>& toFile, const std::string& sentBefore,
                                char code)
    {
        auto writing = std::async(std::launch::async, [&] { return toFile(name.c_str()); });
        if (sentBefore.empty()) {
            std::this_thread::sleep_for(pause);
        } else {
            EXPECT_TRUE(printer.waitFor(sentBefore.size()));
        }
        auto other = std::async(std::launch::async, printJobCancel, 1);
        EXPECT_EQ(other.wait_for(pause), std::future_status::timeout);
        EXPECT_EQ(printer.codes(), sentBefore);

        EXPECT_EQ(contentOf(name), "reply");
        EXPECT_EQ(writing.get(), 0);
        EXPECT_EQ(other.get(), 0);
        EXPECT_EQ(printer.codes(), std::string({code, cancelCode}));
    }

    static constexpr auto pause = 200ms;
    OwnFolder folder;
    const std::string name = folder.file("pipe");
    OrderlyPrinter printer;
};

TEST_F(ReplyPipe, IsOpenedBeforeAnythingIsSentAndWithinTheExchange)
{
    expectOneAfterTheOther([](const char* file) { return saveBCKP(1, "p", 1, file); }, "", getBackupCode);
}

TEST_F(ReplyPipe, IsOpenedAfterTheFetchAndWithinTheExchange)
{
    expectOneAfterTheOther([](const char* file) { return getJournal_str_tofile(1, file); },
                           std::string(1, getJournalCode), getJournalCode);
}

TEST(FullDisk, IsAFailureOfTheFile)
{
    setLogginOff();
    PrinterThread printer(replyingWith("reply"));
    ASSERT_EQ(openFM(printer.address().c_str()), 0);
    EXPECT_EQ(getJournal_str_tofile(1, "/dev/full"), -10201);
    EXPECT_EQ(saveBCKP(1, "p", 1, "/dev/full"), -10201);
    closeFM();
}

TEST(FullDisk, IsAFailureOfALongFileToo)
{
    setLogginOff();
    PrinterThread printer(replyingWith(std::string(100000, 'A')));
    ASSERT_EQ(openFM(printer.address().c_str()), 0);
    EXPECT_EQ(getJournal_str_tofile(1, "/dev/full"), -10201);
    EXPECT_EQ(saveRAMMP(1, "p", "/dev/full"), -10201);
    closeFM();
}

std::ptrdiff_t openDescriptors()
{
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
}

TEST(FilesOfCalls, AreClosedBeforeTheCallReturnsAlsoWhenItFails)
{
    const OwnFolder folder;
    const std::string name = folder.file("file");
    setLogginOff();
    PrinterThread printer([](wire::Connection& connection) {
        while (receiveRequest(connection)) {
            connection.send("no reply");
        }
    });
    ASSERT_EQ(openFM(printer.address().c_str()), 0);
    EXPECT_NE(saveBCKP(1, "p", 1, name.c_str()), 0); // behind it the connection is one of the files
    const auto before = openDescriptors();
    EXPECT_NE(saveBCKP(1, "p", 1, name.c_str()), 0);
    EXPECT_EQ(openDescriptors(), before) << "what a reply should have gone into";
    EXPECT_NE(prepareGraphicHeader(1, name.c_str()), 0);
    EXPECT_EQ(openDescriptors(), before) << "a picture";
    setRawLogginOn(folder.file("raw").c_str());
    EXPECT_EQ(openDescriptors(), before) << "the raw log that was emptied";
    closeFM();
}

} // namespace
} // namespace telvofm::test
