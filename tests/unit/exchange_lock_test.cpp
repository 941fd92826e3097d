#include "link/exchange_lock.h"

#include <gtest/gtest.h>

#include <future>

namespace telvofm::test {
namespace {

bool anotherThreadGets(ExchangeLock& exchange)
{
    return std::async(std::launch::async,
                      [&] {
                          const bool isTaken = exchange.try_lock();
                          if (isTaken) {
                              exchange.unlock();
                          }
                          return isTaken;
                      })
        .get();
}

// A command may run several exchanges while it holds the lock.
TEST(ExchangeLock, IsTakenAgainByItsThreadAndFreeAfterAsManyReleases)
{
    ExchangeLock exchange;
    exchange.lock();
    exchange.lock();
    ASSERT_TRUE(exchange.try_lock());
    for (int held = 3; held > 0; --held) {
        EXPECT_FALSE(anotherThreadGets(exchange)) << held;
        exchange.unlock();
    }
    EXPECT_TRUE(anotherThreadGets(exchange));
}

TEST(ExchangeLock, IsWaitedForNoLongerThanAsked)
{
    ExchangeLock exchange;
    exchange.lock();
    const auto wait = [&] { return exchange.try_lock_for(std::chrono::milliseconds(1)); };
    EXPECT_FALSE(std::async(std::launch::async, wait).get());
    EXPECT_TRUE(wait()) << "it is this thread's";
    exchange.unlock();
    exchange.unlock();
}

} // namespace
} // namespace telvofm::test
