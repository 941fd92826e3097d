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
#include <unistd.h>

namespace telvofm::test::torture {
namespace {

bool isWhole()
{
    return std::getenv("TELVOFM_WHOLE_TORTURE") != nullptr;
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
};

constexpr int noSession = -1;
constexpr int transportFailure = -10201;

std::vector<FreeCall> freeCalls(const std::string& port, Link link, const std::string& folder)
{
    const auto nothing = [] {};
    const std::string picture = folder + "/picture.bmp";
    const std::string log = folder + "/other.log";
    std::vector<FreeCall> calls = {
        {"openFM", true, nothing, [=] { return openFM(port.c_str()); }, {0, noSession}, 0},
        {"closeFM", false, nothing, [] { return closeFM(), 0; }, {0}, 0},
        {"prepareGraphicHeader",
         false,
         nothing,
         [=] { return prepareGraphicHeader(5, picture.c_str()); },
         {0, transportFailure},
         0},
        {"prepareGraphicHeader_inverse",
         false,
         nothing,
         [=] { return prepareGraphicHeader_inverse(5, picture.c_str(), 1); },
         {0, transportFailure},
         0},
        {"setLogginOn", false, nothing, [=] { return setLogginOn(log.c_str()), 0; }, {0}, 0},
        {"setRawLogginOn", false, nothing, [=] { return setRawLogginOn(log.c_str()), 0; }, {0}, 0},
        {"rawWrite",
         false,
         nothing,
         [] { return static_cast<int>(rawWrite(reinterpret_cast<const unsigned char*>("x"), 1)); },
         {1, noSession},
         1},
        {"createResultObject",
         false,
         nothing,
         [] {
             ResultObject* const object = createResultObject();
             destroyResultObject(object);
             return object == nullptr ? 1 : 0;
         },
         {0, 1},
         0},
    };
    if (link == Link::serial) {
        calls.push_back({"openFMBaud",
                         true,
                         nothing,
                         [=] { return openFMBaud(port.c_str(), 115200); },
                         {0, noSession},
                         0});
        calls.push_back({"openFMStopBit",
                         true,
                         nothing,
                         [=] { return openFMStopBit(port.c_str(), 2); },
                         {0, noSession},
                         0});
    }
    return calls;
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
    const std::unique_ptr<TorturedLink> tortured = [&] {
        const WithoutStandardOutput quiet;
        auto made = std::make_unique<TorturedLink>(link, port, *printer, folder.path.string(), everyPlace);
        for (const FreeCall& call : freeCalls(port, link, folder.path.string())) {
            made->torture(call, torment);
        }
        // Others for each torment.
        for (auto index = isWhole() ? 0 : static_cast<std::size_t>(torment); index < made->calls().size();
             index += everyCall) {
            made->torture(made->calls()[index], torment, false);
            made->torture(made->calls()[index], torment, true);
        }
        return made;
    }();
    const TortureTotals& totals = tortured->totals();
    std::printf("%zu cases of %zu, %zu violations\n", totals.cases, totals.places, totals.violations.size());
    for (const auto& [outcome, count] : totals.outcomes) {
        std::printf("    %-44s %6zu\n", outcome.c_str(), count);
    }
    constexpr std::size_t mostShown = 40;
    for (std::size_t index = 0; index < std::min(mostShown, totals.violations.size()); ++index) {
        ADD_FAILURE() << totals.violations[index];
    }
    EXPECT_GT(totals.cases, 0U);
}

std::string nameOf(const Tortured& tortured)
{
    constexpr std::string_view torments[] = {"allocation", "error", "interrupted"};
    return std::string(tortured.link == Link::tcp ? "tcp_" : "serial_") +
           std::string(torments[static_cast<std::size_t>(tortured.torment)]);
}

INSTANTIATE_TEST_SUITE_P(
    Links, Torture,
    ::testing::Values(Tortured{Link::tcp, Torment::allocation}, Tortured{Link::tcp, Torment::error},
                      Tortured{Link::tcp, Torment::interrupted}, Tortured{Link::serial, Torment::allocation},
                      Tortured{Link::serial, Torment::error}, Tortured{Link::serial, Torment::interrupted}),
    [](const auto& instance) { return nameOf(instance.param); });

} // namespace
} // namespace telvofm::test::torture
