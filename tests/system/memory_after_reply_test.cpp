// Memory that ends between a reply and its delivery: what the printer has answered reaches the caller, and
// the line of the log that would follow is lost.
#include "telvofm.h"
#include "tests/system/replying_printer.h"
#include "tests/unit/limited_memory.h"
#include "tests/unit/own_folder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>

namespace telvofm::test {
namespace {

// One block, so that it is received into one piece of memory, and a line with it takes one, too.
const std::string shortReply(256, 'x');

class MemoryAfterReply : public ::testing::Test
{
protected:
    void SetUp() override
    {
        setLogginOff();
        ASSERT_EQ(openFM(printer.address().c_str()), 0);
        ASSERT_EQ(getIntervalFPC(1, 0, 100000, 200000, buffer.data(), size),
                  0); // makes room for the requests
        buffer.assign(buffer.size(), '-');
    }
    void TearDown() override
    {
        setLogginOff();
        closeFM();
        destroyResultObject(object);
    }

    const OwnFolder folder;
    const std::string log = folder.file("log");
    PrinterThread printer{replyingWith(shortReply)};
    ResultObject* const object = createResultObject();
    std::string buffer = std::string(shortReply.size() + 1, '-');
    const int size = static_cast<int>(buffer.size());
};

using FetchInto = int (*)(ResultObject* object, char* buffer, int bufferSize);

struct LoggedReply
{
    const char* name;
    FetchInto fetch;
    const char* line; // up to the reply
    bool intoObject;
    std::string_view behindReply; // in the buffer
};

std::ostream& operator<<(std::ostream& out, const LoggedReply& fetching)
{
    return out << fetching.name;
}

class MemoryForTheReplyAlone : public MemoryAfterReply, public ::testing::WithParamInterface<LoggedReply>
{
protected:
    [[nodiscard]] bool isDelivered() const
    {
        if (GetParam().intoObject) {
            return shortReply == std::string(getResultObjectString(object),
                                             static_cast<std::size_t>(getResultObjectLength(object)));
        }
        return buffer == shortReply + std::string(GetParam().behindReply);
    }
    int fetch() { return GetParam().fetch(object, buffer.data(), size); }
};

// Those that log what came back.
INSTANTIATE_TEST_SUITE_P(
    EachOfThem, MemoryForTheReplyAlone,
    ::testing::Values(
        LoggedReply{"variable", [](ResultObject*, char* b, int n) { return getVariable(1, "12", b, n); },
                    "getVariable device 1, variableCode 12, result ", false, std::string_view("\0", 1)},
        LoggedReply{"variableInObject",
                    [](ResultObject* o, char*, int) { return getVariableResultObject(1, "12", o); },
                    "getVariable device 1, variableCode 12, result ", true, ""},
        LoggedReply{"receipt", [](ResultObject*, char* b, int n) { return getLastParagon(1, b, n); },
                    "getLastParagon (256 bytes)\n", false, "-"},
        LoggedReply{"receiptInObject",
                    [](ResultObject* o, char*, int) { return getLastParagonResultObject(1, o); },
                    "getLastParagonResultObject (256 bytes)", true, ""},
        LoggedReply{"journalInObject",
                    [](ResultObject* o, char*, int) { return getJournal_ResultObject(1, o); },
                    "getJournal device 1, result ", true, ""}),
    [](const auto& instance) { return instance.param.name; });

TEST_P(MemoryForTheReplyAlone, DeliversItAndLosesItsLine)
{
    setLogginOn(log.c_str());
    EXPECT_EQ(withAllocations(1, [this] { return fetch(); }), 0);
    EXPECT_TRUE(isDelivered());
    EXPECT_EQ(contentOf(log), "(no file)");
    EXPECT_EQ(fetch(), 0);
    EXPECT_EQ(contentOf(log), GetParam().line + shortReply + "\n");
}

TEST_F(MemoryAfterReply, AVariablesTextNeedsOnePieceOnly)
{
    EXPECT_EQ(withAllocations(1, [] { return getVariableStr(1, "12"); }), shortReply);
    setLogginOn(log.c_str());
    EXPECT_EQ(withAllocations(1, [] { return getVariableStr(1, "12"); }), shortReply);
    EXPECT_EQ(contentOf(log), "(no file)");
    EXPECT_EQ(getVariableStr(1, "12"), shortReply);
    EXPECT_EQ(contentOf(log), "getVariableStr device 1, variableCode 12, result " + shortReply + "\n");
}

// The copy of the code first, then the request, then the reply.
TEST_F(MemoryAfterReply, AVariablesTextIsErrorWhereverMemoryEnds)
{
    const std::string code(1000, '1');
    for (const int allocations : {0, 1}) {
        EXPECT_STREQ(withAllocations(allocations, [&] { return getVariableStr(1, code.c_str()); }), "Error");
    }
    EXPECT_EQ(getVariableStr(1, code.c_str()), shortReply);
    EXPECT_STREQ(withAllocations(0, [] { return getVariableStr(1, "12"); }), "Error");
}

// As one that cannot be opened for any other reason, before the exchange and after it.
TEST_F(MemoryAfterReply, AFileThatThereIsNoMemoryForIsAFailureOfTheFile)
{
    constexpr int failureOfAFile = -10201;
    const char* const name = "memory_after_reply_test.file";
    const std::function<int()> fetchFirst = [&] { return getJournal_str_tofile(1, name); };
    const std::function<int()> openFirst = [&] { return saveJournalToFile(1, 'J', 1, name); };
    EXPECT_EQ(withAllocations(1, [&] { return fetchFirst(); }), failureOfAFile);
    EXPECT_EQ(withAllocations(0, [&] { return openFirst(); }), failureOfAFile);
    for (const auto& fetch : {fetchFirst, openFirst}) {
        std::filesystem::remove(name);
        EXPECT_EQ(fetch(), 0);
        EXPECT_EQ(contentOf(name), shortReply);
    }
    std::filesystem::remove(name);
}

// Of the one export that writes a line after a failure, which is short and needs no memory.
TEST(MemoryAfterRefusal, LosesNeitherTheLineOfTheFailureNorItsCode)
{
    constexpr int failureOfAFile = -10201;
    constexpr int refusal = 5;
    const OwnFolder folder;
    const std::string log = folder.file("log");
    const char* const name = "memory_after_refusal_test.file";
    PrinterThread printer([](wire::Connection& connection) {
        while (receiveRequest(connection)) {
            connection.send(bytes({nak, refusal}));
        }
    });
    ASSERT_EQ(openFM(printer.address().c_str()), 0);
    ASSERT_EQ(getJournalStructZ1_tofile(1, "Z", 1, 2, name), refusal); // makes room for the request
    setLogginOn(log.c_str());
    setLogginOff(); // it is written all the same
    const auto fetch = [&] { return getJournalStructZ1_tofile(1, "Z", 1, 2, name); };
    int allocations = 0;
    int result = withAllocations(allocations, fetch);
    std::string lines;
    for (; result == failureOfAFile && allocations < 100; result = withAllocations(++allocations, fetch)) {
        lines += "getJournalStructZ1_tofile exception -10201Telvo error -10201\n";
    }
    EXPECT_EQ(result, refusal);
    EXPECT_GT(allocations, 0) << "memory never ended";
    EXPECT_EQ(contentOf(log), lines + "getJournalStructZ1_tofile exception 5 error \n");
    closeFM();
    std::filesystem::remove(name);
}

} // namespace
} // namespace telvofm::test
