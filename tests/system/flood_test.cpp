// A printer that sends more than the memory takes, and other pieces of memory that are too large to be had.
#include "telvofm.h"
#include "tests/system/replying_printer.h"
#include "tests/unit/limited_memory.h"
#include "tests/unit/own_folder.h"

#include <gtest/gtest.h>

namespace telvofm::test {
namespace {

// Good blocks without end, whatever is answered.
void flood(wire::Connection& connection)
{
    receiveRequest(connection);
    std::string blocks;
    for (int count = 0; count < 1000; ++count) {
        blocks += block(std::string(256, 'x'), etb);
    }
    while (connection.receive(4096, std::chrono::milliseconds(0))) {
        connection.send(blocks);
    }
}

class FloodTest : public ::testing::Test
{
protected:
    void SetUp() override { setLogginOff(); }
    void TearDown() override { closeFM(); }
};

using Fetch = int (*)(const char* file, ResultObject* object, char* buffer);

struct FetchCase
{
    const char* name;
    Fetch fetch;
};

std::ostream& operator<<(std::ostream& out, const FetchCase& fetching)
{
    return out << fetching.name;
}

class Flood : public FloodTest, public ::testing::WithParamInterface<FetchCase>
{
};

constexpr int bufferSize = 16;

// One of each kind of delivery and of exchange.
INSTANTIATE_TEST_SUITE_P(
    EachKindOfFetching, Flood,
    ::testing::Values(
        FetchCase{"buffer", [](const char*, ResultObject*, char* b) { return getJournal(1, b, bufferSize); }},
        FetchCase{"object",
                  [](const char*, ResultObject* o, char*) { return getJournal_ResultObject(1, o); }},
        FetchCase{"file", [](const char* f, ResultObject*, char*) { return getJournal_str_tofile(1, f); }},
        FetchCase{"extractInBuffer", [](const char*, ResultObject*,
                                        char* b) { return getJournalStructZ(1, 1, 2, b, bufferSize); }},
        FetchCase{"extractInObject", [](const char*, ResultObject* o,
                                        char*) { return getJournalStructZ_ResultObject(1, 1, 2, o); }},
        FetchCase{"extractInFile",
                  [](const char* f, ResultObject*, char*) { return getJournalStructZ_tofile(1, 1, 2, f); }},
        FetchCase{"variable",
                  [](const char*, ResultObject*, char* b) { return getVariable(1, "1", b, bufferSize); }},
        FetchCase{"variableInObject",
                  [](const char*, ResultObject* o, char*) { return getVariableResultObject(1, "1", o); }},
        FetchCase{"receipt",
                  [](const char*, ResultObject*, char* b) { return getLastParagon(1, b, bufferSize); }},
        FetchCase{"receiptInObject",
                  [](const char*, ResultObject* o, char*) { return getLastParagonResultObject(1, o); }},
        FetchCase{"names", [](const char*, ResultObject* o,
                              char*) { return getParagonIDs_ResultObject(1, 'x', "1", o); }},
        FetchCase{"fiscalMemory", [](const char*, ResultObject*,
                                     char* b) { return getIntervalFPC(1, 0, 1, 2, b, bufferSize); }},
        FetchCase{"backup",
                  [](const char*, ResultObject*, char* b) { return getBCKP(1, "p", 1, b, bufferSize); }},
        FetchCase{"backupInFile",
                  [](const char* f, ResultObject*, char*) { return saveBCKP(1, "p", 1, f); }}),
    [](const auto& instance) { return instance.param.name; });

TEST_P(Flood, IsARuntimeFailureThatLeavesTheHostAlone)
{
    const OwnFolder folder;
    const std::string file = folder.file("reply");
    std::string buffer(bufferSize, '-');
    ResultObject* const object = createResultObject();
    {
        PrinterThread printer(flood);
        ASSERT_EQ(openFM(printer.address().c_str()), 0);
        EXPECT_EQ(
            withoutLargeAllocations([&] { return GetParam().fetch(file.c_str(), object, buffer.data()); }),
            -10000);
        closeFM();
    }
    EXPECT_EQ(getResultObjectLength(object), 0);
    destroyResultObject(object);
    EXPECT_EQ(buffer, std::string(bufferSize, '-'));
    PrinterThread another(acceptAll);
    ASSERT_EQ(openFM(another.address().c_str()), 0);
    EXPECT_EQ(printJobCancel(1), 0);
    closeFM();
}

TEST_F(FloodTest, AFloodInsteadOfAVariablesTextIsError)
{
    PrinterThread printer(flood);
    ASSERT_EQ(openFM(printer.address().c_str()), 0);
    EXPECT_STREQ(withoutLargeAllocations([] { return getVariableStr(1, "1"); }), "Error");
    closeFM();
}

// Three characters for each byte: the record of the raw log does not fit and is lost, the bytes do.
TEST_F(FloodTest, TheRawLogsRecordMayNotFit)
{
    const OwnFolder folder;
    const std::string text(1500000, 'x');
    constexpr std::size_t besideText =
        8; // of the request: 1C, address, code, "0", two ends of fields, 04, checksum byte
    PrinterThread printer([&](wire::Connection& connection) {
        receiveBytes(connection,
                     text.size() + besideText); // in large pieces: byte by byte it would take seconds
        connection.send("\x06");
        receiveBytes(connection, text.size());
        acceptAll(connection);
    });
    ASSERT_EQ(openFM(printer.address().c_str()), 0);
    setRawLogginOn(folder.file("raw").c_str());
    EXPECT_EQ(withoutLargeAllocations([&] { return destroyParagon(1, 0, text.c_str()); }), 0);
    EXPECT_EQ(withoutLargeAllocations([&] {
                  const auto* bytes = reinterpret_cast<const unsigned char*>(text.data());
                  return rawWrite(bytes, static_cast<std::int64_t>(text.size()));
              }),
              static_cast<std::int64_t>(text.size()));
    seRawLogginOff();
    EXPECT_EQ(printJobCancel(1), 0);
    closeFM();
}

} // namespace
} // namespace telvofm::test
