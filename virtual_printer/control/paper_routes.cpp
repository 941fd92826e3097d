// The paper: what has come out of the printer, and the documents of the journal as text, as lines and as a
// drawing, each made when it is asked for.
#include "virtual_printer/control/document_json.h"
#include "virtual_printer/control/routes.h"
#include "virtual_printer/paper/dots_path.h"
#include "virtual_printer/paper/drawn_line.h"
#include "virtual_printer/paper/layout.h"
#include "virtual_printer/paper/svg.h"

#include <limits>

namespace virtual_printer {
namespace {

constexpr std::int64_t largestNumber = std::numeric_limits<std::int64_t>::max() - 1;

Json dotsToJson(const Picture& dots)
{
    return {{"width", dots.width}, {"height", dots.height}, {"path", dotsPath(dots)}};
}

Json lineToJson(const Line& line, const Settings& settings)
{
    const DrawnLine drawn = draw(line, settings);
    return {{"kind", nameOf(line.kind)},
            {"text", drawn.text},
            {"content", drawn.content},
            {"dots", drawn.dots ? dotsToJson(*drawn.dots) : Json()}};
}

const Settings& settingsOf(const Call& call)
{
    return *call.printer().station.printer.state().settings;
}

struct Found
{
    Document document;
    std::int64_t position;
};

// The document at the place in the journal that the path names.
Found documentIn(const Call& call)
{
    constexpr std::size_t place = 3;
    const std::string& name = call.target.path.at(place);
    const Json asked = queryOf(Target("/?position=" + name));
    DocumentQuery query;
    const auto position =
        asked["position"].is_number_integer() ? asked["position"].get<std::int64_t>() : std::int64_t{0};
    query.positions = {position, position};
    auto found = call.printer().station.printer.memory().documents(query);
    if (found.empty()) {
        throw ControlRefusal(status::notFound, "There is no document " + name.substr(0, 20) +
                                                   " in the journal; GET .../documents lists them.");
    }
    return {std::move(found.front()), position};
}

} // namespace

Json rollLineToJson(const RollLine& line, const Settings& settings)
{
    Json json = {{"number", line.number},
                 {"exchange", line.exchange},
                 {"document", line.document},
                 {"columns", settings.columns}};
    json.update(lineToJson(line.line, settings));
    return json;
}

Outcome showPaper(const Call& call)
{
    constexpr std::int64_t most = 2'000;
    const Json asked = queryOf(call.target);
    const Members members(asked, "");
    members.allow({"after", "limit"});
    const Roll& roll = call.printer().roll;
    const auto after = static_cast<std::uint64_t>(members.whole("after", 0, 0, largestNumber));
    const auto limit = static_cast<std::uint64_t>(members.whole("limit", most, 1, most));
    HttpAnswer answer{.status = 200, .body = {}, .contentType = "application/x-ndjson"};
    const std::uint64_t begin = std::max(after + 1, roll.first());
    for (std::uint64_t number = begin; number < roll.end() && number < begin + limit; ++number) {
        const Json json = rollLineToJson(roll.at(number), settingsOf(call));
        answer.body += json.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n";
    }
    return answer;
}

Outcome showDocument(const Call& call)
{
    const Found found = documentIn(call);
    return jsonAnswer(toJson(found.document, settingsOf(call), found.position));
}

Outcome showDocumentLines(const Call& call)
{
    Json lines = Json::array();
    for (const Found found = documentIn(call); const Line& line : found.document.lines) {
        lines.push_back(lineToJson(line, settingsOf(call)));
    }
    return jsonAnswer({{"columns", settingsOf(call).columns}, {"lines", lines}});
}

Outcome drawDocument(const Call& call)
{
    const Found found = documentIn(call);
    HttpAnswer answer{
        .status = 200,
        .body = svgOf(found.document, settingsOf(call), "Document " + std::to_string(found.position)),
        .contentType = "image/svg+xml"};
    // Opened by itself it is a page of this program, too: nothing in it may run.
    answer.headers.emplace_back("Content-Security-Policy", "default-src 'none'; sandbox");
    return answer;
}

Outcome writeDocument(const Call& call)
{
    return HttpAnswer{
        .status = 200,
        .body = textOf(documentIn(call).document, static_cast<std::size_t>(settingsOf(call).columns)),
        .contentType = "text/plain; charset=utf-8"};
}

Outcome showPictures(const Call& call)
{
    Json list = Json::array();
    for (const auto& [number, picture] : *call.printer().station.printer.state().pictures) {
        Json json = {{"number", number}};
        json.update(dotsToJson(picture));
        list.push_back(json);
    }
    return jsonAnswer({{"pictures", list}});
}

} // namespace virtual_printer
