// The library while memory runs out: the program's allocations are the library's too, and end on demand.
#include "telvofm.h"
#include "tests/system/printer_thread.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <future>
#include <new>

namespace {

constexpr int unlimited = -1;

// Of this thread only, so that the printer of the test goes on.
thread_local int allocationsLeft = unlimited;

bool mayAllocate()
{
    if (allocationsLeft > 0) {
        --allocationsLeft;
        return true;
    }
    return allocationsLeft == unlimited;
}

} // namespace

void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept
{
    return mayAllocate() ? std::malloc(size == 0 ? 1 : size) : nullptr;
}

void* operator new(std::size_t size)
{
    if (void* memory = operator new(size, std::nothrow)) {
        return memory;
    }
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, std::size_t /*size*/) noexcept
{
    std::free(memory);
}

namespace telvofm::test {
namespace {

// What the call returns when memory ends after so many allocations.
template <typename Call>
auto withAllocations(int count, Call call)
{
    struct Limit
    {
        explicit Limit(int allocations) { allocationsLeft = allocations; }
        Limit(const Limit&) = delete;
        Limit& operator=(const Limit&) = delete;
        ~Limit() { allocationsLeft = unlimited; }
    };
    const Limit limit(count);
    return call();
}

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

} // namespace
} // namespace telvofm::test
