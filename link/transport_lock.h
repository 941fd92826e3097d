// Held shared by raw access, which does not wait for exchanges, and alone while the link opens or closes. It
// takes the place of a std::shared_timed_mutex, which mingw never destroys: each one would keep two handles
// of the system for good.
#pragma once

#include "link/endless_wait.h"

#include <chrono>
#include <condition_variable>
#include <mutex>

namespace telvofm {

class TransportLock
{
public:
    void lock()
    {
        std::unique_lock guard(state);
        waitUntil([this] { return users == none; }, released, guard);
        users = alone;
    }

    bool try_lock()
    {
        const std::scoped_lock guard(state);
        if (users != none) {
            return false;
        }
        users = alone;
        return true;
    }

    bool try_lock_for(std::chrono::milliseconds longest)
    {
        std::unique_lock guard(state);
        if (!released.wait_for(guard, longest, [this] { return users == none; })) {
            return false;
        }
        users = alone;
        return true;
    }

    void unlock()
    {
        const std::scoped_lock guard(state);
        users = none;
        released.notify_all();
    }

    void lock_shared()
    {
        std::unique_lock guard(state);
        waitUntil([this] { return users != alone; }, released, guard);
        ++users;
    }

    void unlock_shared()
    {
        const std::scoped_lock guard(state);
        if (--users == none) {
            released.notify_all();
        }
    }

private:
    static constexpr int none = 0;
    static constexpr int alone = -1;

    std::mutex state;
    std::condition_variable released;
    int users = none;
};

} // namespace telvofm
