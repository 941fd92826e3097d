#include "tests/unit/failing_allocations.h"

#include <cstdlib>
#include <new>

namespace {

constexpr int unlimited = -1;

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

AllocationLimit::AllocationLimit(int allocations)
{
    allocationsLeft = allocations;
}

AllocationLimit::~AllocationLimit()
{
    allocationsLeft = unlimited;
}

} // namespace telvofm::test
