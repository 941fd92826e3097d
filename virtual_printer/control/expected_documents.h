// The documents that an assertion expects in the journal: of the kinds that it names these and no others, in
// this order; of all kinds when it names none.
#pragma once

#include "virtual_printer/control/message.h"
#include "virtual_printer/fiscal/document.h"
#include "virtual_printer/printers/printer.h"

#include <functional>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace virtual_printer {

class ExpectedDocuments
{
public:
    // Throws ControlRefusal: it is not understood, or no document could ever fit.
    explicit ExpectedDocuments(Json list);

    // Behind the first `since` documents. Both throw ControlRefusal when the journal has not so many.
    bool hold(const Printer& printer, int since);
    // A sentence for each difference.
    [[nodiscard]] std::vector<std::string> differences(const Printer& printer, int since) const;

private:
    [[nodiscard]] bool isKept(const Printer& printer, int since) const;
    // Until the reader returns false.
    void read(const Printer& printer, int since, const std::function<bool(const Json&)>& reader) const;

    Json expected;
    std::set<Document::Kind> kinds;

    // What the last answer was for: while the printer stands at the same, it is the same.
    std::shared_ptr<const Standing> standing;
    std::shared_ptr<const Settings> settings;
    int begin = 0;
    bool held = false;
};

} // namespace virtual_printer
