#include "tests/unit/limited_memory.h"

#include <cstdlib>
#include <new>

namespace telvofm::test {

MemoryLimit& memoryLimit()
{
    thread_local MemoryLimit limit;
    return limit;
}

namespace {

bool mayAllocate(std::size_t size)
{
    MemoryLimit& limit = memoryLimit();
    if (size > limit.largestAllocation) {
        return false;
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
    return telvofm::test::mayAllocate(size) ? std::malloc(size == 0 ? 1 : size) : nullptr;
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
