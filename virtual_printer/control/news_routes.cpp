// Everything that a watcher of a printer wants to know after a change, in one answer: what is the newest, and
// which lines and exchanges have come since those that it knows.
#include "virtual_printer/control/routes.h"
#include "virtual_printer/control/state_json.h"
#include "virtual_printer/trace/exchanged_json.h"

#include <algorithm>
#include <limits>

namespace virtual_printer {
namespace {

// Of those behind the last one that is known the newest; without it the newest of all.
std::uint64_t firstOfNewest(std::uint64_t known, std::uint64_t first, std::uint64_t end, std::uint64_t most)
{
    return std::max({known + 1, first, end - std::min(most, end)});
}

// The numbers of those of which more becomes: only what came after the last one that is no probe can be such.
Json unfinishedIn(const Trace& trace)
{
    Json numbers = Json::array();
    for (auto number = std::max(trace.first(), trace.newestButProbes()); number < trace.end(); ++number) {
        if (!trace.isOver(*trace.find(number))) {
            numbers.push_back(number);
        }
    }
    return numbers;
}

} // namespace

Outcome showNews(const Call& call)
{
    constexpr std::int64_t largest = std::numeric_limits<std::int64_t>::max() - 1;
    constexpr std::int64_t most = 200; // tills wait meanwhile
    const Json asked = queryOf(call.target);
    const Members members(asked, "");
    members.allow({"line", "exchange", "most"});
    const auto line = static_cast<std::uint64_t>(members.whole("line", 0, 0, largest));
    const auto exchange = static_cast<std::uint64_t>(members.whole("exchange", 0, 0, largest));
    const auto limit = static_cast<std::uint64_t>(members.whole("most", most, 1, most));

    const ControlledPrinter& printer = call.printer();
    const Roll& roll = printer.roll;
    const Trace& trace = printer.station.trace;
    Json lines = Json::array();
    for (auto number = firstOfNewest(line, roll.first(), roll.end(), limit); number < roll.end(); ++number) {
        lines.push_back(rollLineToJson(roll.at(number), *printer.station.printer.state().settings));
    }
    std::string exchanges;
    for (auto number = firstOfNewest(exchange, trace.first(), trace.end(), limit); number < trace.end();
         ++number) {
        exchanges.append(exchanges.empty() ? "" : ",").append(toLine(*trace.find(number)));
    }
    Json news = {{"changes", printer.changes},
                 {"state", stateToJson(printer)},
                 {"totals", totalsToJson(printer.station.printer)},
                 {"paper", std::move(lines)},
                 {"unfinished", unfinishedIn(trace)}};
    news.update(faultsToJson(printer.station.faults));
    std::string body = news.dump(-1, ' ', false, Json::error_handler_t::replace); // it is asked for often
    body.back() = ',';
    return HttpAnswer{.status = 200, .body = body + R"("trace":[)" + exchanges + "]}\n"};
}

} // namespace virtual_printer
