// Memory that ends on demand, for the calling thread only, so that the printer of the test goes on. A program
// that links this allocates through it, and so does the library in it.
#pragma once

#include <cstddef>
#include <limits>

namespace telvofm::test {

struct MemoryLimit
{
    static constexpr int anyNumber = -1;
    static constexpr std::size_t anySize = std::numeric_limits<std::size_t>::max();

    int allocationsLeft = anyNumber;
    int allocationsBeforeFailure = anyNumber; // one fails behind so many, and then this is `anyNumber` again
    std::size_t largestAllocation = anySize;
};

MemoryLimit& memoryLimit();
// Pieces of memory that all threads have been given and have not given back.
long piecesHeld();
// How many allocations this thread has made.
long& allocationsMade();

template <typename Call>
auto within(MemoryLimit limit, Call call)
{
    struct Limited
    {
        explicit Limited(MemoryLimit limit) { memoryLimit() = limit; }
        Limited(const Limited&) = delete;
        Limited& operator=(const Limited&) = delete;
        ~Limited() { memoryLimit() = {}; }
    };
    const Limited limited(limit);
    return call();
}

// What the call returns when memory ends after so many allocations.
template <typename Call>
auto withAllocations(int count, Call call)
{
    return within({.allocationsLeft = count}, call);
}

// The same when no piece of memory larger than 4 MB is to be had.
template <typename Call>
auto withoutLargeAllocations(Call call)
{
    return within({.largestAllocation = std::size_t{4} << 20U}, call);
}

} // namespace telvofm::test
