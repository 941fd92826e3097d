// A till that opens and closes its printer all day keeps as many handles as it had in the morning.
#include "telvofm.h"
#include "tests/system/open_handles_win32.h"
#include "tests/system/printer_thread.h"

#include <gtest/gtest.h>

namespace telvofm::test {
namespace {

// The printer serves on this connection's own thread, so that no handle of a test's comes and goes meanwhile.
TEST(HandlesOfTcp, AreAsManyAfterAThousandSessions)
{
    PrinterThread printer(acceptAll);
    const auto session = [&] {
        ASSERT_EQ(openFM(printer.address().c_str()), 0);
        ASSERT_EQ(printJobCancel(1), 0);
        closeFM();
    };
    session(); // what the process opens once
    const int before = openHandles();
    for (int i = 0; i < 1000 && !HasFatalFailure(); ++i) {
        session();
    }
    EXPECT_LE(openHandles(), before + 1) << "the printer's end of the last connection may still be open";
}

TEST(HandlesOfTcp, AreAsManyAfterAHundredOpensThatFail)
{
    std::string refusing;
    {
        const wire::Listener listener;
        refusing = "127.0.0.1:" + std::to_string(listener.port());
    }
    ASSERT_EQ(openFM(refusing.c_str()), -1);
    closeFM();
    const int before = openHandles();
    for (int i = 0; i < 100; ++i) {
        ASSERT_EQ(openFM(refusing.c_str()), -1);
        closeFM();
    }
    EXPECT_EQ(openHandles(), before);
}

TEST(HandlesOfSerial, AreAsManyAfterAHundredOpensOfAMissingPort)
{
    ASSERT_EQ(openFM("COM250"), -1);
    closeFM();
    const int before = openHandles();
    for (int i = 0; i < 100; ++i) {
        ASSERT_EQ(openFM("COM250"), -1);
        closeFM();
    }
    EXPECT_EQ(openHandles(), before);
}

} // namespace
} // namespace telvofm::test
