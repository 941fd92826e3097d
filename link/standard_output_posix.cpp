#include "link/standard_output.h"

#include <climits>
#include <csignal>
#include <cstdio>
#include <ctime>
#include <poll.h>
#include <pthread.h>
#include <stdio_ext.h>
#include <sys/stat.h>
#include <unistd.h>

namespace telvofm {
namespace {

// Keeps the signal of a pipe without a reader away from the host while this thread writes.
class WithoutBrokenPipeSignal
{
public:
    WithoutBrokenPipeSignal()
    {
        ::sigemptyset(&brokenPipe);
        ::sigaddset(&brokenPipe, SIGPIPE);
        sigset_t pending;
        ::sigpending(&pending);
        wasPending = ::sigismember(&pending, SIGPIPE) == 1;
        ::pthread_sigmask(SIG_BLOCK, &brokenPipe, &before);
    }
    WithoutBrokenPipeSignal(const WithoutBrokenPipeSignal&) = delete;
    WithoutBrokenPipeSignal& operator=(const WithoutBrokenPipeSignal&) = delete;
    ~WithoutBrokenPipeSignal()
    {
        if (!wasPending) {
            const timespec atOnce{};
            ::sigtimedwait(&brokenPipe, nullptr, &atOnce); // takes ours back, if it was raised
        }
        ::pthread_sigmask(SIG_SETMASK, &before, nullptr);
    }

private:
    sigset_t brokenPipe{};
    sigset_t before{};
    bool wasPending = false;
};

bool isPipe(int descriptor)
{
    struct stat status
    {
    };
    return ::fstat(descriptor, &status) == 0 && (S_ISFIFO(status.st_mode) || S_ISSOCK(status.st_mode));
}

// Whether so many bytes can be written without waiting for a reader. A pipe that is ready promises no more
// than one page.
bool takesBytes(int descriptor, std::size_t count)
{
    pollfd writable = {.fd = descriptor, .events = POLLOUT, .revents = 0};
    return (count <= PIPE_BUF || !isPipe(descriptor)) && ::poll(&writable, 1, 0) != 0;
}

// What the host has left in the stream's buffer; the line's page is for the line then.
void flushWhatIsTaken(std::FILE* stream)
{
    const std::size_t pending = ::__fpending(stream);
    if (pending != 0 && takesBytes(::fileno(stream), pending)) {
        std::fflush(stream);
    }
}

// How many bytes the stream takes without writing any.
std::size_t roomInBuffer(std::FILE* stream)
{
    constexpr std::size_t unused = 512; // an unused stream makes its buffer later, and not a smaller one
    if (::__fbufsize(stream) == 0) {
        return ::isatty(::fileno(stream)) == 1 ? 0 : unused;
    }
    return ::__flbf(stream) != 0 ? 0 : ::__fbufsize(stream) - ::__fpending(stream);
}

} // namespace

void writeLine(std::string_view line)
{
    const WithoutBrokenPipeSignal quiet;
    flushWhatIsTaken(stdout);
    const bool isTaken = takesBytes(::fileno(stdout), ::__fpending(stdout) + line.size() + 1);
    if (!isTaken && roomInBuffer(stdout) <= line.size()) {
        return;
    }
    std::fwrite(line.data(), 1, line.size(), stdout);
    std::fputc('\n', stdout);
    if (isTaken) {
        std::fflush(stdout);
    }
}

} // namespace telvofm
