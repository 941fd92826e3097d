// A TCP link whose opening fails for want of memory gives back what it has begun, wherever memory ends.
#include "tests/unit/limited_memory.h"
#include "tests/unit/tcp_driver_fixture.h"

#include <algorithm>
#include <new>

namespace telvofm::test {
namespace {

TEST(HalfOpenedLink, LeavesNoSocketInterfaceBehind)
{
    constexpr std::size_t room = 16;
    constexpr int textsOfTheName = 2; // host and port, each too long to lie in the text itself
    const std::string name = std::string(100, 'h') + ":" + std::string(100, '9');
    int allocations = 0;
    for (bool isOpen = false; !isOpen; ++allocations) {
        resetNetwork();
        network().calls.reserve(room);
        TcpDriver driver(name);
        try {
            withAllocations(allocations, [&] { driver.open(); });
            isOpen = true;
        } catch (const std::bad_alloc&) {
            const auto& calls = network().calls;
            EXPECT_EQ(std::count(calls.begin(), calls.end(), "startUp"),
                      std::count(calls.begin(), calls.end(), "cleanUp"))
                << "after " << allocations << " allocations";
        }
    }
    EXPECT_GT(allocations, textsOfTheName);
}

} // namespace
} // namespace telvofm::test
