// What the control interface can do: a table of methods and paths, and the function for each.
#pragma once

#include "virtual_printer/control/body.h"
#include "virtual_printer/control/controlled_printer.h"
#include "virtual_printer/control/snapshots.h"
#include "virtual_printer/printers/codes.h"

#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace virtual_printer {

using ControlledPrinters = std::vector<std::unique_ptr<ControlledPrinter>>;

// A request on its way to its route.
struct Call
{
    const HttpRequest& request;
    const Target& target;
    const Json& body;
    const ControlledPrinters& printers;
    Snapshots& snapshots;
    const State& whenNew;
    const Codes& codes;     // that refusals have on the wire
    const std::string& run; // another one after each start of the program
    // Has everything that waits for something be looked at again, after others had their turn.
    const std::function<void()>& lookAgain;
    ControlledPrinter* addressed; // none where the path names no printer

    [[nodiscard]] ControlledPrinter& printer() const { return *addressed; }
    [[nodiscard]] Members members() const { return {body, ""}; }
};

struct Route
{
    std::string_view method;
    std::string_view path; // "{printer}" stands for the name of one, other parts in braces for any
    Outcome (*handle)(const Call&);
    bool takesQuery = false; // and says itself what of it does not belong there
};

std::span<const Route> controlRoutes();

// printer_routes.cpp
Outcome listPrinters(const Call& call);
Outcome showState(const Call& call);
Outcome showTotals(const Call& call);
Outcome resetPrinter(const Call& call);
Outcome showClock(const Call& call);
Outcome changeClock(const Call& call);
Outcome showHardware(const Call& call);
Outcome changeHardware(const Call& call);
Outcome showSettings(const Call& call);
Outcome changeSettings(const Call& call);

// event_routes.cpp
Outcome followPrinters(const Call& call);

// paper_routes.cpp
Outcome showPaper(const Call& call);
Outcome showDocument(const Call& call);
Outcome showDocumentLines(const Call& call);
Outcome drawDocument(const Call& call);
Outcome writeDocument(const Call& call);
Outcome showPictures(const Call& call);

// news_routes.cpp
Outcome showNews(const Call& call);

// document_routes.cpp
Outcome showHours(const Call& call);
Outcome listDocuments(const Call& call);
Outcome listClosures(const Call& call);

// snapshot_routes.cpp
Outcome listSnapshots(const Call& call);
Outcome keepSnapshot(const Call& call);
Outcome restoreSnapshot(const Call& call);
Outcome forgetSnapshot(const Call& call);

// assertion_routes.cpp
Outcome assertNow(const Call& call);
Outcome waitFor(const Call& call);

// trace_routes.cpp
Outcome showTrace(const Call& call);
Outcome followTrace(const Call& call);

// fault_routes.cpp
Outcome showFaults(const Call& call);
Outcome armFaults(const Call& call);
Outcome disarmFaults(const Call& call);
Outcome disarmFault(const Call& call);

// What several of them show.
Json rollLineToJson(const RollLine& line, const Settings& settings);
Json faultsToJson(const Faults& faults);

// The numbers and texts of a query as the members of an object.
Json queryOf(const Target& target);

} // namespace virtual_printer
