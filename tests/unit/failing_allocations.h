// Ends the memory of the calling thread on demand: a program that links this has its allocations counted.
#pragma once

namespace telvofm::test {

// While it lives, this thread's allocations fail after so many of them; other threads go on.
class AllocationLimit
{
public:
    explicit AllocationLimit(int allocations);
    AllocationLimit(const AllocationLimit&) = delete;
    AllocationLimit& operator=(const AllocationLimit&) = delete;
    ~AllocationLimit();
};

// What the call returns when memory ends after so many allocations.
template <typename Call>
auto withAllocations(int count, Call call)
{
    const AllocationLimit limit(count);
    return call();
}

} // namespace telvofm::test
