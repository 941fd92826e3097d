#include "virtual_printer/control/body.h"
#include "virtual_printer/control/difference.h"
#include "virtual_printer/control/document_json.h"
#include "virtual_printer/control/expectation.h"

#include <set>

namespace virtual_printer {
namespace {

std::string called(const Json& document)
{
    return document["kind"].get<std::string>() + " " + document["number"].dump() + " of " +
           document["moment"].get<std::string>() + ", total " + document["total"].get<std::string>();
}

std::string nearestDocument(const Json& expected, const std::vector<Json>& documents)
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

Document::Kind kindIn(const Json& pattern)
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

// Those since then, of the kinds that are named.
std::vector<Json> documentsOf(const Json& expected, const Expectation& expectation)
{
    const State& state = expectation.printer.station.printer.state();
    if (expectation.since.document > state.standing->documents) {
        throw ControlRefusal(status::gone,
                             "The journal has been cleared since: it holds fewer documents than the "
                             "assertion begins at; give a later \"since\".");
    }
    std::set<Document::Kind> kinds;
    for (const Json& pattern : expected) {
        kinds.insert(kindIn(pattern));
    }
    std::vector<Json> documents;
    DocumentQuery query;
    query.skip = expectation.since.document;
    expectation.printer.station.printer.memory().read(query, [&](const Document& document) {
        if (kinds.empty() || kinds.contains(document.kind)) {
            documents.push_back(toJson(document, *state.settings));
        }
        return true;
    });
    return documents;
}

} // namespace

void checkDocuments(Expectation& expectation)
{
    if (!expectation.assertion.contains("committed")) {
        return;
    }
    const Json& expected = listIn(expectation.assertion, "committed");
    const std::vector<Json> documents = documentsOf(expected, expectation);
    if (expected.size() != documents.size()) {
        expectation.found.push_back("committed: there are " + std::to_string(documents.size()) +
                                    " documents, " + std::to_string(expected.size()) + " are expected");
    }
    for (std::size_t index = 0; index < expected.size(); ++index) {
        const bool isRight =
            index < documents.size() && differences(expected[index], documents[index]).empty();
        if (!isRight) {
            expectation.found.push_back("committed[" + std::to_string(index) + "]: no document is " +
                                        shown(expected[index]) + " there" +
                                        nearestDocument(expected[index], documents));
        }
    }
    for (std::size_t index = expected.size(); index < documents.size(); ++index) {
        expectation.found.push_back("committed: nobody expects " + called(documents[index]));
    }
}

} // namespace virtual_printer
