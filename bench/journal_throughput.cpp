// How fast a journal comes in, and how much memory that takes.
//
// The library fetches a journal from a printer of a few lines at the other end of a loopback connection.
// Beside it runs a bare loop that makes the same system calls on the same bytes and does nothing else: what
// the library adds shows as the ratio of the two. Library and printer are processes of their own, each pinned
// to one core; every measurement is a fresh process, so that its peak of memory is its own. The call log is
// off but for one row.
//
//     journal_throughput [ROUNDS [LARGEST-SIZE-IN-MEGABYTES]]
#include "bench/cores.h"
#include "bench/journal_printer.h"
#include "telvofm.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <functional>
#include <limits>
#include <poll.h>
#include <string>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace bench {
namespace {

constexpr std::size_t kilobyte = 1024;
constexpr std::size_t megabyte = kilobyte * kilobyte;

struct Outcome
{
    double seconds = std::numeric_limits<double>::infinity();
    double processorSeconds =
        std::numeric_limits<double>::infinity(); // of the fetching side, the kernel's too
    double peakBytes = 0;                        // above what the process held before the journal came
};

// Measures this process from its construction on.
class Meter
{
public:
    [[nodiscard]] Outcome outcome() const
    {
        const rusage now = usage();
        return {std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count(),
                secondsOf(now) - secondsOf(before),
                static_cast<double>(now.ru_maxrss - before.ru_maxrss) * kilobyte};
    }

private:
    static rusage usage()
    {
        rusage used{};
        getrusage(RUSAGE_SELF, &used);
        return used;
    }
    static double secondsOf(const rusage& used)
    {
        constexpr double microsecond = 1e-6;
        return static_cast<double>(used.ru_utime.tv_sec + used.ru_stime.tv_sec) +
               static_cast<double>(used.ru_utime.tv_usec + used.ru_stime.tv_usec) * microsecond;
    }

    rusage before = usage();
    std::chrono::steady_clock::time_point start = std::chrono::steady_clock::now();
};

// Runs the measurement in a process of its own on the first core.
Outcome inOwnProcess(const std::function<Outcome()>& measure)
{
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0) {
        std::abort();
    }
    std::fflush(stdout); // the child must not write it again
    const pid_t child = fork();
    if (child == 0) {
        pinToCore(0);
        const Outcome outcome = measure();
        const bool isWritten = write(ends[1], &outcome, sizeof outcome) == sizeof outcome;
        _exit(isWritten ? 0 : 1);
    }
    Outcome outcome;
    const bool isRead = read(ends[0], &outcome, sizeof outcome) == sizeof outcome;
    int status = 0;
    waitpid(child, &status, 0);
    close(ends[0]);
    close(ends[1]);
    if (!isRead || status != 0) {
        std::fputs("journal_throughput: a measurement failed\n", stderr);
        std::exit(1);
    }
    return outcome;
}

Outcome fetchWithLibrary(const std::string& address, std::size_t size, const char* log)
{
    setLogginOff();
    // Opening writes a line to standard output, which belongs to the table.
    dup2(open("/dev/null", O_WRONLY | O_CLOEXEC), STDOUT_FILENO);
    ResultObject* journal = createResultObject();
    if (openFM(address.c_str()) != 0) {
        _exit(1);
    }
    if (log != nullptr) {
        setLogginOn(log);
    }
    const Meter meter;
    const int result = getJournal_ResultObject(1, journal);
    const Outcome outcome = meter.outcome();
    if (result != 0 || static_cast<std::size_t>(getResultObjectLength(journal)) != size) {
        _exit(1);
    }
    destroyResultObject(journal);
    closeFM();
    return outcome;
}

