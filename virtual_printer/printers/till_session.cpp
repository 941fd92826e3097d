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

// `rule` is null where there is none. A question is answered in any case: nothing is carried out upon it.
Hindrance hindranceOf(const Hits& hits, const CommandRule* rule)
{
    const bool isQuestion = rule != nullptr && rule->wants == Wants::reply;
    return {.diskIsFull = has(hits, FaultKind::diskFull),
            .paperIsOut = has(hits, FaultKind::paperOut),
            .doesNothing = !isQuestion && has(hits, FaultKind::acknowledgedNotExecuted)};
}

std::string_view nameOf(unsigned char command)
{
    const auto rules = commandRules();
    const auto found = std::find_if(rules.begin(), rules.end(), [command](const CommandRule& rule) {
        return static_cast<unsigned char>(rule.command) == command;
    });
    return found == rules.end() ? "" : found->name;
}

} // namespace

Steps TillSession::greet()
{
    const Hits hits = station.faults.meet({.kind = Occasion::Kind::connection});
    Disturbed all = disturbed("", 0, hits, {.isSerial = isSerial()});
    doneOf(hits, all, 0);
    return all.steps;
}

void TillSession::endFault(std::uint64_t number)
{
    Hits rest = hitsOfLast;
    if (std::erase_if(rest, [number](const Faults::Hit& hit) { return hit.number == number; }) != 0) {
        goOnWith(std::move(rest));
    }
}

// Of what has hit the last exchange, that is what still has an effect.
void TillSession::goOnWith(Hits hits)
{
    hitsOfLast = std::move(hits);
    meanwhile = probesDuring(hitsOfLast);
    deafUntil = {};
    for (const Faults::Hit& hit : hitsOfLast) {
        if (hit.fault.kind == FaultKind::powerLoss) {
            deafUntil =
                std::max(deafUntil, lastHit + hit.fault.duration.value_or(std::chrono::milliseconds(0)));
        }
    }
}

// After a reset there is another one, which knows nothing of what this till and the one before have begun.
void TillSession::followThePrinter()
{
    if (begun == station.trace.begin()) {
        return;
    }
    begun = station.trace.begin();
    exchange = Exchange();
    heard.clear();
    answerBefore.clear();
    goOnWith({});
}

Steps TillSession::take(std::string_view bytes, Time now)
{
    constexpr std::chrono::seconds longestPause{5};
    followThePrinter();
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
                          [&](const Block& block) { takeBlock(&block, now); },
                          [&](const RepeatedBlock&) { takeBlock(nullptr, now); }},
               incoming);
}

Probes TillSession::answerToProbes(Time now) const
{
    return now - lastHit < meanwhile.duration ? meanwhile.answer : Probes::ready;
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
    if (bytes.empty()) {
        recorder.hasEnded(number);
    } else {
        steps.push_back({std::chrono::milliseconds(0), Send{bytes, number}});
    }
}

void TillSession::goOn(const std::string& more)
{
    const Hits hits = more.empty() ? Hits() : withMoreBlocks(hitsOfLast, blocksSent++);
    std::string bytes = more;
    for (const Faults::Hit& hit : hits) {
        damage(bytes, hit.fault);
    }
    const auto reply = more.empty()           ? Recorder::Reply::taken
                       : exchange.isBetween() ? Recorder::Reply::givenUp
                                              : Recorder::Reply::goesOn;
    recorder.goOn(heard, bytes, reply);
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
                                           .beginsCall = exchanged.attempt == 1});
    Answer answer =
        hits.empty() ? station.printer.execute(request, codePage) : ask(request, hits, exchanged.rule);
    settle(std::move(exchanged), std::move(answer), hits, now);
}

// One of an upload; none for the last one of an upload that comes again when it has been taken.
void TillSession::takeBlock(const Block* block, Time now)
{
    Exchanged exchanged = recorder.begin(Kind::block, heard, now);
    if (block != nullptr) {
        uploading = station.printer.state().upload->command;
    } else {
        exchanged.repeatOf = lastBlock;
    }
    exchanged.command = uploading;
    const Hits hits = station.faults.meet({.kind = Occasion::Kind::request,
                                           .command = uploading,
                                           .commandName = nameOf(uploading),
                                           .isBlock = true,
                                           .beginsCall = exchanged.attempt == 1});
    Answer answer{.isTakenAgain = true};
    if (losesRequest(hits)) {
        answer = {.isLost = true};
    } else if (const auto* hit = find(hits, FaultKind::refuse)) {
        answer = {.refusesWith = hit->fault.code};
    } else if (block != nullptr && !recorder.hasBeenTaken(exchanged)) {
        answer = station.printer.takeBlock(block->data, block->isLast, codePage, hindranceOf(hits, nullptr));
        lastBlock = station.trace.end();
    }
    settle(std::move(exchanged), std::move(answer), hits, now);
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
    if (!hitsOfLast.empty()) {
        goOnWith({});
    }
    if (hits.empty()) {
        const std::uint64_t number = recorder.keep(std::move(exchanged), whole, now);
        station.printer.wasExchange(number);
        steps.push_back({std::chrono::milliseconds(0), Send{whole, number}});
    } else {
        const bool isAsked = !answer.isLost && !answer.refusesWith && !answer.isTakenAgain;
        disturb(std::move(exchanged), whole, hits, isAsked, now);
    }
    answerBefore = whole;
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
    for (std::size_t index = 0; index < hits.size(); ++index) {
        const FaultRule& rule = ruleOf(hits[index].fault.kind);
        exchanged.faults.push_back(all.idle[index].empty()
                                       ? std::string(rule.deed)
                                       : std::string(rule.name) + " did nothing: " + all.idle[index]);
    }
    std::string said;
    for (const Step& step : all.steps) {
        if (const auto* send = std::get_if<Send>(&step.action)) {
            said += send->bytes;
        }
    }
    const std::uint64_t number = recorder.keep(std::move(exchanged), said, now);
    station.printer.wasExchange(number);
    lastHit = now;
    goOnWith(doneOf(hits, all, number));
    blocksSent = 1;
    if (has(hitsOfLast, FaultKind::powerLoss)) {
        station.printer.restart();
        exchange = Exchange();
    }
    letEnd(number, all.steps);
    steps.insert(steps.end(), all.steps.begin(), all.steps.end());
}

// Each of those that have done something is told so.
Hits TillSession::doneOf(const Hits& hits, const Disturbed& all, std::uint64_t exchangeHit)
{
    Hits done;
    for (std::size_t index = 0; index < hits.size(); ++index) {
        if (all.idle[index].empty()) {
            station.faults.hasDone(hits[index].number, exchangeHit);
            done.push_back(hits[index]);
        }
    }
    return done;
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
