#include "tests/second_opinion/passing_time.h"

#include <chrono>
#include <ctime>
#include <dlfcn.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace telvofm::test {
namespace {

using namespace std::chrono;

thread_local PassingTime* passing = nullptr;
thread_local milliseconds passedAtOnce{0};

constexpr nanoseconds pause = 50ms;
constexpr int longestWait = 60'000; // in milliseconds

// The function of the system that the one of the same name below hides.
template <typename Function>
Function* system(const char* name)
{
    return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

} // namespace

PassingTime::PassingTime(PlayingPrinter& other) : printer(other)
{
    passing = this;
}

PassingTime::~PassingTime()
{
    passing = nullptr;
}

} // namespace telvofm::test

// The library finds these first.
extern "C" {
// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name): the system's own names are reserved ones.

[[gnu::visibility("default")]] int nanosleep(const timespec* wanted, timespec* left)
{
    using telvofm::test::passing;
    if (passing != nullptr && wanted->tv_sec == 0 && wanted->tv_nsec == telvofm::test::pause.count()) {
        ++passing->pauses;
        return 0;
    }
    static auto* const real = telvofm::test::system<decltype(::nanosleep)>("nanosleep");
    return real(wanted, left);
}

[[gnu::visibility("default")]] ssize_t send(int descriptor, const void* bytes, size_t count, int flags)
{
    static auto* const real = telvofm::test::system<decltype(::send)>("send");
    const ssize_t sent = real(descriptor, bytes, count, flags);
    if (telvofm::test::passing != nullptr && sent > 0) {
        telvofm::test::passing->sent += static_cast<std::size_t>(sent);
    }
    return sent;
}

[[gnu::visibility("default")]] int poll(pollfd* waiting, nfds_t count, int limit)
{
    using telvofm::test::passing;
    static auto* const real = telvofm::test::system<decltype(::poll)>("poll");
    if (passing == nullptr || limit < 0) {
        return real(waiting, count, limit);
    }
    // A printer that is late on a busy machine is waited for longer than the library would: it says what it
    // is to say.
    for (int waited = 0; limit != 0 && waited < telvofm::test::longestWait; ++waited) {
        if (const int ready = real(waiting, count, 1); ready != 0) {
            return ready;
        }
        if (passing->printer.isWaitedForInVain(passing->sent)) {
            telvofm::test::passedAtOnce += std::chrono::milliseconds(limit);
            return 0;
        }
    }
    return real(waiting, count, 0);
}

[[gnu::visibility("default")]] int clock_gettime(clockid_t clock, timespec* now) noexcept
{
    using namespace std::chrono;
    const long result = ::syscall(SYS_clock_gettime, clock, now);
    const nanoseconds moved = seconds(now->tv_sec) + nanoseconds(now->tv_nsec) + telvofm::test::passedAtOnce;
    now->tv_sec = duration_cast<seconds>(moved).count();
    now->tv_nsec = (moved % seconds(1)).count();
    return static_cast<int>(result);
}

// NOLINTEND(readability-inconsistent-declaration-parameter-name)
}
