// How close a serial reply comes to the rate of its line, and what waiting for it costs.
//
// A process of its own plays the printer on a pseudo-terminal: it releases the bytes of a reply of 64 KB as
// fast as 115200 baud would carry them (ten bits a byte), each block when the one before is acknowledged and
// the acknowledge byte has had its time on the line. Every millisecond it releases what is due, as a UART's
// queue does; with the argument `single` it keeps a core busy and releases each byte by itself. The line rate
// is that of all bytes of the reply; the time runs from the request's arrival at the printer to that of the
// last block's answer, so that the printer's own delays are in it too: a bare loop on the same line shows
// them. The processor time is that of the whole call in the reader's process. Of three runs of each reader,
// in turn, the fastest counts: whatever else the machine does only disturbs.
//
//     serial_throughput [single]
#include "bench/reply_block.h"
#include "telvofm.h"
#include "tests/wire/loopback.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <string>
#include <string_view>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace bench {
namespace {

using Clock = std::chrono::steady_clock;
using Seconds = std::chrono::duration<double>;
using namespace std::chrono_literals;

constexpr std::size_t replySize = std::size_t{64} * 1024;
constexpr std::size_t blockSize = 256;
constexpr double bitsPerByte = 10; // a start bit, eight data bits, a stop bit
constexpr unsigned int baud = 115200;
constexpr Seconds byteTime{bitsPerByte / baud};

// Releases each byte when the line, free from `start` on, would have carried it.
void releaseAtLineRate(wire::Connection& line, std::string_view bytes, Clock::time_point start, bool oneByOne)
{
    std::size_t released = 0;
    while (released < bytes.size()) {
        const auto due = static_cast<std::size_t>(std::max(Seconds(Clock::now() - start) / byteTime, 0.0));
        if (due > released) {
            const std::size_t count = oneByOne ? 1 : std::min(due, bytes.size()) - released;
            line.send(bytes.substr(released, count));
            released += count;
        } else if (!oneByOne) {
            const auto last = std::chrono::duration_cast<Clock::duration>(byteTime * bytes.size());
            std::this_thread::sleep_until(std::min(Clock::now() + 1ms, start + last));
        }
    }
}

// Serves one request; the seconds until the last answer.
double serve(wire::Connection& line, bool oneByOne)
{
    constexpr std::size_t requestSize = 5;
    for (std::size_t received = 0; received < requestSize;) {
        received += line.receive(requestSize - received, 60s).value_or("").size();
    }
    ::prctl(PR_SET_TIMERSLACK, 1UL); // our own sleeps must not be counted as the library's
    const auto start = Clock::now();
    auto lineIsFree = start;
    for (std::size_t left = replySize; left > 0; left -= blockSize) {
        releaseAtLineRate(line, replyBlock(blockSize, left == blockSize), lineIsFree, oneByOne);
        static_cast<void>(line.receive(1, 60s)); // the acknowledge byte
        lineIsFree = Clock::now() + std::chrono::duration_cast<Clock::duration>(byteTime);
    }
    return Seconds(Clock::now() - start).count();
}

double processorSeconds()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    const auto seconds = [](const timeval& time) {
        constexpr double microsecondsPerSecond = 1e6;
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / microsecondsPerSecond;
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

struct Outcome
{
    double replySeconds = 0;
    double callSeconds = 0;
    double processorSeconds = 0;
};

[[noreturn]] void stop(const char* reason)
{
    std::fprintf(stderr, "serial_throughput: %s\n", reason);
    std::exit(1);
}

// Runs `fetch` on the path of a terminal at whose other end a printer process paces the reply.
template <typename Fetch>
Outcome measure(bool oneByOne, Fetch fetch)
{
    std::string path;
    wire::Connection line = wire::openPseudoTerminal(path);
    std::array<int, 2> ends{};
    if (!line.isOpen() || ::pipe(ends.data()) != 0) {
        stop("no pseudo-terminal could be opened");
    }
    const int keptOpen = ::open(path.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    const pid_t printer = ::fork();
    if (printer == 0) {
        const double lasted = serve(line, oneByOne);
        ::_exit(::write(ends[1], &lasted, sizeof lasted) == sizeof lasted ? 0 : 1);
    }
    Outcome outcome;
    const double processorBefore = processorSeconds();
    const auto start = Clock::now();
    fetch(path);
    outcome.callSeconds = Seconds(Clock::now() - start).count();
    outcome.processorSeconds = processorSeconds() - processorBefore;
    if (::read(ends[0], &outcome.replySeconds, sizeof outcome.replySeconds) != sizeof outcome.replySeconds) {
        stop("the printer did not finish");
    }
    ::waitpid(printer, nullptr, 0);
    ::close(keptOpen);
    ::close(ends[0]);
    ::close(ends[1]);
    return outcome;
}

Outcome faster(const Outcome& one, const Outcome& other)
{
    return one.replySeconds < other.replySeconds ? one : other;
}

void fetchWithLibrary(const std::string& path)
{
    if (openFMBaud(("COM" + path).c_str(), baud) != 0) {
        stop("the line could not be opened");
    }
    ResultObject* const journal = createResultObject();
    if (getJournal_ResultObject(1, journal) != 0 ||
        static_cast<std::size_t>(getResultObjectLength(journal)) != replySize) {
        stop("the reply did not come");
    }
    destroyResultObject(journal);
    closeFM();
}

// Waits, reads what is there, and answers each block: the least that any reader does.
void fetchBare(const std::string& path)
{
    const int terminal = ::open(path.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    const auto send = [terminal](std::string_view bytes) {
        if (::write(terminal, bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size())) {
            stop("the bare loop could not write");
        }
    };
    send("\x1C\x01\x9F\x04\x86");
    std::array<char, 512> buffer{};
    for (std::size_t left = replySize; left > 0; left -= blockSize) {
        for (std::size_t missing = blockSize + 4; missing > 0;) {
            pollfd readable = {.fd = terminal, .events = POLLIN, .revents = 0};
            if (::poll(&readable, 1, 15000) != 1) {
                stop("the bare loop got no answer");
            }
            const auto received = ::read(terminal, buffer.data(), missing);
            if (received <= 0) {
                stop("the bare loop could not read");
            }
            missing -= static_cast<std::size_t>(received);
        }
        send(left > blockSize ? "\x06" : "\x03");
    }
    ::close(terminal);
}

void print(const char* reader, const Outcome& outcome)
{
    constexpr std::size_t blocks = replySize / blockSize;
    constexpr std::size_t bytesOnTheLine =
        replySize + blocks * 4 + (blocks - 1); // with the acknowledge bytes
    const double lineSeconds = Seconds(byteTime * bytesOnTheLine).count();
    constexpr double percent = 100;
    std::printf("%-12s %10.3f %10.3f %12.2f %14.2f\n", reader, lineSeconds, outcome.replySeconds,
                percent * lineSeconds / outcome.replySeconds,
                percent * outcome.processorSeconds / outcome.callSeconds);
    std::fflush(stdout);
}

int compare(bool oneByOne)
{
    setLogginOff();
    std::printf("64 KB at %u baud, %s\n", baud,
                oneByOne ? "each byte by itself" : "released every millisecond");
    std::printf("%-12s %10s %10s %12s %14s\n", "reader", "line s", "reply s", "line rate %", "of one core %");
    Outcome bare = measure(oneByOne, fetchBare);
    Outcome library = measure(oneByOne, fetchWithLibrary);
    constexpr int runs = 5; // a virtual machine whose host is busy for a minute spoils three
    for (int run = 1; run < runs; ++run) {
        bare = faster(bare, measure(oneByOne, fetchBare));
        library = faster(library, measure(oneByOne, fetchWithLibrary));
    }
    print("bare loop", bare);
    print("library", library);
    return 0;
}

} // namespace
} // namespace bench

int main(int count, char** arguments)
{
    return bench::compare(count > 1 && std::strcmp(arguments[1], "single") == 0);
}
