#include "virtual_printer/printers/till_session.h"

#include <algorithm>
#include <utility>

namespace virtual_printer {
namespace {

using Kind = Exchanged::Kind;

template <typename... Cases>
struct Overloaded : Cases...
{
    using Cases::operator()...;
};
template <typename... Cases>
Overloaded(Cases...) -> Overloaded<Cases...>;

// The request never reaches the printer's mind.
bool losesRequest(const Hits& hits)
{
    return has(hits, FaultKind::requestLost) || has(hits, FaultKind::silence) ||
           std::any_of(hits.begin(), hits.end(),
                       [](const Faults::Hit& hit) { return hit.fault.at == FaultMoment::request; });
}

// Of the faults that damage blocks, those that are not done with so many of them.
Hits withMoreBlocks(const Hits& hits, int blocks)
{
    Hits rest;
    std::copy_if(hits.begin(), hits.end(), std::back_inserter(rest), [blocks](const Faults::Hit& hit) {
        return (ruleOf(hit.fault.kind).parameters & takesBlocks) != 0 && hit.fault.blocks > blocks;
    });
    return rest;
}

} // namespace

Steps TillSession::greet()
{
    const Hits hits = station.faults.meet({.kind = Occasion::Kind::connection});
    return hits.empty() ? Steps() : disturbed("", 0, hits, {.isSerial = isSerial()});
}

Steps TillSession::take(std::string_view bytes, Time now)
{
    constexpr std::chrono::seconds longestPause{5};
    if (now < deafUntil) {
        return {};
    }
    if (now - lastByte > longestPause) {
        exchange.forgetUnfinished();
        heard.clear();
    }
    lastByte = now;
    steps.clear();
    for (const char byte : bytes) {
        heard += byte;
        const Incoming incoming = exchange.take(static_cast<unsigned char>(byte));
        if (!std::holds_alternative<Nothing>(incoming)) {
            answer(incoming, now);
            heard.clear();
        } else if (exchange.isBetween()) {
            heard.clear(); // noise
        }
    }
    return std::exchange(steps, {});
}

void TillSession::answer(const Incoming& incoming, Time now)
{
    std::visit(Overloaded{[](const Nothing&) {}, [&](const Probe&) { answerProbe(now); },
                          [&](const MoreOfReply& more) { goOn(more.bytes); },
                          [&](const DamagedRequest&) {
                              settle(recorder.begin(Kind::damagedRequest, heard, now),
                                     {.refusal = Refusal::wrongChecksum}, {}, now);
                          },
                          [&](const DamagedBlock&) {
                              settle(recorder.begin(Kind::damagedBlock, heard, now),
                                     {.refusal = Refusal::wrongChecksum}, {}, now);
                          },
                          [&](const Request& request) { execute(request, now); },
                          [&](const Block& block) {
                              settle(recorder.begin(Kind::block, heard, now),
                                     station.printer.takeBlock(block.data, block.isLast, codePage), {}, now);
                          }},
               incoming);
}

Probes TillSession::answerToProbes(Time now) const
{
    const bool isOver = now - meanwhileSince >= meanwhile.duration ||
                        (meanwhile.whileArmed != 0 && !station.faults.isArmed(meanwhile.whileArmed));
    return isOver ? Probes::ready : meanwhile.answer;
}

void TillSession::answerProbe(Time now)
{
    const Probes state = answerToProbes(now);
    const std::string bytes = state == Probes::ignored ? ""
                              : state == Probes::busy  ? Exchange::business()
                                                       : Exchange::readiness();
    Exchanged exchanged = recorder.begin(Kind::probe, heard, now);
    exchanged.moment = station.printer.now();
    const std::uint64_t number = recorder.keep(std::move(exchanged), bytes, now);
    if (!bytes.empty()) {
        steps.push_back({std::chrono::milliseconds(0), Send{bytes, number}});
    }
}

void TillSession::goOn(const std::string& more)
{
    const Hits hits = more.empty() ? Hits() : withMoreBlocks(hitsOfReply, blocksSent++);
    std::string bytes = hits.empty() ? more : damaged(more, hits, {.isSerial = isSerial()});
    recorder.goOn(heard, bytes);
    if (!bytes.empty()) {
        steps.push_back({std::chrono::milliseconds(0), Send{std::move(bytes)}});
    }
}

void TillSession::execute(const Request& request, Time now)
{
    Exchanged exchanged = recorder.begin(Kind::request, heard, now);
    exchanged.address = request.address;
    exchanged.command = request.command;
    if (!station.faults.list().empty()) { // otherwise the answer has it
        exchanged.rule = findRule(request.command, request.fields.size());
    }
    const Hits hits = station.faults.meet({.kind = Occasion::Kind::request,
                                           .command = request.command,
                                           .commandName = exchanged.name(),
                                           .beginsCall = exchanged.attempt == 1,
                                           .exchange = station.trace.end()});
    settle(std::move(exchanged),
           hits.empty() ? station.printer.execute(request, codePage) : ask(request, hits), hits, now);
}

// What the printer decides and keeps where faults hit the request.
Answer TillSession::ask(const Request& request, const Hits& hits)
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
    Hindrance hindrance;
    hindrance.diskIsFull = has(hits, FaultKind::diskFull);
    hindrance.paperIsOut = has(hits, FaultKind::paperOut);
    hindrance.doesNothing = has(hits, FaultKind::acknowledgedNotExecuted);
    return station.printer.execute(request, codePage, hindrance);
}

