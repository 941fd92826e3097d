// A wait without a limit, for the locks of the library.
#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>

namespace telvofm {

// In turns of an hour: the standard library's own wait without a limit would ask for the runtime of GCC 12,
// and keep the library from systems that have the one of GCC 11.
template <typename IsMet>
void waitUntil(IsMet isMet, std::condition_variable& changed, std::unique_lock<std::mutex>& guard)
{
    while (!isMet()) {
        changed.wait_for(guard, std::chrono::hours(1));
    }
}

} // namespace telvofm