// The library's system calls, one by one: a wait and a receive of at most 256 bytes until a block is there,
// and the one byte that asks for the next.
Outcome fetchBare(std::uint16_t port, std::size_t size)
{
    const int socket = connectTo(port);
    const auto send = [socket](std::string_view bytes) {
        if (::send(socket, bytes.data(), bytes.size(), MSG_NOSIGNAL) != static_cast<ssize_t>(bytes.size())) {
            _exit(1);
        }
    };
    std::array<char, 256> buffer{};
    const Meter meter;
    send(journalRequest.substr(0, journalRequest.size() - 1));
    send(journalRequest.substr(journalRequest.size() - 1)); // the checksum byte goes out by itself
    for (std::size_t left = size; left > 0;) {
        const std::size_t data = std::min(left, largestPiece);
        for (std::size_t missing = data + blockOverhead; missing > 0;) {
            pollfd readable = {.fd = socket, .events = POLLIN, .revents = 0};
            if (poll(&readable, 1, 3000) != 1) {
                _exit(1);
            }
            const ssize_t received = recv(socket, buffer.data(), buffer.size(), 0);
            if (received <= 0) {
                _exit(1);
            }
            missing -= static_cast<std::size_t>(received);
        }
        left -= data;
        send(left > 0 ? "\x06" : "\x03");
    }
    const Outcome outcome = meter.outcome();
    close(socket);
    return outcome;
}

struct Pair
{
    Outcome library;
    Outcome bare;
};

// The fastest of several rounds, the two sides in turn: a busy machine only ever makes a round slower. After
// two minutes three are enough.
Pair measure(std::size_t size, int rounds)
{
    constexpr int enough = 3;
    const auto isLate = [end = std::chrono::steady_clock::now() + std::chrono::minutes(2)] {
        return std::chrono::steady_clock::now() > end;
    };
    Pair best;
    for (int round = 0; round < rounds && (round < enough || !isLate()); ++round) {
        const JournalPrinter printer(size);
        const auto faster = [](Outcome& kept, const Outcome& seen) {
            kept.seconds = std::min(kept.seconds, seen.seconds);
            kept.processorSeconds = std::min(kept.processorSeconds, seen.processorSeconds);
            kept.peakBytes = std::max(kept.peakBytes, seen.peakBytes);
        };
        faster(best.bare, inOwnProcess([&] { return fetchBare(printer.port(), size); }));
        faster(best.library,
               inOwnProcess([&] { return fetchWithLibrary(printer.address(), size, nullptr); }));
    }
    return best;
}

void compare(int rounds, std::size_t largest)
{
    std::printf("%12s %12s %12s %13s %18s %11s\n", "bytes", "library ns/B", "bare ns/B", "bare/library",
                "of processor time", "peak/reply");
    for (const std::size_t size : {64 * kilobyte, megabyte, 16 * megabyte, 64 * megabyte}) {
        if (size > largest) {
            break;
        }
        const Pair pair = measure(size, rounds);
        const auto bytes = static_cast<double>(size);
        constexpr double nanosecondsPerSecond = 1e9;
        std::printf(
            "%12zu %12.2f %12.2f %13.3f %18.3f %11.2f\n", size,
            pair.library.seconds * nanosecondsPerSecond / bytes,
            pair.bare.seconds * nanosecondsPerSecond / bytes, pair.bare.seconds / pair.library.seconds,
            pair.bare.processorSeconds / pair.library.processorSeconds, pair.library.peakBytes / bytes);
        std::fflush(stdout);
    }
}

// A journal one byte longer than a power of two has just made its string grow: no size costs more memory. The
// log line repeats the whole journal.
void measurePeaks(std::size_t size)
{
    std::string log = "/tmp/journal_throughput_XXXXXX";
    const int file = mkstemp(log.data());
    const JournalPrinter printer(size);
    for (const char* const path : {static_cast<const char*>(nullptr), log.c_str()}) {
        const Outcome outcome = inOwnProcess([&] { return fetchWithLibrary(printer.address(), size, path); });
        std::printf("%12zu bytes with the call log %s: peak/reply %.2f\n", size,
                    path == nullptr ? "off" : "on", outcome.peakBytes / static_cast<double>(size));
    }
    close(file);
    unlink(log.c_str());
}

} // namespace
} // namespace bench

int main(int count, char** arguments)
{
    using namespace bench;
    constexpr int usualRounds = 40; // of a megabyte the fastest one of seven still wavered by a twentieth
    constexpr std::size_t usualLargest = 64;
    const std::vector<std::string> given(arguments + 1, arguments + count);
    const int rounds = !given.empty() ? std::stoi(given[0]) : usualRounds;
    const std::size_t largest = (given.size() > 1 ? std::stoul(given[1]) : usualLargest) * megabyte;
    compare(rounds, largest);
    measurePeaks(largest + 1);
}
