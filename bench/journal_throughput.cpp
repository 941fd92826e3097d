// How fast a journal comes in, and how much memory that takes.
//
// The library fetches a journal from a printer of a few lines at the other end of a loopback connection.
// Beside it a bare loop makes the same system calls on the same bytes and does nothing else: what the library
// adds shows as the ratio of the two. Both fetch at once, each in its turn, and the printer measures their
// turns: two journals one after the other say more of the machine than of the library. Library, loop and
// printer are processes of their own, the first two pinned to one core and the printer to the other; every
// measurement is a fresh process, so that its peak of memory is its own. The call log is off but for one row.
//
//     journal_throughput [ROUNDS [LARGEST-SIZE-IN-MEGABYTES]]
#include "bench/in_turn.h"
#include "bench/journal_printer.h"
#include "bench/own_process.h"
#include "telvofm.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <iterator>
#include <poll.h>
#include <string>
#include <sys/socket.h>
#include <unistd.h>
#include <vector>

namespace bench {
namespace {

constexpr std::size_t kilobyte = 1024;
constexpr std::size_t megabyte = kilobyte * kilobyte;

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
Outcome fetchBare(int socket, std::size_t size)
{
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
    return meter.outcome();
}

struct Round
{
    double library = 0; // in seconds
    double bare = 0;
    Outcome ofLibrary;
    Outcome ofBare;
};

Round fetchBoth(JournalPrinter& printer, std::size_t size)
{
    const int socket = connectTo(printer.port()); // first in the line
    OwnProcess bare([&] { return fetchBare(socket, size); });
    OwnProcess library([&] { return fetchWithLibrary(printer.address(), size, nullptr); });
    const std::vector<double> seconds = printer.seconds();
    close(socket);
    return {
        .library = seconds[1], .bare = seconds[0], .ofLibrary = library.outcome(), .ofBare = bare.outcome()};
}

// After two minutes three are enough.
std::vector<Round> fetchInRounds(std::size_t size, int rounds)
{
    constexpr int enough = 3;
    const auto end = std::chrono::steady_clock::now() + std::chrono::minutes(2);
    JournalPrinter printer(size, 2);
    std::vector<Round> all;
    for (int round = 0; round < rounds && (round < enough || std::chrono::steady_clock::now() < end);
         ++round) {
        all.push_back(fetchBoth(printer, size));
    }
    return all;
}

template <typename Figure>
double medianOf(const std::vector<Round>& rounds, Figure figure)
{
    std::vector<double> figures;
    std::ranges::transform(rounds, std::back_inserter(figures), figure);
    return median(std::move(figures));
}

void compare(int rounds, std::size_t largest)
{
    std::printf("%12s %12s %12s %13s %18s %11s\n", "bytes", "library ns/B", "bare ns/B", "bare/library",
                "of processor time", "peak/reply");
    for (const std::size_t size : {64 * kilobyte, megabyte, 16 * megabyte, 64 * megabyte}) {
        if (size > largest) {
            break;
        }
        const std::vector<Round> all = fetchInRounds(size, rounds);
        const auto bytes = static_cast<double>(size);
        constexpr double nanosecondsPerSecond = 1e9;
        std::printf("%12zu %12.2f %12.2f %13.3f %18.3f %11.2f\n", size,
                    medianOf(all, &Round::library) * nanosecondsPerSecond / bytes,
                    medianOf(all, &Round::bare) * nanosecondsPerSecond / bytes,
                    medianOf(all, [](const Round& round) { return round.bare / round.library; }),
                    medianOf(all,
                             [](const Round& round) {
                                 return round.ofBare.processorSeconds / round.ofLibrary.processorSeconds;
                             }),
                    medianOf(all, [](const Round& round) { return round.ofLibrary.peakBytes; }) / bytes);
        std::fflush(stdout);
    }
}

// A journal one byte longer than a power of two has just made its string grow: no size costs more memory. The
// log line repeats the whole journal.
void measurePeaks(std::size_t size)
{
    std::string log = "/tmp/journal_throughput_XXXXXX";
    const int file = mkstemp(log.data());
    const JournalPrinter printer(size, 1);
    for (const char* const path : {static_cast<const char*>(nullptr), log.c_str()}) {
        const Outcome outcome =
            OwnProcess([&] { return fetchWithLibrary(printer.address(), size, path); }).outcome();
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
    constexpr int usualRounds = 40;
    constexpr std::size_t usualLargest = 64;
    const std::vector<std::string> given(arguments + 1, arguments + count);
    const int rounds = !given.empty() ? std::stoi(given[0]) : usualRounds;
    const std::size_t largest = (given.size() > 1 ? std::stoul(given[1]) : usualLargest) * megabyte;
    compare(rounds, largest);
    measurePeaks(largest + 1);
}
