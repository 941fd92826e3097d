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
        auto* send = std::get_if<Send>(&step.action);
        if (send != nullptr && send->isAnswer && sent < size) {
            sent += send->bytes.size();
            send->acknowledges = sent < size ? 0 : exchange;
        }
    }
}

std::string whyNotCarriedOut(const Circumstances& around)
{
    return around.isRefused ? "the printer refused the request"
           : around.isAsked ? "the request was not carried out"
                            : "another fault kept the request from the printer";
}

bool endsLink(const Faults::Hit& hit)
{
    return hit.fault.kind == FaultKind::connectionClosed || hit.fault.kind == FaultKind::connectionReset ||
           hit.fault.kind == FaultKind::halfOpen;
}

// What becomes of the request, and not of its answer.
bool isOfRequest(FaultKind kind)
{
    return kind == FaultKind::refuse || kind == FaultKind::requestLost || kind == FaultKind::silence ||
           kind == FaultKind::acknowledgedNotExecuted || kind == FaultKind::diskFull ||
           kind == FaultKind::paperOut;
}

// What has been done once is not done again.
bool happensOnce(FaultKind kind)
{
    return isOfRequest(kind) || kind == FaultKind::executedNotAcknowledged;
}

// What a fault could not do because of what has become of the request; empty when it could.
std::string hindered(const Hits& hits, const Faults::Hit& hit, const Circumstances& around)
{
    if (happensOnce(hit.fault.kind) && find(hits, hit.fault.kind) != &hit) {
        return "another fault came before it";
    }
    if (endsLink(hit) && &*std::find_if(hits.begin(), hits.end(), endsLink) != &hit) {
        return "another fault has ended the link";
    }
    switch (hit.fault.kind) {
    case FaultKind::refuse:
        return losesRequest(hits) ? "another fault came before it" : "";
    case FaultKind::executedNotAcknowledged:
        return around.isExecuted ? "" : whyNotCarriedOut(around);
    case FaultKind::acknowledgedNotExecuted:
        return around.isExecuted                     ? "nothing is carried out upon a question"
               : around.isRefused || !around.isAsked ? whyNotCarriedOut(around)
                                                     : "";
    case FaultKind::diskFull:
        return around.diskWasFull  ? ""
               : around.isExecuted ? "nothing was to be written"
                                   : whyNotCarriedOut(around);
    case FaultKind::paperOut:
        return around.isAsked ? "" : whyNotCarriedOut(around);
    default:
        return "";
    }
}

// Whether it is done to an answer that leaves the printer.
bool needsAnswer(FaultKind kind)
{
    return damagesAnswer(kind) || kind == FaultKind::acknowledgeLate || kind == FaultKind::acknowledgeTwice ||
           kind == FaultKind::slow || kind == FaultKind::split;
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

Disturbed disturbed(std::string answer, std::uint64_t exchange, const Hits& hits, const Circumstances& around)
{
    const std::string whole = answer;
    const Faults::Hit* power = find(hits, FaultKind::powerLoss);
    Disturbed all;
    for (const Faults::Hit& hit : hits) {
        const bool isPowerless = power != nullptr && power != &hit && !isOfRequest(hit.fault.kind);
        std::string why = isPowerless ? "the power was lost" : hindered(hits, hit, around);
        all.idle.push_back(why.empty() ? damage(answer, hit.fault, around.answerBefore) : std::move(why));
    }
    all.steps = {{milliseconds(0), Send{std::move(answer)}}};
    for (const bool isBehindAnswer : {false, true}) { // which is what the others have made of it by then
        for (std::size_t index = 0; index < hits.size(); ++index) {
            const bool isItsTurn = (hits[index].fault.at == FaultMoment::afterwards) == isBehindAnswer;
            if (isItsTurn && all.idle[index].empty()) {
                all.idle[index] = deliver(all.steps, hits[index], around.isSerial);
            }
        }
    }
    std::erase_if(all.steps, [](const Step& step) {
        const auto* send = std::get_if<Send>(&step.action);
        return send != nullptr && send->bytes.empty();
    });
    std::stable_sort(all.steps.begin(), all.steps.end(),
                     [](const Step& a, const Step& b) { return a.after < b.after; });
    const std::string sent = answerOf(all.steps);
    for (std::size_t index = 0; index < hits.size(); ++index) {
        const FaultKind kind = hits[index].fault.kind;
        if (all.idle[index].empty() && sent.empty() && needsAnswer(kind) && kind != FaultKind::cut) {
            all.idle[index] = "no answer has left the printer";
        }
    }
    if (!whole.empty() && sent.starts_with(whole)) {
        acknowledge(all.steps, exchange, whole.size());
    }
    return all;
}

Hits doneOf(const Hits& hits, const Disturbed& all)
{
    Hits done;
    for (std::size_t index = 0; index < hits.size(); ++index) {
        if (all.idle[index].empty()) {
            done.push_back(hits[index]);
        }
    }
    return done;
}

std::vector<std::string> deedsOf(const Hits& hits, const Disturbed& all)
{
    std::vector<std::string> deeds;
    for (std::size_t index = 0; index < hits.size(); ++index) {
        const FaultRule& rule = ruleOf(hits[index].fault.kind);
        deeds.push_back(all.idle[index].empty()
                            ? std::string(rule.deed)
                            : std::string(rule.name) + " did nothing: " + all.idle[index]);
    }
    return deeds;
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
