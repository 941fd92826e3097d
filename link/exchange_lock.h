// The lock that keeps each exchange whole: re-entrant, as a command may hold it over several exchanges, and
// with a limit for who closes the link. The standard library's timed locks wait by a clock call that the
// thread sanitizer does not know.
#pragma once

#include "link/endless_wait.h"

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace telvofm {

class ExchangeLock
{
public:
    void lock()
    {
        std::unique_lock guard(state);
        ++waiting;
        waitUntil([this] { return isFree(); }, released, guard);
        --waiting;
        take();
    }

    // False when the time ran out.
    bool try_lock_for(std::chrono::milliseconds limit)
    {
        std::unique_lock guard(state);
        ++waiting;
        const bool isInTime = released.wait_for(guard, limit, [this] { return isFree(); });
        --waiting;
        if (isInTime) {
            take();
        }
        return isInTime;
    }

    bool try_lock() { return try_lock_for(std::chrono::milliseconds(0)); }

    void unlock()
    {
        const std::scoped_lock guard(state);
        if (--depth == 0) {
            owner = {};
            if (waiting > 0) {
                released.notify_one();
            }
        }
    }

private:
    [[nodiscard]] bool isFree() const { return depth == 0 || owner == std::this_thread::get_id(); }
    void take()
    {
        owner = std::this_thread::get_id();
        ++depth;
    }

    std::mutex state;
    std::condition_variable released;
    std::thread::id owner;
    int depth = 0;
    int waiting = 0;
};

} // namespace telvofm
