#include "virtual_printer/control/assertion.h"

#include "virtual_printer/control/body.h"
#include "virtual_printer/control/state_json.h"

#include <algorithm>
#include <limits>

namespace virtual_printer {
namespace {

void requireLists(const Members& members)
{
    std::size_t entries = 0;
    for (const char* name : {"received", "executed", "acknowledged", "committed"}) {
        const Json* list = members.find(name);
        if (list == nullptr) {
            continue;
        }
        if (!list->is_array() ||
            !std::all_of(list->begin(), list->end(), [](const Json& entry) { return entry.is_object(); })) {
            throw ControlRefusal(status::badRequest,
                                 "\"" + std::string(name) +
                                     R"(" is no list of objects; send one as [{"name": "payment"}].)");
        }
        entries += list->size();
    }
    if (entries > ExpectedExchanges::mostEntries) {
        throw ControlRefusal(status::badRequest, "An assertion has at most " +
                                                     std::to_string(ExpectedExchanges::mostEntries) +
                                                     " entries, and this one has " + std::to_string(entries) +
                                                     "; divide it into several, each with its \"since\".");
    }
}

// Whoever reads it first: what the parts say means nothing before the whole is in order.
const Json& checked(const Json& assertion)
{
    const Members members(assertion, "");
    members.allow({"since", "received", "executed", "acknowledged", "committed", "repeated", "situation"});
    requireLists(members);
    return assertion;
}

} // namespace

Assertion::Assertion(const Json& assertion, const Codes& codes) : exchanges(checked(assertion), codes)
{
    const Members members(assertion, "");
    if (const Json* committed = members.find("committed")) {
        documents.emplace(*committed);
    }
    if (members.find("situation") != nullptr) {
        situation =
            members.oneOf("situation", "", {"noDay", "idle", "open", "paying", "overdue", "defiscalized"});
    }
    if (const Json* since = members.find("since")) {
        const Members place(*since, "since");
        place.allow({"exchange", "document"});
        constexpr std::int64_t last = std::numeric_limits<int>::max();
        if (place.find("exchange") != nullptr) {
            sinceExchange = static_cast<std::uint64_t>(place.whole("exchange", 1, 1, last));
        }
        if (place.find("document") != nullptr) {
            sinceDocument = static_cast<int>(place.whole("document", 0, 0, last));
        }
    }
}

bool Assertion::holds(const ControlledPrinter& printer)
{
    const Position since = begin(printer);
    // All of them are asked: each may have to refuse.
    const bool areExchanged = exchanges.hold(printer.station.trace, since.exchange);
    const bool areKept = !documents || documents->hold(printer.station.printer, since.document);
    return areExchanged && areKept && (!situation || *situation == situationName(printer.station.printer));
}

std::vector<std::string> Assertion::differences(const ControlledPrinter& printer)
{
    const Position since = begin(printer);
    std::vector<std::string> found = exchanges.differences(printer.station.trace, since.exchange);
    if (documents && !documents->hold(printer.station.printer, since.document)) {
        for (std::string& sentence : documents->differences(printer.station.printer, since.document)) {
            found.push_back(std::move(sentence));
        }
    }
    const std::string_view actual = situationName(printer.station.printer);
    if (situation && *situation != actual) {
        found.push_back("situation: it is \"" + std::string(actual) + "\", \"" + *situation +
                        "\" is expected");
    }
    return found;
}

Position Assertion::begin(const ControlledPrinter& printer) const
{
    if (documents && sinceExchange.value_or(printer.journalBegan) < printer.journalBegan) {
        throw ControlRefusal(status::gone, "The journal has begun anew since, before exchange " +
                                               std::to_string(printer.journalBegan) +
                                               "; give a later \"since\".");
    }
    return {sinceExchange.value_or(printer.since.exchange), sinceDocument.value_or(printer.since.document)};
}

} // namespace virtual_printer
