#include "link/transport_lock.h"

#include <gtest/gtest.h>

#include <chrono>
#include <future>
#include <mutex>
#include <shared_mutex>
#include <thread>

namespace telvofm::test {
namespace {

TEST(TransportLock, IsHadAloneOnlyWhenNobodySharesIt)
{
    TransportLock transport;
    std::shared_lock first(transport);
    std::shared_lock second(transport);
    EXPECT_FALSE(transport.try_lock());
    first.unlock();
    EXPECT_FALSE(transport.try_lock());
    second.unlock();
    ASSERT_TRUE(transport.try_lock());
    EXPECT_FALSE(transport.try_lock());
    transport.unlock();
    EXPECT_TRUE(transport.try_lock());
    transport.unlock();
}

TEST(TransportLock, IsWaitedForNoLongerThanAsked)
{
    TransportLock transport;
    std::shared_lock user(transport);
    EXPECT_FALSE(transport.try_lock_for(std::chrono::milliseconds(1)));
    user.unlock();
    ASSERT_TRUE(transport.try_lock_for(std::chrono::milliseconds(1)));
    EXPECT_FALSE(transport.try_lock());
    transport.unlock();
}

TEST(TransportLock, IsNotSharedWhileSomebodyHasItAloneHoweverItWasTaken)
{
    static constexpr std::chrono::milliseconds moment{20};
    TransportLock transport;
    const auto take = {+[](TransportLock& lock) { lock.lock(); },
                       +[](TransportLock& lock) { EXPECT_TRUE(lock.try_lock()); },
                       +[](TransportLock& lock) { EXPECT_TRUE(lock.try_lock_for(moment)); }};
    for (const auto& way : take) {
        way(transport);
        const auto sharing =
            std::async(std::launch::async, [&] { const std::shared_lock shared(transport); });
        EXPECT_EQ(sharing.wait_for(moment), std::future_status::timeout);
        transport.unlock();
    }
}

TEST(TransportLock, IsHadByWhoWaitsForItAsSoonAsNobodySharesIt)
{
    using namespace std::chrono_literals;
    TransportLock transport;
    std::shared_lock first(transport);
    std::shared_lock second(transport);
    const auto waiting = std::async(std::launch::async, [&] { const std::scoped_lock alone(transport); });
    first.unlock();
    EXPECT_EQ(waiting.wait_for(20ms), std::future_status::timeout);
    second.unlock();
    EXPECT_EQ(waiting.wait_for(30s), std::future_status::ready);
}

// The two numbers differ only while somebody has the lock alone.
TEST(TransportLock, KeepsThoseWhoShareItApartFromWhoHasItAlone)
{
    constexpr int rounds = 2000;
    TransportLock transport;
    int first = 0;
    int second = 0;
    const auto change = [&] {
        for (int i = 0; i < rounds; ++i) {
            const std::scoped_lock alone(transport);
            ++first;
            ++second;
        }
    };
    const auto changeWhenFree = [&] {
        for (int changes = 0; changes < rounds; ++changes) {
            while (!transport.try_lock()) {
                std::this_thread::yield();
            }
            ++first;
            ++second;
            transport.unlock();
        }
    };
    const auto look = [&] {
        int differing = 0;
        for (int i = 0; i < rounds; ++i) {
            const std::shared_lock shared(transport);
            differing += first != second ? 1 : 0;
        }
        return differing;
    };
    auto changing = std::async(std::launch::async, change);
    auto changingToo = std::async(std::launch::async, changeWhenFree);
    auto looking = std::async(std::launch::async, look);
    EXPECT_EQ(look(), 0);
    EXPECT_EQ(looking.get(), 0);
    changing.get();
    changingToo.get();
    EXPECT_EQ(first, 2 * rounds);
    EXPECT_EQ(second, 2 * rounds);
}

} // namespace
} // namespace telvofm::test
