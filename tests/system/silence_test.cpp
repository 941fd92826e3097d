// A printer that takes everything and says nothing, in real time.
#include "telvofm.h"
#include "tests/system/printer_thread.h"

#include <gtest/gtest.h>

#include <future>

namespace telvofm::test {
namespace {

TEST(Silence, CostsThreeTriesOfSixSecondsWithOneProbeEach)
{
    using Clock = std::chrono::steady_clock;
    std::promise<std::string> received;
    PrinterThread printer(
        [&](wire::Connection& connection) { received.set_value(receiveUntilClosed(connection)); });
    setLogginOff();
    ASSERT_EQ(openFM(printer.address().c_str()), 0);
    const auto started = Clock::now();
    EXPECT_EQ(printJobCancel(1), -10202);
    const auto lasted = Clock::now() - started;
    closeFM();

    const std::string aTry = "\x1C\x01\xE0\x04\xF9\x11";
    EXPECT_EQ(received.get_future().get(), aTry + aTry + aTry);
    EXPECT_GE(lasted, std::chrono::milliseconds(17900));
    EXPECT_LT(lasted, std::chrono::seconds(40));
}

TEST(Silence, ABusyPrinterIsWaitedFor)
{
    PrinterThread printer([](wire::Connection& connection) {
        receiveRequest(connection);
        for (int probe = 0; probe < 3; ++probe) {
            receiveBytes(connection, 1);
            connection.send("\x13");
        }
        receiveBytes(connection, 1);
        connection.send("\x06");
        receiveUntilClosed(connection);
    });
    setLogginOff();
    ASSERT_EQ(openFM(printer.address().c_str()), 0);
    EXPECT_EQ(printJobCancel(1), 0);
    closeFM();
}

} // namespace
} // namespace telvofm::test
