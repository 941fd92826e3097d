#include "tests/system/system_calls.h"

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <ctime>
#include <dlfcn.h>
#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace telvofm::test {
namespace {

thread_local SystemCalls* watcher = nullptr;
thread_local std::chrono::milliseconds timePassedAtOnce{0};

// The function of the system that the one of the same name below hides.
template <typename Function>
Function* system(const char* name)
{
    return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

bool fails(int SystemCalls::*count, int error)
{
    if (watcher == nullptr || watcher->*count == 0) {
        return false;
    }
    --(watcher->*count);
    errno = error;
    return true;
}

bool interrupts(int SystemCalls::*count)
{
    return fails(count, EINTR);
}

bool failsWithTheNext(std::deque<int>& errors)
{
    if (errors.empty()) {
        return false;
    }
    errno = errors.front();
    errors.pop_front();
    return true;
}

} // namespace

SystemCalls::SystemCalls()
{
    watcher = this;
}

SystemCalls::~SystemCalls()
{
    watcher = nullptr;
}

} // namespace telvofm::test

using telvofm::test::fails;
using telvofm::test::failsWithTheNext;
using telvofm::test::interrupts;
using telvofm::test::SystemCalls;
using telvofm::test::timePassedAtOnce;
using telvofm::test::watcher;

