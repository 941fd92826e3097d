#include "virtual_printer/control/body.h"
#include "virtual_printer/control/difference.h"
#include "virtual_printer/control/expectation.h"
#include "virtual_printer/trace/exchanged_json.h"

#include <algorithm>

namespace virtual_printer {
namespace {

// As the trace shows it, with its fields by name.
Json viewOf(const Exchanged& exchanged)
{
    Json view = toJson(exchanged);
    Json fields = Json::object();
    for (const Json& field : view["fields"]) {
        fields[field["name"].get<std::string>()] = field["value"];
    }
    view["fields"] = std::move(fields);
    return view;
}

// Those since the assertion begins, none of which may be forgotten.
std::vector<const Exchanged*> exchangesOf(const Expectation& expectation)
{
    const Trace& trace = expectation.printer.station.trace;
    const std::uint64_t since = expectation.since.exchange;
    if (trace.isGone(since)) {
        throw ControlRefusal(status::gone,
                             "The trace begins at exchange " + std::to_string(trace.first()) +
                                 " and the assertion at " + std::to_string(since) +
                                 ", which is forgotten; assert sooner, or give a later \"since\".");
    }
    std::vector<const Exchanged*> all;
    for (std::uint64_t number = since; number < trace.end(); ++number) {
        all.push_back(trace.find(number));
    }
    return all;
}

using Counts = bool (*)(const Exchanged&);

// Only what has the name that is asked for is written as JSON: a trace is long, and its printer waits
// meanwhile.
std::vector<Json> viewsOf(const std::vector<const Exchanged*>& exchanges, Counts counts, const Json& expected)
{
    const auto name = expected.find("name");
    std::vector<Json> views;
    for (const Exchanged* exchanged : exchanges) {
        if (counts(*exchanged) && (name == expected.end() || *name == exchanged->name())) {
            views.push_back(viewOf(*exchanged));
        }
    }
    return views;
}

void checkCount(Expectation& expectation, const std::string& part, const Json& expected,
                const std::vector<Json>& views, std::int64_t wanted)
{
    const auto count = std::count_if(views.begin(), views.end(),
                                     [&](const Json& view) { return differences(expected, view).empty(); });
    if (count == wanted) {
        return;
    }
    std::string sentence = part + ": " + std::to_string(count) + " exchanges are " + shown(expected) + ", " +
                           std::to_string(wanted) + " are expected";
    if (const int best = nearest(expected, views); count == 0 && best >= 0) {
        const Json& view = views[static_cast<std::size_t>(best)];
        sentence +=
            "; the nearest is exchange " + view["number"].dump() + ": " + differenceFrom(expected, view);
    } else if (count == 0) {
        sentence += "; no such thing was " + part;
    }
    expectation.found.push_back(sentence);
}

void checkPart(Expectation& expectation, const std::string& part, Counts counts)
{
    if (!expectation.assertion.contains(part)) {
        return;
    }
    const auto exchanges = exchangesOf(expectation);
    for (Json expected : listIn(expectation.assertion, part)) {
        const std::int64_t wanted = Members(expected, part).whole("count", 1, 0, 1'000'000);
        expected.erase("count");
        checkCount(expectation, part, expected, viewsOf(exchanges, counts, expected), wanted);
    }
}

void checkRepeats(Expectation& expectation)
{
    const Members members(expectation.assertion, "");
    if (members.find("repeated") == nullptr) {
        return;
    }
    const std::int64_t wanted = members.whole("repeated", 0, 0, 1'000'000);
    std::int64_t count = 0;
    std::string which;
    for (const Exchanged* exchanged : exchangesOf(expectation)) {
        if (exchanged->repeatOf != 0) {
            ++count;
            which += (which.empty() ? ": " : ", ") + std::to_string(exchanged->number) + " " +
                     std::string(exchanged->name()) + " repeats " + std::to_string(exchanged->repeatOf);
        }
    }
    if (count != wanted) {
        expectation.found.push_back("repeated: " + std::to_string(count) +
                                    " requests repeat an earlier one, " + std::to_string(wanted) +
                                    " are expected" + which);
    }
}

} // namespace

void checkExchanges(Expectation& expectation)
{
    checkPart(expectation, "received", [](const Exchanged& e) {
        return e.kind == Exchanged::Kind::request || e.kind == Exchanged::Kind::block;
    });
    checkPart(expectation, "executed", [](const Exchanged& e) { return e.isExecuted; });
    checkPart(expectation, "acknowledged", [](const Exchanged& e) { return e.isAcknowledged; });
    checkRepeats(expectation);
}

} // namespace virtual_printer
