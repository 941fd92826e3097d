#include "virtual_printer/printers/till_session.h"

#include <utility>

namespace virtual_printer {
namespace {

template <typename... Cases>
struct Overloaded : Cases...
{
    using Cases::operator()...;
};
template <typename... Cases>
Overloaded(Cases...) -> Overloaded<Cases...>;

} // namespace

std::string TillSession::take(std::string_view bytes, Time now)
{
    constexpr std::chrono::seconds longestPause{5};
    if (now - lastByte > longestPause) {
        exchange.forgetUnfinished();
        heard.clear();
    }
    lastByte = now;
    std::string answers;
    for (const char byte : bytes) {
        heard += byte;
        const Incoming incoming = exchange.take(static_cast<unsigned char>(byte));
        const bool isComplete = !std::holds_alternative<Nothing>(incoming);
        answers += answerTo(incoming, now);
        if (isComplete || exchange.isBetween()) {
            heard.clear();
        }
    }
    return answers;
}

std::string TillSession::answerTo(const Incoming& incoming, Time now)
{
    using Kind = Exchanged::Kind;
    return std::visit(
        Overloaded{[](const Nothing&) { return std::string(); },
                   [&](const Probe&) { return answerProbe(now); },
                   [&](const MoreOfReply& more) {
                       recorder.goOn(heard, more.bytes);
                       return more.bytes;
                   },
                   [&](const DamagedRequest&) { return refuseDamaged(Kind::damagedRequest, now); },
                   [&](const DamagedBlock&) { return refuseDamaged(Kind::damagedBlock, now); },
                   [&](const Request& request) {
                       Exchanged exchanged = recorder.begin(Kind::request, heard, now);
                       exchanged.address = request.address;
                       exchanged.command = request.command;
                       return settle(std::move(exchanged), printer.execute(request, codePage), now);
                   },
                   [&](const Block& block) {
                       return settle(recorder.begin(Kind::block, heard, now),
                                     printer.takeBlock(block.data, block.isLast, codePage), now);
                   }},
        incoming);
}

std::string TillSession::answerProbe(Time now)
{
    std::string bytes = Exchange::readiness();
    recorder.keep(recorder.begin(Exchanged::Kind::probe, heard, now), bytes, now);
    return bytes;
}

std::string TillSession::refuseDamaged(Exchanged::Kind kind, Time now)
{
    return settle(recorder.begin(kind, heard, now), {.refusal = Refusal::wrongChecksum, .data = {}}, now);
}

// Into the trace, and onto the wire.
std::string TillSession::settle(Exchanged exchanged, Answer answer, Time now)
{
    std::string bytes = bytesOf(answer);
    exchanged.rule = answer.rule;
    exchanged.fields = std::move(answer.fields);
    exchanged.refusal = answer.refusal;
    exchanged.code = answer.refusal == Refusal::none ? 0 : codes.of(answer.refusal);
    exchanged.isExecuted = answer.refusal == Refusal::none;
    exchanged.isCommitted = answer.isCommitted;
    exchanged.decided = answer.decided;
    exchanged.committed = answer.committed;
    if (answer.data) {
        exchanged.replied(toUtf8(*answer.data, codePage));
    }
    recorder.keep(std::move(exchanged), bytes, now);
    return bytes;
}

std::string TillSession::bytesOf(const Answer& answer)
{
    if (answer.refusal == Refusal::wrongChecksum) {
        return Exchange::refusal(codes.of(answer.refusal));
    }
    exchange.expectBlocks(printer.expectsBlocks());
    if (answer.refusal != Refusal::none) {
        return Exchange::refusal(codes.of(answer.refusal));
    }
    return answer.data ? exchange.beginReply(*answer.data) : Exchange::acceptance();
}

} // namespace virtual_printer
