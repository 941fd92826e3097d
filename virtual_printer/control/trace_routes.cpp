// The trace of a printer: as lines of JSON, and live.
#include "virtual_printer/control/routes.h"
#include "virtual_printer/trace/exchanged_json.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <utility>

namespace virtual_printer {
namespace {

constexpr std::int64_t largest = std::numeric_limits<std::int64_t>::max();

// What follows the exchange `last`, which then is the last one that was sent.
std::string eventsAfter(const Trace& trace, std::uint64_t& last)
{
    constexpr std::size_t enough = 65'536;
    std::string events;
    if (trace.isGone(last + 1)) {
        const Json lost = {{"from", last + 1}, {"to", trace.first() - 1}};
        events = "event: lost\ndata: " + lost.dump() + "\n\n";
        last = trace.first() - 1;
    }
    while (events.size() < enough && last + 1 < trace.end()) {
        const Exchanged& exchanged = *trace.find(last + 1);
        if (!trace.isOver(exchanged)) {
            break;
        }
        ++last;
        events += "id: " + std::to_string(last) + "\nevent: exchange\ndata: " + toLine(exchanged) + "\n\n";
    }
    return events;
}

[[noreturn]] void refuseForgotten(const Trace& trace)
{
    throw ControlRefusal(status::gone, "The trace begins at exchange " + std::to_string(trace.first()) +
                                           ", earlier ones are forgotten; ask without \"after\".");
}

// The lines from `next` up to, and without, `end`. What is forgotten before its turn has come is missed
// aloud.
Piece linesFrom(const Trace& trace, std::uint64_t& next, std::uint64_t end)
{
    constexpr std::size_t enough = 65'536;
    Piece piece;
    for (; next < end && piece.text.size() < enough; ++next) {
        if (trace.isGone(next)) {
            refuseForgotten(trace);
        }
        piece.text += toLine(*trace.find(next)) + "\n";
    }
    piece.isLast = next >= end;
    return piece;
}

} // namespace

Outcome showTrace(const Call& call)
{
    constexpr std::int64_t most = 10'000;
    const Trace& trace = call.printer().station.trace;
    const Json asked = queryOf(call.target);
    const Members members(asked, "");
    members.allow({"after", "limit"});
    const auto after = static_cast<std::uint64_t>(
        members.whole("after", static_cast<std::int64_t>(trace.first()) - 1, 0, largest - 1));
    const std::int64_t limit = members.whole("limit", most, 1, most);
    if (trace.isGone(after + 1)) {
        refuseForgotten(trace);
    }
    std::uint64_t next = after + 1;
    const std::uint64_t end = std::min(trace.end(), next + static_cast<std::uint64_t>(limit));
    const std::string type = "application/x-ndjson";
    Piece first = linesFrom(trace, next, end);
    if (first.isLast) {
        return HttpAnswer{.status = 200, .body = std::move(first.text), .contentType = type};
    }
    return Pieces{type, [&trace, next, end, first = std::move(first)]() mutable {
                      return first.text.empty() ? linesFrom(trace, next, end) : std::exchange(first, {});
                  }};
}

Outcome followTrace(const Call& call)
{
    const Trace& trace = call.printer().station.trace;
    const Json asked = queryOf(call.target);
    const Members members(asked, "");
    members.allow({"after"});
    auto last = static_cast<std::uint64_t>(
        members.whole("after", static_cast<std::int64_t>(trace.end()) - 1, 0, largest - 1));
    if (const std::string& id = call.request.lastEventId; !id.empty()) {
        const auto parsed = std::from_chars(id.data(), id.data() + id.size(), last);
        if (parsed.ec != std::errc() || parsed.ptr != id.data() + id.size() ||
            last >= static_cast<std::uint64_t>(largest)) {
            throw ControlRefusal(status::badRequest,
                                 "Last-Event-ID is no number of an exchange; send the id of the last event.");
        }
    }
    if (last >= trace.end()) { // of an earlier start of the program
        last = trace.first() - 1;
    }
    return Stream{"text/event-stream", [&trace, last]() mutable { return eventsAfter(trace, last); }};
}

} // namespace virtual_printer
