// The library while memory runs out: the program's allocations are the library's too, and end on demand.
#include "telvofm.h"
#include "tests/system/limited_memory.h"
#include "tests/system/printer_thread.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <future>
#include <new>

namespace telvofm::test {
namespace {

class OutOfMemory : public ::testing::Test
{
protected:
    void SetUp() override { setLogginOff(); }
    void TearDown() override { closeFM(); }
};

TEST_F(OutOfMemory, ThereIsNoResultObject)
{
    EXPECT_EQ(withAllocations(0, createResultObject), nullptr);
}

TEST_F(OutOfMemory, OpeningIsMinusOneWhereverMemoryEnds)
{
    PrinterThread printer(acceptAll);
    const std::string address = printer.address();
    int result = -1;
    int allocations = 0;
    for (; result == -1 && allocations < 100; ++allocations) {
        result = withAllocations(allocations, [&] { return openFM(address.c_str()); });
    }
    EXPECT_EQ(result, 0);
    EXPECT_GT(allocations, 1) << "memory never ended";
    EXPECT_EQ(printJobCancel(1), 0);
    closeFM();
}

TEST_F(OutOfMemory, ACommandThrowsAndLeavesTheSessionToTheNext)
{
    PrinterThread printer(acceptAll);
    ASSERT_EQ(openFM(printer.address().c_str()), 0);
    const std::string text(10000, 'x');
    EXPECT_THROW(withAllocations(0, [&] { return destroyParagon(1, 0, text.c_str()); }), std::bad_alloc);
    // On another thread: this one could take a lock again that was left behind.
    auto next = std::async(std::launch::async, [] { return printJobCancel(1); });
    if (next.wait_for(std::chrono::seconds(10)) != std::future_status::ready) {
        std::fputs("the failed command has kept the lock\n", stderr);
        std::abort(); // the other thread waits for ever
    }
    EXPECT_EQ(next.get(), 0);
    closeFM();
}

// A link that cannot be opened again for want of memory stays the one that is held.
TEST_F(OutOfMemory, OpeningAHeldLinkAgainIsMinusOneWhereverMemoryEnds)
{
    PrinterThread printer(acceptAll);
    ASSERT_EQ(openFM(printer.address().c_str()), 0);
    int result = -1;
    int allocations = 0;
    for (; result == -1 && allocations < 100; ++allocations) {
        result = withAllocations(allocations, [] { return openFMBaud("COM1", 9600); });
    }
    EXPECT_EQ(result, 0);
    EXPECT_GT(allocations, 1) << "memory never ended";
    EXPECT_EQ(printJobCancel(1), 0);
    closeFM();
}

} // namespace
} // namespace telvofm::test
