#include "virtual_printer/faults/disturb.h"

#include "virtual_printer/faults/damage.h"
#include "virtual_printer/faults/delivery.h"

#include <algorithm>
#include <utility>

namespace virtual_printer {
namespace {

using std::chrono::milliseconds;

// With so many bytes the till has the answer.
void acknowledge(Steps& steps, std::uint64_t exchange, std::size_t size)
{
    std::size_t sent = 0;
    for (Step& step : steps) {
        if (auto* send = std::get_if<Send>(&step.action); send != nullptr && sent < size) {
            sent += send->bytes.size();
            send->acknowledges = sent < size ? 0 : exchange;
        }
    }
}

} // namespace

const Faults::Hit* find(const Hits& hits, FaultKind kind)
{
    const auto found = std::find_if(hits.begin(), hits.end(),
                                    [kind](const Faults::Hit& hit) { return hit.fault.kind == kind; });
    return found == hits.end() ? nullptr : &*found;
}

bool has(const Hits& hits, FaultKind kind)
{
    return find(hits, kind) != nullptr;
}

bool losesRequest(const Hits& hits)
{
    return has(hits, FaultKind::requestLost) || has(hits, FaultKind::silence) ||
           std::any_of(hits.begin(), hits.end(),
                       [](const Faults::Hit& hit) { return hit.fault.at == FaultMoment::request; });
}

Hits withMoreBlocks(const Hits& hits, int blocks)
{
    Hits rest;
    std::copy_if(hits.begin(), hits.end(), std::back_inserter(rest), [blocks](const Faults::Hit& hit) {
        return (ruleOf(hit.fault.kind).parameters & takesBlocks) != 0 && hit.fault.blocks > blocks;
    });
    return rest;
}

Steps disturbed(std::string answer, std::uint64_t exchange, const Hits& hits, const Circumstances& around)
{
    const std::string whole = answer;
    Steps steps = {{milliseconds(0), Send{damaged(std::move(answer), hits, around.answerBefore)}}};
    for (const Faults::Hit& hit : hits) {
        deliver(steps, hit, around.isSerial);
    }
    std::erase_if(steps, [](const Step& step) {
        const auto* send = std::get_if<Send>(&step.action);
        return send != nullptr && send->bytes.empty();
    });
    std::stable_sort(steps.begin(), steps.end(),
                     [](const Step& a, const Step& b) { return a.after < b.after; });
    const std::string all = allBytesOf(steps);
    if (!whole.empty() && all.starts_with(whole)) {
        acknowledge(steps, exchange, whole.size());
    } else if (!whole.empty() && all.starts_with(busyByte + whole)) {
        acknowledge(steps, exchange, 1 + whole.size());
    }
    return steps;
}

ProbesMeanwhile probesDuring(const Hits& hits)
{
    ProbesMeanwhile meanwhile;
    for (const Faults::Hit& hit : hits) {
        const Fault& fault = hit.fault;
        switch (fault.kind) {
        case FaultKind::silence:
            meanwhile = {Probes::ignored, untilDisarmed};
            break;
        case FaultKind::requestLost:
        case FaultKind::acknowledgeLost:
            meanwhile = {fault.probes.value_or(Probes::ready), untilDisarmed};
            break;
        case FaultKind::acknowledgeLate:
            meanwhile = {fault.probes.value_or(Probes::ignored), *fault.duration};
            break;
        case FaultKind::busy:
            // One after the other, as the answer waits for them.
            meanwhile = {Probes::busy,
                         (meanwhile.answer == Probes::busy ? meanwhile.duration : milliseconds(0)) +
                             fault.duration.value_or(untilDisarmed)};
            break;
        default:
            break;
        }
    }
    return meanwhile;
}

} // namespace virtual_printer
