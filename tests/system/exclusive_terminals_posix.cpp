#include "tests/system/exclusive_terminals.h"

#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/syscall.h>
#include <termios.h>
#include <unistd.h>

namespace {

std::atomic<bool> nextPurgeFails = false;

} // namespace

namespace telvofm::test {

void failTheNextPurge()
{
    nextPurgeFails = true;
}

} // namespace telvofm::test

// The serial port is opened without blocking; the tests' own looks at a terminal are not.
// The system's own names of the parameters are reserved.
// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name)
extern "C" __attribute__((visibility("default"))) int open(const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    const int opened = static_cast<int>(::syscall(SYS_openat, AT_FDCWD, path, flags, mode));
    if (opened == -1 || (flags & O_NONBLOCK) == 0 || ::isatty(opened) == 0) {
        return opened;
    }
    if (::flock(opened, LOCK_EX | LOCK_NB) != 0) {
        ::close(opened);
        errno = EBUSY;
        return -1;
    }
    return opened;
}

// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name): as above
extern "C" __attribute__((visibility("default"))) int tcflush(int terminal, int queues) noexcept
{
    if (nextPurgeFails.exchange(false)) {
        errno = EIO;
        return -1;
    }
    return static_cast<int>(::syscall(SYS_ioctl, terminal, TCFLSH, queues));
}
