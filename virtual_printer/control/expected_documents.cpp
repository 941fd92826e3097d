#include "virtual_printer/control/expected_documents.h"

#include "virtual_printer/control/body.h"
#include "virtual_printer/control/difference.h"
#include "virtual_printer/control/document_json.h"

#include <limits>

namespace virtual_printer {
namespace {

// Every member that a document can have, with a value of its kind.
const Json& formOfDocument()
{
    static const Json form = [] {
        Document document;
        document.lines = {{.kind = Line::Kind::item, .right = "1", .vat = 'A', .quantity = 1}};
        for (char letter = 'A'; letter <= 'H'; ++letter) {
            document.byVat[letter] = 0;
        }
        document.byPayment[1] = 0;
        return toJson(document, Settings(), 0);
    }();
    return form;
}

Document::Kind kindIn(const Json& pattern, const std::string& place)
{
    constexpr std::size_t longest = 100;
    const std::string name = Members(pattern, place).text("kind", "receipt", 0, longest);
    const auto kind = documentKindCalled(name);
    if (!kind) {
        throw ControlRefusal(status::badRequest,
                             "There is no document of the kind \"" + name +
                                 "\"; there are receipt, cancelledReceipt, drawer, closure "
                                 "and report.");
    }
    return *kind;
}

std::string called(const Json& document)
{
    return document["kind"].get<std::string>() + " " + document["number"].dump() + " of " +
           document["moment"].get<std::string>() + ", total " + document["total"].get<std::string>();
}

std::string nearest(const Json& expected, const std::vector<Json>& documents)
{
    if (documents.empty()) {
        return "; nothing was committed";
    }
    std::size_t best = 0;
    std::size_t fewest = std::numeric_limits<std::size_t>::max();
    for (std::size_t index = 0; index < documents.size(); ++index) {
        if (const std::size_t places = distance(expected, documents[index]); places < fewest) {
            fewest = places;
            best = index;
        }
    }
    return "; the nearest is " + called(documents[best]) + ": " +
           (fewest == 0 ? "it is at another place, " + std::to_string(best)
                        : differenceFrom(expected, documents[best]));
}

} // namespace

ExpectedDocuments::ExpectedDocuments(Json list) : expected(std::move(list))
{
    for (std::size_t index = 0; index < expected.size(); ++index) {
        const std::string place = "committed[" + std::to_string(index) + "]";
        if (expected[index].empty()) {
            throw ControlRefusal(status::badRequest,
                                 "\"" + place + R"(" says nothing; give a "kind" at least.)");
        }
        requireForm(expected[index], formOfDocument(), place);
        kinds.insert(kindIn(expected[index], place));
    }
}

bool ExpectedDocuments::hold(const Printer& printer, int since)
{
    const State& state = printer.state();
    if (standing != state.standing || settings != state.settings || begin != since) {
        held = isKept(printer, since);
        standing = state.standing;
        settings = state.settings;
        begin = since;
    }
    return held;
}

bool ExpectedDocuments::isKept(const Printer& printer, int since) const
{
    std::size_t index = 0;
    bool isSo = true;
    read(printer, since, [&](const Json& document) {
        isSo = index < expected.size() && distance(expected[index], document) == 0;
        ++index;
        return isSo;
    });
    return isSo && index == expected.size();
}

std::vector<std::string> ExpectedDocuments::differences(const Printer& printer, int since) const
{
    std::vector<Json> documents;
    read(printer, since, [&documents](const Json& document) {
        documents.push_back(document);
        return true;
    });
    std::vector<std::string> found;
    if (expected.size() != documents.size()) {
        found.push_back("committed: there are " + std::to_string(documents.size()) + " documents, " +
                        std::to_string(expected.size()) + " are expected");
    }
    for (std::size_t index = 0; index < expected.size(); ++index) {
        if (index >= documents.size() || distance(expected[index], documents[index]) != 0) {
            found.push_back("committed[" + std::to_string(index) + "]: no document is " +
                            shown(expected[index]) + " there" + nearest(expected[index], documents));
        }
    }
    constexpr std::size_t mostNamed = 20;
    for (std::size_t index = expected.size(); index < documents.size(); ++index) {
        if (index - expected.size() == mostNamed) {
            found.push_back("committed: nobody expects " + std::to_string(documents.size() - index) +
                            " more documents");
            break;
        }
        found.push_back("committed: nobody expects " + called(documents[index]));
    }
    return found;
}

void ExpectedDocuments::read(const Printer& printer, int since,
                             const std::function<bool(const Json&)>& reader) const
{
    const State& state = printer.state();
    if (since > state.standing->documents) {
        throw ControlRefusal(status::gone,
                             "The journal has been cleared since: it holds fewer documents than the "
                             "assertion begins at; give a later \"since\".");
    }
    DocumentQuery query;
    query.skip = since;
    printer.memory().read(query, [&](const Document& document, std::int64_t position) {
        const bool isOfThem = kinds.empty() || kinds.contains(document.kind);
        return !isOfThem || reader(toJson(document, *state.settings, position));
    });
}

} // namespace virtual_printer