// The drivers are linked into the test program and find these first; the clock is asked by the language's
// library, which needs to see it from outside.
extern "C" {
// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name): the system's own names are reserved ones.

// An interrupted connect goes on by itself, and so does this one.
int connect(int descriptor, const sockaddr* address, socklen_t size)
{
    static auto* const real = telvofm::test::system<decltype(::connect)>("connect");
    if (!interrupts(&SystemCalls::connectsToInterrupt)) {
        return real(descriptor, address, size);
    }
    const int flags = ::fcntl(descriptor, F_GETFL);
    ::fcntl(descriptor, F_SETFL, flags | O_NONBLOCK);
    const int result = real(descriptor, address, size);
    const int error = errno == EINPROGRESS ? EINTR : errno;
    ::fcntl(descriptor, F_SETFL, flags);
    errno = error;
    return result;
}

int open(const char* path, int flags, ...) // NOLINT(cert-dcl50-cpp): the system's own is such a one
{
    static auto* const real = telvofm::test::system<decltype(::open)>("open");
    va_list more;
    va_start(more, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(more, mode_t) : 0;
    va_end(more);
    return interrupts(&SystemCalls::opensToInterrupt) ? -1 : real(path, flags, mode);
}

ssize_t send(int descriptor, const void* bytes, size_t count, int flags)
{
    static auto* const real = telvofm::test::system<decltype(::send)>("send");
    if (interrupts(&SystemCalls::sendsToInterrupt)) {
        return -1;
    }
    if (watcher != nullptr) {
        watcher->sends.push_back(count);
        count = std::min(count, watcher->mostBytesPerSend);
    }
    return real(descriptor, bytes, count, flags);
}

ssize_t recv(int descriptor, void* buffer, size_t size, int flags)
{
    static auto* const real = telvofm::test::system<decltype(::recv)>("recv");
    return interrupts(&SystemCalls::receivesToInterrupt) ? -1 : real(descriptor, buffer, size, flags);
}

int socket(int family, int type, int protocol) noexcept
{
    static auto* const real = telvofm::test::system<decltype(::socket)>("socket");
    return fails(&SystemCalls::socketsToRefuse, EMFILE) ? -1 : real(family, type, protocol);
}

int getsockopt(int descriptor, int level, int option, void* value, socklen_t* size) noexcept
{
    static auto* const real = telvofm::test::system<decltype(::getsockopt)>("getsockopt");
    const bool isRefused = fails(&SystemCalls::socketQueriesToFail, ENOBUFS);
    return isRefused ? -1 : real(descriptor, level, option, value, size);
}

int setsockopt(int descriptor, int level, int option, const void* value, socklen_t size) noexcept
{
    static auto* const real = telvofm::test::system<decltype(::setsockopt)>("setsockopt");
    if (watcher != nullptr) {
        ++watcher->socketOptionsSet;
    }
    return real(descriptor, level, option, value, size);
}

int poll(pollfd* waiting, nfds_t count, int limit)
{
    static auto* const real = telvofm::test::system<decltype(::poll)>("poll");
    if (watcher == nullptr || waiting->fd == STDOUT_FILENO) {
        return real(waiting, count, limit);
    }
    if (count != 1) { // the library waits for one at a time
        errno = EINVAL;
        return -1;
    }
    const bool isForTerminal = ::isatty(waiting->fd) == 1;
    if (!isForTerminal) {
        watcher->socketWaits.push_back(limit);
    }
    if (failsWithTheNext(watcher->waitErrors)) {
        return -1;
    }
    if (!isForTerminal || (!watcher->terminalStaysFull && real(waiting, count, 0) != 0)) {
        return real(waiting, count, limit);
    }
    if (waiting->events == POLLIN) {
        if (watcher->whenTerminalIsEmpty) {
            watcher->whenTerminalIsEmpty();
        }
        return real(waiting, count, limit);
    }
    if (watcher->whenTerminalIsFull) {
        watcher->whenTerminalIsFull();
        return real(waiting, count, limit);
    }
    watcher->terminalStaysFull = true;
    const bool isInterrupted = interrupts(&SystemCalls::waitsForRoomToInterrupt);
    const std::chrono::milliseconds waited(isInterrupted ? limit / 2 : limit);
    watcher->waitedForTerminal += waited;
    timePassedAtOnce += waited;
    if (!isInterrupted) {
        errno = ENOENT; // what is no error leaves there what it likes
    }
    return isInterrupted ? -1 : 0;
}

ssize_t write(int descriptor, const void* bytes, size_t count)
{
    static auto* const real = telvofm::test::system<decltype(::write)>("write");
    if (watcher == nullptr) {
        return real(descriptor, bytes, count);
    }
    if (::isatty(descriptor) == 0) {
        if (watcher->fileWritesOfNothing > 0) {
            --watcher->fileWritesOfNothing;
            errno = ENOENT; // what is no error leaves there what it likes
            return 0;
        }
        return failsWithTheNext(watcher->fileWriteErrors)
                   ? -1
                   : real(descriptor, bytes, std::min(count, watcher->mostBytesPerFileWrite));
    }
    if (watcher->terminalWriteErrors.empty()) {
        return real(descriptor, bytes, count);
    }
    timePassedAtOnce += std::chrono::seconds(1);
    failsWithTheNext(watcher->terminalWriteErrors);
    return -1;
}

int fclose(std::FILE* file)
{
    static auto* const real = telvofm::test::system<decltype(::fclose)>("fclose");
    const int result = real(file);
    return fails(&SystemCalls::filesToLose, EDQUOT) ? EOF : result;
}

ssize_t read(int descriptor, void* buffer, size_t size)
{
    static auto* const real = telvofm::test::system<decltype(::read)>("read");
    const bool isWatched = watcher != nullptr && ::isatty(descriptor) == 1;
    return isWatched && failsWithTheNext(watcher->terminalReadErrors) ? -1 : real(descriptor, buffer, size);
}

int nanosleep(const timespec* time, timespec* left)
{
    static auto* const real = telvofm::test::system<decltype(::nanosleep)>("nanosleep");
    if (watcher != nullptr) {
        ++watcher->rests;
    }
    return real(time, left);
}

[[gnu::visibility("default")]] int clock_gettime(clockid_t clock, timespec* now) noexcept
{
    using namespace std::chrono;
    const long result = ::syscall(SYS_clock_gettime, clock, now);
    const nanoseconds moved = seconds(now->tv_sec) + nanoseconds(now->tv_nsec) + timePassedAtOnce;
    now->tv_sec = duration_cast<seconds>(moved).count();
    now->tv_nsec = (moved % seconds(1)).count();
    return static_cast<int>(result);
}

// NOLINTEND(readability-inconsistent-declaration-parameter-name)
}
