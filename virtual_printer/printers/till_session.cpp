#include "virtual_printer/printers/till_session.h"

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
    }
    lastByte = now;
    std::string answers;
    for (const char byte : bytes) {
        answers += answerTo(exchange.take(static_cast<unsigned char>(byte)));
    }
    return answers;
}

std::string TillSession::answerTo(const Incoming& incoming)
{
    return std::visit(
        Overloaded{
            [](const Nothing&) { return std::string(); }, [](const Probe&) { return Exchange::readiness(); },
            [](const MoreOfReply& more) { return more.bytes; },
            [this](const DamagedRequest&) { return Exchange::refusal(codes.of(Refusal::wrongChecksum)); },
            [this](const DamagedBlock&) { return Exchange::refusal(codes.of(Refusal::wrongChecksum)); },
            [this](const Request& request) { return bytesOf(printer.execute(request, codePage)); },
            [this](const Block& block) {
                return bytesOf(printer.takeBlock(block.data, block.isLast, codePage));
            }},
        incoming);
}

std::string TillSession::bytesOf(const Answer& answer)
{
    exchange.expectBlocks(printer.expectsBlocks());
    if (answer.refusal != Refusal::none) {
        return Exchange::refusal(codes.of(answer.refusal));
    }
    return answer.data ? exchange.beginReply(*answer.data) : Exchange::acceptance();
}

} // namespace virtual_printer
