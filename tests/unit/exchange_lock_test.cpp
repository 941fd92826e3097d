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

TEST(ExchangeLock, WhoWaitsHasItWhenItIsReleasedAndNotWhenHisTimeIsOver)
{
    using namespace std::chrono_literals;
    static constexpr auto hisTime = 60s;
    const auto take = {+[](ExchangeLock& exchange) { EXPECT_TRUE(exchange.try_lock_for(hisTime)); },
                       +[](ExchangeLock& exchange) { exchange.lock(); }};
    for (const auto& way : take) {
        ExchangeLock exchange;
        exchange.lock();
        const auto waiting = std::async(std::launch::async, [&] {
            way(exchange);
            exchange.unlock();
        });
        EXPECT_EQ(waiting.wait_for(20ms), std::future_status::timeout);
        exchange.unlock();
        EXPECT_EQ(waiting.wait_for(hisTime / 2), std::future_status::ready);
    }
}

} // namespace
} // namespace telvofm::test
