// The exports that send no command.
#include "tests/torture/time_limit.h"
#include "tests/torture/tortured_link.h"
#include "tests/unit/limited_memory.h"

#include <algorithm>
#include <new>
#include <stdexcept>

namespace telvofm::test::torture {

// Waits for so many: nothing has shown yet that the printer has accepted the connection. A session that ended
// before would be heard in the next one.
std::size_t TorturedLink::timesHeard(const FreeCall& call, std::size_t wanted)
{
    constexpr int patience = 1000;
    printer.settle();
    for (int looks = 0; printer.endCall().heard.size() < wanted && looks < patience; ++looks) {
        printer.settle();
    }
    const auto heard = printer.endCall().heard;
    return static_cast<std::size_t>(std::count_if(heard.begin(), heard.end(), [&](const auto& request) {
        return request.bytes == call.sends && !request.refusal;
    }));
}

Places TorturedLink::rehearse(const FreeCall& call)
{
    Watching watching;
    renewPrinter();
    if (!call.opensItself) {
        open(false);
    }
    call.before();
    switchLogs(logsAreOn);
    printer.beginCall();
    watching.begin();
    const int result = call.call();
    watching.end();
    if (!call.sends.empty()) {
        timesHeard(call, 1);
    }
    switchLogs(false);
    closeFM();
    if (result != call.undisturbed) {
        throw std::runtime_error(call.name + " returns " + std::to_string(result) + " without a failure");
    }
    return Places(watching);
}

void TorturedLink::torture(const FreeCall& call, Torment torment, bool withLogs)
{
    logsAreOn = withLogs;
    const Places places = rehearse(call);
    tryEach(call.name + (withLogs ? " with logs" : ""), places, torment, [&](Case& one) { run(call, one); });
}

void TorturedLink::run(const FreeCall& call, Case& one)
{
    constexpr std::size_t enough = 200;
    for (std::string* const text : {&one.outcome, &one.verdict, &one.nextCall}) {
        text->reserve(enough); // nothing of ours may look like a leak
    }
    renewPrinter();
    const long piecesBefore = printer.whileStill(piecesHeld);
    if (!call.opensItself) {
        open(false);
    }
    call.before();
    switchLogs(logsAreOn);
    judgeFreeCall(call, one);
    switchLogs(false);
    closeFM();
    renewPrinter();
    expectNothingLeft(one, piecesBefore);
}

void TorturedLink::judgeFreeCall(const FreeCall& call, Case& one)
{
    Tormenting tormenting(one.torment, one.index);
    int result = 0;
    bool hasThrown = false;
    printer.beginCall();
    {
        const TimeLimit limit(one.what);
        tormenting.begin();
        try {
            result = call.call();
        } catch (const std::bad_alloc&) {
            hasThrown = true;
        }
        tormenting.end();
    }
    judgeHost(one, tormenting);
    const std::string ending = hasThrown ? "thrown" : std::to_string(result);
    const bool asUsual = !hasThrown && result == call.undisturbed;
    const bool mayThrow = call.mayThrow && one.places->asksForMemory(one.torment, one.index);
    one.outcome = call.name + ", " + ending;
    one.verdict = hasThrown ? "thrown before anything was sent" : asUsual ? "success" : "failure";
    if (hasThrown ? !mayThrow : !call.results.contains(result)) {
        report(one, "it ended with " + ending);
    }
    const bool mustSucceed = one.torment == Torment::interrupted ||
                             one.places->isOfLog(one.torment, one.index) ||
                             one.places->isOfStandardOutput(one.torment, one.index);
    if (!asUsual && mustSucceed) {
        report(one, "it must change nothing, and it ended with " + ending);
    }
    if (!call.sends.empty()) {
        const std::size_t times = timesHeard(call, asUsual ? 1 : 0);
        if (asUsual && times != 1) {
            report(one, "it says that it has written what the printer has heard " + std::to_string(times) +
                            " times");
        }
    }
    if (call.name.starts_with("openFM") && result == 0 && !hasThrown) {
        judgeTheNextCall(one, false);
    }
}

} // namespace telvofm::test::torture
