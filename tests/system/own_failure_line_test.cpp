// The one export that writes its failure to the call log, also while the log is off.
#include "telvofm.h"
#include "tests/system/printer_thread.h"
#include "tests/unit/bytes.h"
#include "tests/unit/own_folder.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

namespace telvofm::test {
namespace {

class OwnFailureLine : public ::testing::Test
{
protected:
    void SetUp() override
    {
        setLogginOn(log.c_str());
        setLogginOff();
    }
    void TearDown() override { closeFM(); }

    // The call log after calls that the printer refused with the code.
    std::string logAfterRefusals(int code, int calls)
    {
        PrinterThread printer([code](wire::Connection& connection) {
            while (receiveRequest(connection)) {
                connection.send(bytes({nak, code}));
            }
        });
        EXPECT_EQ(openFM(printer.address().c_str()), 0);
        for (int call = 0; call < calls; ++call) {
            EXPECT_EQ(getJournalStructZ1_tofile(1, "P", 1, 2, folder.file("journal").c_str()), code);
        }
        closeFM();
        std::ifstream lines(log); // as text: on Windows its lines end with two bytes
        return {std::istreambuf_iterator<char>(lines), {}};
    }

    OwnFolder folder;
    const std::string log = folder.file("calls.log");
};

TEST_F(OwnFailureLine, IsWrittenWhileTheLogIsOff)
{
    EXPECT_EQ(logAfterRefusals(200, 1), "getJournalStructZ1_tofile exception 200Telvo error 200\n");
}

TEST_F(OwnFailureLine, HoldsTheMessageThatBelongsToTheCode)
{
    EXPECT_EQ(logAfterRefusals(6, 1), "getJournalStructZ1_tofile exception 6error \n");
}

TEST_F(OwnFailureLine, NamesAnUnknownExceptionWithoutMessage)
{
    EXPECT_EQ(logAfterRefusals(12, 1), "getJournalStructZ1_tofile exception 12Unknown exception\n");
}

TEST_F(OwnFailureLine, IsAppended)
{
    EXPECT_EQ(logAfterRefusals(200, 2), "getJournalStructZ1_tofile exception 200Telvo error 200\n"
                                        "getJournalStructZ1_tofile exception 200Telvo error 200\n");
}

TEST_F(OwnFailureLine, IsNotWrittenWithoutAPrinter)
{
    EXPECT_EQ(getJournalStructZ1_tofile(1, "P", 1, 2, folder.file("journal").c_str()), -1);
    EXPECT_EQ(contentOf(log), "(no file)");
    EXPECT_EQ(contentOf(folder.file("journal")), "(no file)");
}

} // namespace
} // namespace telvofm::test
