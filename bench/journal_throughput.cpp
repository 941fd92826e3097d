// How fast a journal comes in, and how much memory that takes.
//
// The library fetches a journal from a printer of a few lines at the other end of a loopback connection.
// Beside it a bare loop makes the same system calls on the same bytes and puts what comes into a string, as
// who wants a journal has to; a second one throws the bytes away, so that it does nothing but the calls. What
// the library adds shows as the ratios. All fetch at once, each in its turn, and the printer measures their
// turns: journals one after the other say more of the machine than of the library. Library, loops and printer
// are processes of their own, the printer pinned to one core and the others to the other one; every
// measurement is a fresh process, so that its peak of memory is its own. The call log is off but for one row.
//
//     journal_throughput [ROUNDS [LARGEST-SIZE-IN-MEGABYTES]]
#include "bench/bare_journal.h"
#include "bench/in_turn.h"
#include "bench/journal_printer.h"
#include "bench/own_process.h"
#include "telvofm.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <iterator>
#include <string>
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

struct Round
{
    double library = 0; // in seconds
    double keeping = 0;
    double throwing = 0;
    Outcome ofLibrary;
    Outcome ofKeeping;
};

Round fetchAll(JournalPrinter& printer, std::size_t size)
{
    const int first = connectTo(printer.port()); // their places in the line
    const int second = connectTo(printer.port());
    OwnProcess throwing([&] { return fetchAndThrowAway(first, size); });
    OwnProcess keeping([&] { return fetchAndKeep(second, size); });
    OwnProcess library([&] { return fetchWithLibrary(printer.address(), size, nullptr); });
    const std::vector<double> seconds = printer.seconds();
    close(first);
    close(second);
    throwing.outcome();
    return {.library = seconds[2],
            .keeping = seconds[1],
            .throwing = seconds[0],
            .ofLibrary = library.outcome(),
            .ofKeeping = keeping.outcome()};
}

// After two minutes three are enough.
std::vector<Round> fetchInRounds(std::size_t size, int rounds)
{
    constexpr int enough = 3;
    const auto end = std::chrono::steady_clock::now() + std::chrono::minutes(2);
    JournalPrinter printer(size, 3);
    std::vector<Round> all;
    for (int round = 0; round < rounds && (round < enough || std::chrono::steady_clock::now() < end);
         ++round) {
        all.push_back(fetchAll(printer, size));
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
    std::printf("%12s %12s %12s %12s %14s %15s %18s %11s\n", "bytes", "library ns/B", "keeping ns/B",
                "thrown ns/B", "kept/library", "thrown/library", "of processor time", "peak/reply");
    for (const std::size_t size : {64 * kilobyte, megabyte, 16 * megabyte, 64 * megabyte}) {
        if (size > largest) {
            break;
        }
        const std::vector<Round> all = fetchInRounds(size, rounds);
        const auto nanosecondsOfAByte = [&](double Round::*side) {
            constexpr double nanosecondsPerSecond = 1e9;
            return medianOf(all, side) * nanosecondsPerSecond / static_cast<double>(size);
        };
        std::printf("%12zu %12.2f %12.2f %12.2f %14.3f %15.3f %18.3f %11.2f\n", size,
                    nanosecondsOfAByte(&Round::library), nanosecondsOfAByte(&Round::keeping),
                    nanosecondsOfAByte(&Round::throwing),
                    medianOf(all, [](const Round& round) { return round.keeping / round.library; }),
                    medianOf(all, [](const Round& round) { return round.throwing / round.library; }),
                    medianOf(all,
                             [](const Round& round) {
                                 return round.ofKeeping.processorSeconds / round.ofLibrary.processorSeconds;
                             }),
                    medianOf(all, [](const Round& round) { return round.ofLibrary.peakBytes; }) /
                        static_cast<double>(size));
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
