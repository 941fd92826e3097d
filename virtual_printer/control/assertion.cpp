#include "virtual_printer/control/assertion.h"

#include "virtual_printer/control/body.h"
#include "virtual_printer/control/difference.h"
#include "virtual_printer/control/document_json.h"
#include "virtual_printer/control/state_json.h"
#include "virtual_printer/trace/exchanged_json.h"

#include <limits>
#include <set>

namespace virtual_printer {
namespace {

constexpr int gone = 410;

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

const Json& listIn(const Json& assertion, const std::string& name)
{
    const Json& list = assertion[name];
    if (!list.is_array() ||
        !std::all_of(list.begin(), list.end(), [](const Json& e) { return e.is_object(); })) {
        throw ControlRefusal(status::badRequest,
                             "\"" + name + R"(" is no list of objects; send one as [{"name": "payment"}].)");
    }
    return list;
}

std::string differenceFrom(const Json& expected, const Json& actual)
{
    std::string sentence;
    for (const std::string& difference : differences(expected, actual)) {
        sentence += (sentence.empty() ? "" : "; ") + difference;
    }
    return sentence;
}

class Check
{
public:
    Check(const Json& wholeAssertion, const ControlledPrinter& asked)
        : assertion(wholeAssertion), printer(asked), trace(asked.station.trace), since(positionIn())
    {
    }

    std::vector<std::string> run()
    {
        checkExchanges("received", [](const Exchanged& e) { return e.kind == Exchanged::Kind::request; });
        checkExchanges("executed", [](const Exchanged& e) { return e.isExecuted; });
        checkExchanges("acknowledged", [](const Exchanged& e) { return e.isAcknowledged; });
        checkRepeats();
        checkDocuments();
        checkSituation();
        return std::move(found);
    }

private:
    [[nodiscard]] Position positionIn() const
    {
        const Members members(assertion, "");
        members.allow(
            {"since", "received", "executed", "acknowledged", "committed", "repeated", "situation"});
        const Json* given = members.find("since");
        if (given == nullptr) {
            return printer.since;
        }
        const Members place(*given, "since");
        place.allow({"exchange", "document"});
        constexpr std::int64_t last = std::numeric_limits<int>::max();
        return {static_cast<std::uint64_t>(
                    place.whole("exchange", static_cast<std::int64_t>(printer.since.exchange), 1, last)),
                static_cast<int>(place.whole("document", printer.since.document, 0, last))};
    }

    void requireTrace() const
    {
        if (trace.isGone(since.exchange)) {
            throw ControlRefusal(gone, "The trace begins at exchange " + std::to_string(trace.first()) +
                                           " and the assertion at " + std::to_string(since.exchange) +
                                           ", which is forgotten; assert sooner, or give a later \"since\".");
        }
    }

    template <typename Counts>
    void checkExchanges(const std::string& name, Counts counts)
    {
        if (!assertion.contains(name)) {
            return;
        }
        requireTrace();
        std::vector<Json> views;
        for (std::uint64_t number = since.exchange; number < trace.end(); ++number) {
            if (const Exchanged& exchanged = *trace.find(number); counts(exchanged)) {
                views.push_back(viewOf(exchanged));
            }
        }
        for (Json expected : listIn(assertion, name)) {
            const std::int64_t wanted = Members(expected, name).whole("count", 1, 0, 1'000'000);
            expected.erase("count");
            checkCount(name, expected, views, wanted);
        }
    }

    void checkCount(const std::string& name, const Json& expected, const std::vector<Json>& views,
                    std::int64_t wanted)
    {
        const auto count = std::count_if(views.begin(), views.end(), [&](const Json& view) {
            return differences(expected, view).empty();
        });
        if (count == wanted) {
            return;
        }
        std::string sentence = name + ": " + std::to_string(count) + " exchanges are " + shown(expected) +
                               ", " + std::to_string(wanted) + " are expected";
        if (const int best = nearest(expected, views); count == 0 && best >= 0) {
            const Json& view = views[static_cast<std::size_t>(best)];
            sentence +=
                "; the nearest is exchange " + view["number"].dump() + ": " + differenceFrom(expected, view);
        } else if (count == 0) {
            sentence += "; nothing was " + name;
        }
        found.push_back(sentence);
    }

