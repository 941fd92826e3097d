// The library while memory runs out: the program's allocations are the library's too, and end on demand. The
// printer's thread goes on.
#include "telvofm.h"
#include "tests/system/printer_thread.h"
#include "tests/unit/limited_memory.h"
#include "tests/unit/own_folder.h"

#include <gtest/gtest.h>

#include <array>
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

// The first one makes room for the requests.
TEST_F(OutOfMemory, ASaleNeedsNoneWithTheLogOffAndOn)
{
    PrinterThread printer(acceptAll);
    const OwnFolder folder;
    const std::string log = folder.file("log");
    const auto sell = [] { return itemSale(1, 0, "Bread", 12.5, 'A', 1.5, 8.3333, "pcs"); };
    ASSERT_EQ(openFM(printer.address().c_str()), 0);
    ASSERT_EQ(sell(), 0);
    EXPECT_EQ(withAllocations(0, sell), 0);
    setLogginOn(log.c_str());
    EXPECT_EQ(withAllocations(0, sell), 0);
    setLogginOff();
    closeFM();
    EXPECT_EQ(contentOf(log), "itemSale Device 1, row 0, commodityName Bread, total price 12.5, vat A, "
                              "amount 1.5, unit price 8.3333, unit pcs\n");
}

// Its words take 87 characters, five numbers 20 each whatever they are, the letter and the end of the line
// one.
TEST_F(OutOfMemory, ALineOfTheLogNeedsNoneUntilItsPartsMayTakeMoreThan256Characters)
{
    const OwnFolder folder;
    closeFM(); // the first call of all makes the sessions
    setLogginOn(folder.file("calls.log").c_str());
    const std::string name(60, 'x');
    const auto sell = [&name](const char* unit) {
        return withAllocations(0, [&] { return itemSale(1, 2, name.c_str(), 1.0, 'A', 1.0, 1.0, unit); });
    };
    EXPECT_EQ(sell("1234567"), -1);
    EXPECT_THROW(sell("12345678"), std::bad_alloc);
    EXPECT_EQ(contentOf(folder.file("calls.log")),
              "itemSale Device 1, row 2, commodityName " + name +
                  ", total price 1, vat A, amount 1, unit price 1, unit 1234567\n");
    setLogginOff();
}

TEST_F(OutOfMemory, RawBytesThatCannotBeCopiedAreNotWritten)
{
    PrinterThread printer(
        [](wire::Connection& connection) { EXPECT_TRUE(receiveUntilClosed(connection) == "x"); });
    ASSERT_EQ(openFM(printer.address().c_str()), 0);
    const std::string bytes(std::size_t{5} << 20U, 'x');
    const auto write = [&](std::size_t count) {
        const auto* start = reinterpret_cast<const unsigned char*>(bytes.data());
        return rawWrite(start, static_cast<std::int64_t>(count));
    };
    EXPECT_EQ(withoutLargeAllocations([&] { return write(bytes.size()); }), -1);
    EXPECT_EQ(write(std::size_t{1}), 1);
    closeFM();
}

TEST_F(OutOfMemory, OpeningIsMinusOneWhenTheNameCannotBeCopied)
{
    const std::string name(1000, 'x');
    EXPECT_EQ(withAllocations(0, [&] { return openFM(name.c_str()); }), -1);
    EXPECT_EQ(withAllocations(0, [&] { return openFMBaud(name.c_str(), 57600); }), -1);
    EXPECT_EQ(withAllocations(0, [&] { return openFMStopBit(name.c_str(), 1); }), -1);
}

TEST_F(OutOfMemory, OpeningIsMinusOneWhenTheLineOfTheLogCannotBeMade)
{
    OwnFolder folder;
    setLogginOn(folder.file("calls.log").c_str());
    EXPECT_EQ(withAllocations(0, [] { return openFM("COM1"); }), -1);
    EXPECT_EQ(withAllocations(0, [] { return openFMBaud("COM1", 57600); }), -1);
    EXPECT_EQ(withAllocations(0, [] { return openFMStopBit("COM1", 1); }), -1);
}

