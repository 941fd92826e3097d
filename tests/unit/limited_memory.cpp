#include "tests/unit/limited_memory.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace telvofm::test {

MemoryLimit& memoryLimit()
{
    thread_local MemoryLimit limit;
    return limit;
}

namespace {

std::atomic<long> held = 0;

} // namespace

long piecesHeld()
{
    return held;
}

long& allocationsMade()
{
    thread_local long made = 0;
    return made;
}

namespace {

bool mayAllocate(std::size_t size)
{
    MemoryLimit& limit = memoryLimit();
    ++allocationsMade();
    if (size > limit.largestAllocation) {
        return false;
    }
    if (limit.allocationsBeforeFailure == 0) {
        limit.allocationsBeforeFailure = MemoryLimit::anyNumber;
        return false;
    }
    if (limit.allocationsBeforeFailure > 0) {
        --limit.allocationsBeforeFailure;
    }
    if (limit.allocationsLeft > 0) {
        --limit.allocationsLeft;
        return true;
    }
    return limit.allocationsLeft == MemoryLimit::anyNumber;
}

} // namespace
} // namespace telvofm::test

void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept
{
    void* const memory = telvofm::test::mayAllocate(size) ? std::malloc(size == 0 ? 1 : size) : nullptr;
    telvofm::test::held += memory == nullptr ? 0 : 1;
    return memory;
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
    telvofm::test::held -= memory == nullptr ? 0 : 1;
    std::free(memory);
}

void operator delete(void* memory, std::size_t /*size*/) noexcept
{
    telvofm::test::held -= memory == nullptr ? 0 : 1;
    std::free(memory);
}

// The sanitizers have array forms of their own, which would pass the limit by.
void* operator new[](std::size_t size)
{
    return operator new(size);
}

void operator delete[](void* memory) noexcept
{
    operator delete(memory);
}

void operator delete[](void* memory, std::size_t size) noexcept
{
    operator delete(memory, size);
}