    void checkRepeats()
    {
        const Members members(assertion, "");
        if (members.find("repeated") == nullptr) {
            return;
        }
        requireTrace();
        const std::int64_t wanted = members.whole("repeated", 0, 0, 1'000'000);
        std::int64_t count = 0;
        std::string which;
        for (std::uint64_t number = since.exchange; number < trace.end(); ++number) {
            const Exchanged& exchanged = *trace.find(number);
            if (exchanged.repeatOf != 0) {
                ++count;
                which += (which.empty() ? ": " : ", ") + std::to_string(number) + " " +
                         std::string(exchanged.name()) + " repeats " + std::to_string(exchanged.repeatOf);
            }
        }
        if (count != wanted) {
            found.push_back("repeated: " + std::to_string(count) + " requests repeat an earlier one, " +
                            std::to_string(wanted) + " are expected" + which);
        }
    }

    void checkDocuments()
    {
        if (!assertion.contains("committed")) {
            return;
        }
        const Json& expected = listIn(assertion, "committed");
        const std::vector<Json> documents = documentsOf(expected);
        if (expected.size() != documents.size()) {
            found.push_back("committed: there are " + std::to_string(documents.size()) + " documents, " +
                            std::to_string(expected.size()) + " are expected");
        }
        for (std::size_t index = 0; index < expected.size(); ++index) {
            const bool isRight =
                index < documents.size() && differences(expected[index], documents[index]).empty();
            if (!isRight) {
                found.push_back("committed[" + std::to_string(index) + "]: no document is " +
                                shown(expected[index]) + " there" +
                                nearestDocument(expected[index], documents));
            }
        }
        for (std::size_t index = expected.size(); index < documents.size(); ++index) {
            found.push_back("committed: nobody expects " + called(documents[index]));
        }
    }

    static std::string called(const Json& document)
    {
        return document["kind"].get<std::string>() + " " + document["number"].dump() + " of " +
               document["moment"].get<std::string>() + ", total " + document["total"].get<std::string>();
    }

    static std::string nearestDocument(const Json& expected, const std::vector<Json>& documents)
    {
        const int best = nearest(expected, documents);
        if (best < 0) {
            return "; nothing was committed";
        }
        const Json& document = documents[static_cast<std::size_t>(best)];
        const std::string difference = differenceFrom(expected, document);
        return "; the nearest is " + called(document) + ": " +
               (difference.empty() ? "it is at another place, " + std::to_string(best) : difference);
    }

    // Those since then, of the kinds that are named.
    [[nodiscard]] std::vector<Json> documentsOf(const Json& expected) const
    {
        const State& state = printer.station.printer.state();
        if (since.document > state.standing->documents) {
            throw ControlRefusal(gone,
                                 "The journal has been cleared since: it holds fewer documents than the "
                                 "assertion begins at; give a later \"since\".");
        }
        std::set<Document::Kind> kinds;
        for (const Json& pattern : expected) {
            kinds.insert(kindIn(pattern));
        }
        std::vector<Json> documents;
        DocumentQuery query;
        query.skip = since.document;
        printer.station.printer.memory().read(query, [&](const Document& document) {
            if (kinds.empty() || kinds.contains(document.kind)) {
                documents.push_back(toJson(document, *state.settings));
            }
            return true;
        });
        return documents;
    }

    static Document::Kind kindIn(const Json& pattern)
    {
        const std::string name = Members(pattern, "committed").text("kind", "receipt", 1, 20);
        const auto kind = documentKindCalled(name);
        if (!kind) {
            throw ControlRefusal(status::badRequest,
                                 "There is no document of the kind \"" + name +
                                     "\"; there are receipt, cancelledReceipt, drawer, closure "
                                     "and report.");
        }
        return *kind;
    }

    void checkSituation()
    {
        const auto wanted = assertion.find("situation");
        const std::string_view actual = situationName(printer.station.printer);
        if (wanted != assertion.end() && *wanted != actual) {
            found.push_back("situation: it is \"" + std::string(actual) + "\", " + shown(*wanted) +
                            " is expected");
        }
    }

    const Json& assertion;
    const ControlledPrinter& printer;
    const Trace& trace;
    Position since;
    std::vector<std::string> found;
};

} // namespace

std::vector<std::string> check(const Json& assertion, const ControlledPrinter& printer)
{
    return Check(assertion, printer).run();
}

} // namespace virtual_printer
