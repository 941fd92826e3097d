// Documents and closures as data, in pages.
#include "virtual_printer/control/document_json.h"
#include "virtual_printer/control/routes.h"
#include "virtual_printer/memory/text_search.h"

#include <limits>

namespace virtual_printer {
namespace {

std::optional<Moment> momentIn(const Call& call, const std::string& name, Edge edge)
{
    const auto given = call.target.query.find(name);
    if (given == call.target.query.end()) {
        return std::nullopt;
    }
    const auto moment = given->second.empty() ? std::nullopt : parseMoment(given->second, edge);
    if (!moment) {
        throw ControlRefusal(status::badRequest,
                             "\"" + name + "\" is no time; write it as 2026-01-31 or 2026-01-31 12:00.");
    }
    return moment;
}

Document::Kind kindIn(const Call& call)
{
    const std::string& name = call.target.query.at("kind");
    const auto kind = documentKindCalled(name);
    if (!kind) {
        throw ControlRefusal(status::badRequest,
                             "There are no documents of the kind \"" + name +
                                 "\"; there are receipt, cancelledReceipt, drawer, closure and report.");
    }
    return *kind;
}

std::optional<std::string> textIn(const Call& call, const std::string& name)
{
    const auto given = call.target.query.find(name);
    return given == call.target.query.end() ? std::nullopt : std::optional(given->second);
}

struct Page
{
    std::int64_t skip;
    std::int64_t limit;
};

Page pageIn(const Members& members)
{
    constexpr std::int64_t most = 1000;
    constexpr std::int64_t usual = 100;
    return {members.whole("skip", 0, 0, std::numeric_limits<int>::max()),
            members.whole("limit", usual, 1, most)};
}

// Whether the page is followed by another one is told by one entry more than it has.
HttpAnswer pageAnswer(const std::string& name, std::vector<Json> found, const Page& page)
{
    const bool goesOn = static_cast<std::int64_t>(found.size()) > page.limit;
    if (goesOn) {
        found.pop_back();
    }
    return jsonAnswer({{name, found}, {"next", goesOn ? Json(page.skip + page.limit) : Json()}});
}

std::vector<Json> documentsOf(const Printer& printer, const DocumentQuery& query)
{
    std::vector<Json> found;
    printer.memory().read(query, [&](const Document& document, std::int64_t position) {
        found.push_back(toJson(document, *printer.state().settings, position));
        return true;
    });
    return found;
}

HttpAnswer foundAnswer(const TextSearch& search, const Page& page, const Printer& printer)
{
    std::vector<Json> found;
    for (const std::int64_t position : search.found()) {
        // Nothing when the journal was cleared meanwhile.
        for (Json& document : documentsOf(printer, {.positions = std::pair(position, position)})) {
            found.push_back(std::move(document));
        }
    }
    return pageAnswer("documents", std::move(found), page);
}

// A step now; when there are more of them, the rest between the exchanges of tills.
Outcome search(TextSearch begun, const Page& page, const Printer& printer,
               const std::function<void()>& lookAgain)
{
    if (printer.memory().goOn(begun)) {
        return foundAnswer(begun, page, printer);
    }
    lookAgain();
    constexpr std::chrono::minutes longest{1};
    return Later{longest,
                 [search = std::move(begun), page, &printer,
                  &lookAgain](bool isOver) mutable -> std::optional<HttpAnswer> {
                     if (printer.memory().goOn(search)) {
                         return foundAnswer(search, page, printer);
                     }
                     if (isOver) {
                         return errorAnswer(
                             status::internalError,
                             "The search took too long beside the tills; give it a shorter period.");
                     }
                     lookAgain();
                     return std::nullopt;
                 }};
}

} // namespace

Outcome listDocuments(const Call& call)
{
    const Json asked = queryOf(call.target);
    const Members members(asked, "");
    members.allow({"kind", "number", "from", "to", "closure", "invoice", "transaction", "text", "order",
                   "skip", "limit"});
    const Page page = pageIn(members);
    DocumentQuery query;
    query.skip = page.skip;
    query.most = page.limit + 1;
    if (call.target.query.contains("kind")) {
        query.kinds = {kindIn(call)};
    }
    constexpr std::int64_t largest = std::numeric_limits<int>::max();
    if (members.find("number") != nullptr) {
        const auto number = static_cast<int>(members.whole("number", 0, 0, largest));
        query.numbers = {number, number};
    }
    if (members.find("closure") != nullptr) {
        query.closure = static_cast<int>(members.whole("closure", 0, 0, largest));
    }
    const auto from = momentIn(call, "from", Edge::first);
    const auto last = momentIn(call, "to", Edge::last);
    if (from || last) {
        query.moments = {from.value_or(Moment::min()), last.value_or(Moment::max())};
    }
    query.invoice = textIn(call, "invoice");
    query.transaction = textIn(call, "transaction");
    query.text = textIn(call, "text");
    query.newestFirst = members.oneOf("order", "oldest", {"oldest", "newest"}) == "newest";
    const Printer& printer = call.printer().station.printer;
    return query.text ? search(TextSearch(query), page, printer, call.lookAgain)
                      : Outcome(pageAnswer("documents", documentsOf(printer, query), page));
}

Outcome showHours(const Call& call)
{
    ControlledPrinter& printer = call.printer();
    const bool isComplete = printer.hours.readOn(printer.station.printer);
    Json hours = Json::array();
    for (const auto& [hour, sums] : printer.hours.byHour()) {
        hours.push_back(
            {{"from", toText(hour)}, {"receipts", sums.receipts}, {"turnover", formatCents(sums.turnover)}});
    }
    return jsonAnswer({{"hours", hours}, {"complete", isComplete}});
}

Outcome listClosures(const Call& call)
{
    const Json asked = queryOf(call.target);
    const Members members(asked, "");
    members.allow({"skip", "limit"});
    const Page page = pageIn(members);
    const auto closures = call.printer().station.printer.memory().closures(std::nullopt, std::nullopt);
    std::vector<Json> found;
    for (auto index = static_cast<std::size_t>(page.skip);
         index < closures.size() && static_cast<std::int64_t>(found.size()) <= page.limit; ++index) {
        found.push_back(toJson(closures[index]));
    }
    return pageAnswer("closures", std::move(found), page);
}

} // namespace virtual_printer
