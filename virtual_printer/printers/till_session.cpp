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

std::string_view nameOf(unsigned char command)
{
    const auto rules = commandRules();
    const auto found = std::find_if(rules.begin(), rules.end(), [command](const CommandRule& rule) {
        return static_cast<unsigned char>(rule.command) == command;
    });
    return found == rules.end() ? "" : found->name;
}

} // namespace

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
    lasting.goOnWith({}, {});
}

Steps TillSession::take(std::string_view bytes, Time now)
{
    constexpr std::chrono::seconds longestPause{5};
    followThePrinter();
    if (lasting.arePowerless(now)) {
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
                          [&](const MoreOfReply& more) { goOn(more); },
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

void TillSession::answerProbe(Time now)
{
    const Probes state = lasting.answerToProbes(now);
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

void TillSession::goOn(const MoreOfReply& more)
{
    const Hits hits = more.bytes.empty() ? Hits() : lasting.ofNextBlock();
    std::string bytes = more.bytes;
    for (const Faults::Hit& hit : hits) {
        damage(bytes, hit.fault);
    }
    const auto reply = more.isLost            ? Recorder::Reply::givenUp
                       : more.bytes.empty()   ? Recorder::Reply::taken
                       : exchange.isBetween() ? Recorder::Reply::givenUp
                                              : Recorder::Reply::goesOn;
    recorder.goOn(heard, bytes, toUtf8(more.fetched, codePage), reply);
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

// Into the trace, and onto the wire.
void TillSession::settle(Exchanged exchanged, Answer answer, const Hits& hits, Time now)
{
    if (answer.data) {
        const std::string_view fetched = answer.data->fetched();
        exchanged.replied(toUtf8(
            answer.data->isAllFetched() ? fetched : fetched.substr(0, ReplyData::mostOfABlock), codePage));
    }
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
    if (!lasting.areNone()) {
        lasting.goOnWith({}, {});
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

std::string TillSession::bytesOf(Answer& answer)
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
    return answer.data ? exchange.beginReply(std::move(*answer.data)) : Exchange::acceptance();
}

} // namespace virtual_printer