TEST_F(OutOfMemory, ACommandThrowsAndLeavesTheSessionToTheNext)
{
    PrinterThread printer(acceptAll);
    ASSERT_EQ(openFM(printer.address().c_str()), 0);
    const std::string text(10000, 'x');
    // The call's copy of the text is the first allocation, its request under the lock the second.
    for (const int allocations : {0, 1}) {
        EXPECT_THROW(withAllocations(allocations, [&] { return destroyParagon(1, 0, text.c_str()); }),
                     std::bad_alloc);
    }
    // On another thread: this one could take a lock again that was left behind.
    auto next = std::async(std::launch::async, printJobCancel, 1);
    if (next.wait_for(std::chrono::seconds(10)) != std::future_status::ready) {
        std::fputs("the failed command has kept the lock\n", stderr);
        std::abort(); // the other thread waits for ever
    }
    EXPECT_EQ(next.get(), 0);
    closeFM();
}

// The request's record is made while the command is under way: without it the printer's answer is the result
// all the same. Those of single bytes need no memory.
TEST_F(OutOfMemory, ARecordOfTheRawLogIsLostAndChangesNothing)
{
    OwnFolder folder;
    PrinterThread printer(acceptAll);
    ASSERT_EQ(openFM(printer.address().c_str()), 0);
    ASSERT_EQ(printJobCancel(1), 0); // makes room for the request
    setRawLogginOn(folder.file("raw.log").c_str());
    EXPECT_EQ(withAllocations(0, [] { return printJobCancel(1); }), 0);
    constexpr std::string_view recordOfRequest = "1c 01 e0 04";
    EXPECT_EQ(contentOf(folder.file("raw.log")).find(recordOfRequest), std::string::npos);
    EXPECT_EQ(printJobCancel(1), 0);
    seRawLogginOff();
    EXPECT_NE(contentOf(folder.file("raw.log")).find(recordOfRequest), std::string::npos);
    closeFM();
}

// Each is longer than all before, which have made room.
TEST_F(OutOfMemory, APathOfALogThatCannotBeCopiedLeavesTheOneBefore)
{
    const OwnFolder folder;
    const std::string longPath(100000, 'x');
    PrinterThread printer(acceptAll);
    ASSERT_EQ(openFM(printer.address().c_str()), 0);
    setLogginOn(folder.file("calls.log").c_str());
    setRawLogginOn(folder.file("raw.log").c_str());
    EXPECT_THROW(withAllocations(0, [&] { return setLogginOn(longPath.c_str()), 0; }), std::bad_alloc);
    EXPECT_THROW(withAllocations(0, [&] { return setRawLogginOn(longPath.c_str()), 0; }), std::bad_alloc);
    EXPECT_EQ(printJobCancel(1), 0);
    setLogginOff();
    seRawLogginOff();
    closeFM();
    EXPECT_EQ(contentOf(folder.file("calls.log")), "printJobCancel device 1\n");
    EXPECT_NE(contentOf(folder.file("raw.log")).find("1c 01 e0 04"), std::string::npos);
}

// So few that their record is a short string.
TEST_F(OutOfMemory, ARecordOfThreeBytesNeedsNone)
{
    const OwnFolder folder;
    PrinterThread printer([](wire::Connection& connection) { receiveUntilClosed(connection); });
    ASSERT_EQ(openFM(printer.address().c_str()), 0);
    setRawLogginOn(folder.file("raw.log").c_str());
    const std::array<unsigned char, 3> bytes{1, 2, 3};
    EXPECT_EQ(withAllocations(0, [&bytes] { return rawWrite(bytes.data(), 3); }), 3);
    seRawLogginOff();
    closeFM();
    EXPECT_TRUE(contentOf(folder.file("raw.log")).ends_with("01 02 03 "));
}

// The sale of a name as long as two lines of a receipt, in each of its variants.
TEST_F(OutOfMemory, ASaleNeedsNoAllocation)
{
    PrinterThread printer(acceptAll);
    ASSERT_EQ(openFM(printer.address().c_str()), 0);
    const std::string name(64, 'x');
    const auto sellAll = [&name] {
        return itemSale(1, 0, name.c_str(), 12.5, 'A', 1.5, 8.3333, "ks") +
               itemSale_int(1, 0, name.c_str(), 1250, "A", 1500, 83333, "ks") +
               itemSale_str(1, 0, name.c_str(), "12.50", "A", "1.500", "8.33", "ks");
    };
    ASSERT_EQ(sellAll(), 0); // makes room for the requests
    EXPECT_EQ(withAllocations(0, sellAll), 0);
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
