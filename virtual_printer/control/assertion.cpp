#include "virtual_printer/control/assertion.h"

#include "virtual_printer/control/body.h"
#include "virtual_printer/control/difference.h"
#include "virtual_printer/control/expectation.h"
#include "virtual_printer/control/state_json.h"

#include <algorithm>
#include <limits>

namespace virtual_printer {
namespace {

Position beginOf(const Json& assertion, const ControlledPrinter& printer)
{
    const Members members(assertion, "");
    members.allow({"since", "received", "executed", "acknowledged", "committed", "repeated", "situation"});
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

void checkSituation(Expectation& expectation)
{
    const auto wanted = expectation.assertion.find("situation");
    const std::string_view actual = situationName(expectation.printer.station.printer);
    if (wanted != expectation.assertion.end() && *wanted != actual) {
        expectation.found.push_back("situation: it is \"" + std::string(actual) + "\", " + shown(*wanted) +
                                    " is expected");
    }
}

} // namespace

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

std::vector<std::string> check(const Json& assertion, const ControlledPrinter& printer)
{
    Expectation expectation{assertion, printer, beginOf(assertion, printer)};
    checkExchanges(expectation);
    checkDocuments(expectation);
    checkSituation(expectation);
    return std::move(expectation.found);
}

} // namespace virtual_printer
