// What a test expects of a printer, held against what it has received, executed, acknowledged and committed:
// each by itself, because the trouble of a till lies between them.
#pragma once

#include "virtual_printer/control/controlled_printer.h"
#include "virtual_printer/control/expected_documents.h"
#include "virtual_printer/control/expected_exchanges.h"

#include <optional>
#include <string>
#include <vector>

namespace virtual_printer {

// {"received": [{"name": "payment", "count": 2}], "executed": ..., "acknowledged": ...,
//  "committed": [{"kind": "receipt", "total": "12.50"}], "repeated": 0, "situation": "idle", "since": {...}}
//
// Each entry of received, executed and acknowledged is a part of an exchange as the trace shows it, its
// fields by name, and how many there are of it, 1 when it does not say. `committed` are the documents
// themselves. `repeated` counts the requests that repeat an earlier one.
//
// It remembers what it has seen: held again after each change, it looks at the change.
class Assertion
{
public:
    // Throws ControlRefusal when it is not understood, or has an entry that nothing could ever fit: one whose
    // count is 0 would hold whatever happens.
    Assertion(const Json& assertion, const Codes& codes);

    // Both throw ControlRefusal when it asks for what trace or journal have not, or no longer.
    bool holds(const ControlledPrinter& printer);
    // A sentence for each difference; none when it holds.
    std::vector<std::string> differences(const ControlledPrinter& printer);

private:
    [[nodiscard]] Position begin(const ControlledPrinter& printer) const;

    std::optional<std::uint64_t> sinceExchange;
    std::optional<int> sinceDocument;
    ExpectedExchanges exchanges;
    std::optional<ExpectedDocuments> documents;
    std::optional<std::string> situation;
};

} // namespace virtual_printer