// Into the trace, and onto the wire.
void TillSession::settle(Exchanged exchanged, Answer answer, const Hits& hits, Time now)
{
    const std::string whole = answer.isLost ? "" : bytesOf(answer);
    exchanged.moment = answer.moment ? *answer.moment : station.printer.now();
    exchanged.rule = answer.rule == nullptr ? exchanged.rule : answer.rule;
    exchanged.fields = std::move(answer.fields);
    exchanged.refusal = answer.refusal;
    exchanged.detail = std::move(answer.detail);
    exchanged.code = whole.starts_with('\x15') ? static_cast<unsigned char>(whole.back()) : 0;
    exchanged.isExecuted = answer.isExecuted;
    exchanged.isCommitted = answer.isCommitted;
    exchanged.decided = answer.decided;
    exchanged.committed = answer.committed;
    if (answer.data) {
        exchanged.replied(toUtf8(*answer.data, codePage));
    }
    meanwhile = {};
    hitsOfReply.clear();
    if (hits.empty()) {
        const std::uint64_t number = recorder.keep(std::move(exchanged), whole, now);
        steps.push_back({std::chrono::milliseconds(0), Send{whole, number}});
    } else {
        disturb(std::move(exchanged), whole, hits, now);
    }
    answerBefore = whole;
}

void TillSession::disturb(Exchanged exchanged, const std::string& whole, const Hits& hits, Time now)
{
    for (const Faults::Hit& hit : hits) {
        exchanged.faults.emplace_back(ruleOf(hit.fault.kind).deed);
    }
    Steps all =
        disturbed(whole, station.trace.end(), hits, {.isSerial = isSerial(), .answerBefore = answerBefore});
    std::string said;
    for (const Step& step : all) {
        if (const auto* send = std::get_if<Send>(&step.action)) {
            said += send->bytes;
        }
    }
    recorder.keep(std::move(exchanged), said, now);
    steps.insert(steps.end(), all.begin(), all.end());
    meanwhile = probesDuring(hits);
    meanwhileSince = now;
    hitsOfReply = hits;
    blocksSent = 1;
    if (const auto* loss = find(hits, FaultKind::powerLoss)) {
        station.printer.restart();
        exchange = Exchange();
        deafUntil = now + loss->fault.duration.value_or(std::chrono::milliseconds(0));
    }
}

std::string TillSession::bytesOf(const Answer& answer)
{
    if (answer.refusesWith) {
        return Exchange::refusal(*answer.refusesWith);
    }
    if (answer.refusal != Refusal::wrongChecksum) { // a damaged block leaves the upload expected
        exchange.expectBlocks(station.printer.expectsBlocks());
    }
    if (answer.refusal != Refusal::none) {
        return Exchange::refusal(codes.of(answer.refusal));
    }
    return answer.data ? exchange.beginReply(*answer.data) : Exchange::acceptance();
}

} // namespace virtual_printer
