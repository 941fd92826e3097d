// Each allocation and each system call of each export fails once, over TCP and on a serial line, and a signal
// interrupts each that waits: some places of some exports, and with TELVOFM_WHOLE_TORTURE all of all.
#include "tests/system/serial_printer.h"
#include "tests/torture/tortured_link.h"
#include "tests/unit/own_folder.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <set>
#include <sstream>
#include <unistd.h>

namespace telvofm::test::torture {
namespace {

bool isWhole()
{
    return std::getenv("TELVOFM_WHOLE_TORTURE") != nullptr;
}

// "3/10": the third tenth of the calls, and the first has those that send nothing.
std::pair<std::size_t, std::size_t> chosenPart()
{
    const char* const chosen = std::getenv("TELVOFM_TORTURE_PART");
    std::pair<std::size_t, std::size_t> part(1, 1);
    if (chosen != nullptr) {
        std::istringstream text(chosen);
        text >> part.first;
        text.ignore() >> part.second;
    }
    return part;
}

// The library's lines would be half a million.
class WithoutStandardOutput
{
public:
    WithoutStandardOutput() : kept(::dup(STDOUT_FILENO))
    {
        std::fflush(stdout);
        const int nowhere = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
        ::dup2(nowhere, STDOUT_FILENO);
        ::close(nowhere);
    }
    WithoutStandardOutput(const WithoutStandardOutput&) = delete;
    WithoutStandardOutput& operator=(const WithoutStandardOutput&) = delete;
    ~WithoutStandardOutput()
    {
        std::fflush(stdout);
        ::dup2(kept, STDOUT_FILENO);
        ::close(kept);
    }

private:
    int kept;
};

struct Tortured
{
    Link link;
    Torment torment;
    std::size_t leastCases; // of all of all: a trap that loses places must not pass unseen
};

void tell(const TortureTotals& totals)
{
    std::printf("%zu cases of %zu, %zu violations; nothing can fail in %zu calls\n", totals.cases,
                totals.places, totals.violations.size(), totals.callsWithoutPlace);
    std::printf("verdicts:");
    for (const auto& [verdict, count] : totals.verdicts) {
        std::printf(" %s %zu;", verdict.c_str(), count);
    }
    std::printf(" standard output has noted %zu refused lines\n", totals.failedOutputs);
    for (const auto& [outcome, count] : totals.outcomes) {
        std::printf("    %-56s %6zu\n", outcome.c_str(), count);
    }
    constexpr std::size_t mostShown = 40;
    for (std::size_t index = 0; index < std::min(mostShown, totals.violations.size()); ++index) {
        ADD_FAILURE() << totals.violations[index];
    }
}

class Torture : public ::testing::TestWithParam<Tortured>
{
protected:
    Torture()
    {
        if (GetParam().link == Link::serial) {
            terminal = std::make_unique<SerialPrinter>(folder.file("lines"));
            ::unsetenv("MODEM_LINES"); // both are on then, and nothing else reads a file
            printer = std::make_unique<sweep::PrinterOnLink>(terminal->line());
        } else {
            printer = std::make_unique<sweep::PrinterOnLink>();
        }
    }

    // What the printer says can be read.
    void awaitAnswer()
    {
        printer->settle();
        if (terminal) {
            terminal->waitUntilDelivered(1);
        }
    }

    const OwnFolder folder;
    std::unique_ptr<SerialPrinter> terminal;
    std::unique_ptr<sweep::PrinterOnLink> printer;
};

TEST_P(Torture, EveryCallTellsTheTruthAndLeavesNothingBehind)
{
    const Link link = GetParam().link;
    const Torment torment = GetParam().torment;
    static const bool areTrapped = trapSystemCalls();
    ASSERT_TRUE(areTrapped) << "the kernel lets no system calls be trapped";
    sigset_t ofTheHost;
    ::sigemptyset(&ofTheHost);
    ::sigaddset(&ofTheHost, SIGUSR1);
    ::pthread_sigmask(SIG_BLOCK, &ofTheHost, nullptr);
    const std::string port = link == Link::serial ? terminal->name() : printer->address();
    const std::size_t everyPlace = isWhole() ? 1 : 7;
    const std::size_t everyCall = isWhole() ? 1 : 29;
    const auto [part, parts] = chosenPart();
    const auto isChosen = [&, part = part, parts = parts](std::size_t number) {
        return number % parts == part - 1;
    };
    const std::unique_ptr<TorturedLink> tortured = [&] {
        const WithoutStandardOutput quiet;
        auto made = std::make_unique<TorturedLink>(link, port, *printer, folder.path.string(), everyPlace);
        for (const bool withLogs : {false, true}) {
            for (const FreeCall& call : freeCalls(port, link, folder.path.string(), [&] { awaitAnswer(); })) {
                if (isChosen(0)) {
                    made->torture(call, torment, withLogs);
                }
            }
            // Others for each torment.
            for (auto index = isWhole() ? 0 : static_cast<std::size_t>(torment); index < made->calls().size();
                 index += everyCall) {
                if (isChosen(index)) {
                    made->torture(made->calls()[index], torment, withLogs);
                }
            }
        }
        return made;
    }();
    tell(tortured->totals());
    EXPECT_GE(tortured->totals().cases, isWhole() && parts == 1 ? GetParam().leastCases : 1);
}

// Nothing is left out.
TEST(TortureTables, HoldEveryExport)
{
    std::set<std::string_view> exports;
    for (const tools::Export& one : tools::exportTable()) {
        exports.insert(one.name);
    }
    for (const Link link : {Link::tcp, Link::serial}) {
        std::set<std::string_view> held;
        const auto calls = sweep::everyCall("");
        const auto others = freeCalls("", link, "", [] {});
        for (const SweptCall& call : calls) {
            held.insert(call.name);
        }
        for (const FreeCall& call : others) {
            held.insert(call.name);
        }
        EXPECT_EQ(held, exports);
    }
}

std::string nameOf(const Tortured& tortured)
{
    constexpr std::string_view torments[] = {"allocation", "error", "interrupted"};
    return std::string(tortured.link == Link::tcp ? "tcp_" : "serial_") +
           std::string(torments[static_cast<std::size_t>(tortured.torment)]);
}

INSTANTIATE_TEST_SUITE_P(Links, Torture,
                         ::testing::Values(Tortured{Link::tcp, Torment::allocation, 1'300},
                                           Tortured{Link::tcp, Torment::error, 5'000},
                                           Tortured{Link::tcp, Torment::interrupted, 2'000},
                                           Tortured{Link::serial, Torment::allocation, 950},
                                           Tortured{Link::serial, Torment::error, 45'000},
                                           Tortured{Link::serial, Torment::interrupted, 16'000}),
                         [](const auto& instance) { return nameOf(instance.param); });

} // namespace
} // namespace telvofm::test::torture
