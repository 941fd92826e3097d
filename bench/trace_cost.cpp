// What the trace and the disarmed faults add to a command: the cheapest one through a session without a
// socket, and the same exchanges through the recorder and past the faults alone.
//
//     trace_cost [COMMANDS]
#include "bench/sale_requests.h"
#include "virtual_printer/printers/new_printer.h"
#include "virtual_printer/printers/till_session.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <string>

namespace {

using namespace virtual_printer;
using Steady = std::chrono::steady_clock;

Station newStation()
{
    return {"printer", Printer(Memory(), readyToSell(), systemClock())};
}

template <typename Work>
double nanosecondsEach(int times, Work work)
{
    const std::clock_t start = std::clock(); // of the processor: what else runs does not matter
    for (int index = 0; index < times; ++index) {
        work();
    }
    return 1e9 * static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC / times;
}

} // namespace

int main(int count, char** arguments)
{
    constexpr int usual = 200'000;
    const int commands = count > 1 ? std::atoi(arguments[1]) : usual;
    const std::string cheapest = bench::request(0xE0, {}); // printJobCancel
    const Codes codes;

    Station whole = newStation();
    TillSession session(whole, CodePage::windows1250, codes);
    const double all = nanosecondsEach(commands, [&] {
        const auto now = Steady::now();
        for (const Step& step : session.take(cheapest, now)) {
            session.hasAcknowledged(std::get<Send>(step.action).acknowledges, now);
        }
        whole.printer.takeHappened();
    });

    Station traced = newStation();
    Recorder recorder(traced, CodePage::windows1250);
    const double trace = nanosecondsEach(commands, [&] {
        const auto now = Steady::now();
        Exchanged exchanged = recorder.begin(Exchanged::Kind::request, cheapest, now);
        const auto hits = traced.faults.meet({.command = 0xE0, .commandName = exchanged.name()});
        exchanged.isExecuted = hits.empty();
        recorder.hasAcknowledged(recorder.keep(std::move(exchanged), "\x06", now), now);
    });
    std::printf("a command without its socket %7.0f ns, trace and disarmed faults %5.0f ns of them\n", all,
                trace);
}
