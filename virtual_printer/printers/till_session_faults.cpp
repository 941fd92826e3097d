// The session where faults come in: between exchange, decision, commit and answer, and as a call, a
// connection or the printer's power ends.
#include "virtual_printer/faults/delivery.h"
#include "virtual_printer/printers/till_session.h"

#include <algorithm>

namespace virtual_printer {

// `rule` is null where there is none. A question is answered in any case: nothing is carried out upon it.
Hindrance TillSession::hindranceOf(const Hits& hits, const CommandRule* rule)
{
    const bool isQuestion = rule != nullptr && rule->wants == Wants::reply;
    return {.diskIsFull = has(hits, FaultKind::diskFull),
            .paperIsOut = has(hits, FaultKind::paperOut),
            .doesNothing = !isQuestion && has(hits, FaultKind::acknowledgedNotExecuted)};
}

Steps TillSession::greet()
{
    const Hits hits = station.faults.meet({.kind = Occasion::Kind::connection});
    const Disturbed all = disturbed("", 0, hits, {.isSerial = isSerial()});
    tellDone(doneOf(hits, all), 0);
    return all.steps;
}

// What it had begun and had still to say is gone.
Steps TillSession::switchOff(std::uint64_t fault, std::chrono::milliseconds duration, Time now)
{
    exchange = Exchange();
    heard.clear();
    lasting.switchOff(fault, duration, now);
    return withoutPower(fault, duration);
}

void TillSession::hasAcknowledged(std::uint64_t number, Time now)
{
    recorder.hasAcknowledged(number, now);
    endCalls();
}

void TillSession::hasEnded(std::uint64_t number)
{
    recorder.hasEnded(number);
    endCalls();
}

void TillSession::hasLost(const Step& step)
{
    const auto* send = std::get_if<Send>(&step.action);
    const std::uint64_t acknowledged = send == nullptr ? 0 : send->acknowledges;
    if (const std::uint64_t number = std::max(acknowledged, step.ends); number != 0) {
        recorder.hasBeenSilenced(number);
        endCalls();
    }
}

void TillSession::hasGone()
{
    recorder.hasGone();
    station.faults.endCalls(false);
}

void TillSession::endCalls()
{
    if (!station.faults.list().empty() && recorder.isCallOver()) {
        station.faults.endCalls(station.printer.expectsBlocks());
    }
}

// What the printer decides and keeps where faults hit the request.
Answer TillSession::ask(const Request& request, const Hits& hits, const CommandRule* rule)
{
    if (losesRequest(hits)) {
        Answer nothing{.isLost = true};
        for (const std::string& field : request.fields) {
            nothing.fields.push_back(toUtf8(field, codePage));
        }
        return nothing;
    }
    if (const auto* hit = find(hits, FaultKind::refuse)) {
        return {.refusesWith = hit->fault.code};
    }
    return station.printer.execute(request, codePage, hindranceOf(hits, rule));
}

void TillSession::disturb(Exchanged exchanged, const std::string& whole, const Hits& hits, bool isAsked,
                          Time now)
{
    Disturbed all = disturbed(whole, station.trace.end(), hits,
                              {.isSerial = isSerial(),
                               .answerBefore = answerBefore,
                               .isAsked = isAsked,
                               .isRefused = isAsked && exchanged.refusal != Refusal::none,
                               .isExecuted = exchanged.isExecuted,
                               .diskWasFull = exchanged.refusal == Refusal::diskFull});
    exchanged.faults = deedsOf(hits, all);
    std::string said;
    for (const Step& step : all.steps) {
        if (const auto* send = std::get_if<Send>(&step.action)) {
            said += send->bytes;
        }
    }
    const std::uint64_t number = recorder.keep(std::move(exchanged), said, now);
    station.printer.wasExchange(number);
    const Hits done = doneOf(hits, all);
    tellDone(done, number);
    lasting.goOnWith(done, now);
    if (has(done, FaultKind::powerLoss)) {
        station.printer.restart();
        exchange = Exchange();
    }
    letEnd(number, all.steps);
    endCalls();
    steps.insert(steps.end(), all.steps.begin(), all.steps.end());
}

void TillSession::tellDone(const Hits& done, std::uint64_t exchangeHit)
{
    for (const Faults::Hit& hit : done) {
        station.faults.hasDone(hit.number, exchangeHit);
    }
}

// What is not answered whole is over with the last thing that is done upon it, but for a reply: the till may
// want its damaged block again.
void TillSession::letEnd(std::uint64_t number, Steps& all)
{
    const auto sends = [](const Step& step) { return std::holds_alternative<Send>(step.action); };
    const auto answers = [number](const Step& step) {
        const auto* send = std::get_if<Send>(&step.action);
        return send != nullptr && send->acknowledges == number;
    };
    const bool replyGoesOn = !exchange.isBetween() && std::any_of(all.begin(), all.end(), sends);
    if (replyGoesOn || std::any_of(all.begin(), all.end(), answers)) {
        return;
    }
    if (all.empty()) {
        recorder.hasEnded(number);
    } else {
        all.back().ends = number;
    }
}

} // namespace virtual_printer
