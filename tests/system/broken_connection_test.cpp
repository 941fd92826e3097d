// A printer that closes the connection at every possible place. The host program lives on: a signal for a
// broken connection would end this test program.
#include "telvofm.h"
#include "tests/system/printer_thread.h"

#include <gtest/gtest.h>

#include <string>

namespace telvofm::test {
namespace {

// "1C 01 E0 04" and its checksum byte.
constexpr std::size_t requestLength = 5;

class BrokenConnection : public ::testing::Test
{
protected:
    void SetUp() override { setLogginOff(); }
    void TearDown() override { closeFM(); }

    // Calls until the failure shows, and then once more on the broken connection.
    static void expectFailureAndRecovery(const PrinterThread& printer)
    {
        ASSERT_EQ(openFM(printer.address().c_str()), 0);
        EXPECT_EQ(printJobCancel(1), -10201);
        EXPECT_EQ(printJobCancel(1), -10201);
        EXPECT_EQ(printJobCancel(1), -10201);
        closeFM();

        PrinterThread healthy(acceptAll);
        ASSERT_EQ(openFM(healthy.address().c_str()), 0);
        EXPECT_EQ(printJobCancel(1), 0);
        closeFM();
    }
};

TEST_F(BrokenConnection, AtEachByteOfTheRequest)
{
    for (std::size_t taken = 0; taken <= requestLength; ++taken) {
        SCOPED_TRACE(std::to_string(taken) + " bytes taken");
        PrinterThread printer([taken](wire::Connection& connection) {
            receiveBytes(connection, taken);
            connection.close();
        });
        expectFailureAndRecovery(printer);
    }
}

TEST_F(BrokenConnection, InsteadOfTheErrorCode)
{
    PrinterThread printer([](wire::Connection& connection) {
        receiveBytes(connection, requestLength);
        connection.send("\x15");
        connection.close();
    });
    expectFailureAndRecovery(printer);
}

TEST_F(BrokenConnection, AfterABusyByte)
{
    PrinterThread printer([](wire::Connection& connection) {
        receiveBytes(connection, requestLength);
        connection.send("\x13\x11");
        connection.close();
    });
    expectFailureAndRecovery(printer);
}

TEST_F(BrokenConnection, AfterAWholeExchange)
{
    PrinterThread printer([](wire::Connection& connection) {
        receiveBytes(connection, requestLength);
        connection.send("\x06");
        connection.close();
    });
    ASSERT_EQ(openFM(printer.address().c_str()), 0);
    EXPECT_EQ(printJobCancel(1), 0);
    EXPECT_EQ(printJobCancel(1), -10201);
    EXPECT_EQ(printJobCancel(1), -10201);
}

} // namespace
} // namespace telvofm::test
