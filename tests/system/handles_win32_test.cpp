// A till that opens and closes its printer all day keeps as many handles as it had in the morning.
#include "telvofm.h"
#include "tests/system/open_handles_win32.h"
#include "tests/system/printer_thread.h"

#include <gtest/gtest.h>

namespace telvofm::test {
namespace {

// Against a printer of their own, so that no handle of it is left when they are counted.
void openAndClose(int sessions)
{
    PrinterThread printer(acceptAll);
    for (int i = 0; i < sessions; ++i) {
        ASSERT_EQ(openFM(printer.address().c_str()), 0);
        ASSERT_EQ(printJobCancel(1), 0);
        closeFM();
    }
}

TEST(HandlesOfTcp, AreAsManyAfterAThousandSessions)
{
    ASSERT_NO_FATAL_FAILURE(openAndClose(1)); // what the process opens once
    const int before = openHandles();
    ASSERT_NO_FATAL_FAILURE(openAndClose(1000));
    EXPECT_EQ(openHandles(), before);
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
