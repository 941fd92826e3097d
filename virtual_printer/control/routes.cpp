#include "virtual_printer/control/routes.h"

#include "virtual_printer/control/openapi.h"

#include <array>
#include <charconv>

namespace virtual_printer {
namespace {

Outcome showDescription(const Call& /*call*/)
{
    return HttpAnswer{.status = 200, .body = std::string(openApiDescription())};
}

constexpr std::array routes = {
    Route{"GET", "/openapi.json", showDescription},
    Route{"GET", "/printers", listPrinters},
    Route{"GET", "/events", followPrinters, true},
    Route{"GET", "/printers/{printer}/state", showState},
    Route{"GET", "/printers/{printer}/news", showNews, true},
    Route{"GET", "/printers/{printer}/totals", showTotals},
    Route{"GET", "/printers/{printer}/totals/hours", showHours},
    Route{"GET", "/printers/{printer}/paper", showPaper, true},
    Route{"GET", "/printers/{printer}/pictures", showPictures},
    Route{"POST", "/printers/{printer}/reset", resetPrinter},
    Route{"GET", "/printers/{printer}/clock", showClock},
    Route{"PATCH", "/printers/{printer}/clock", changeClock},
    Route{"GET", "/printers/{printer}/hardware", showHardware},
    Route{"PATCH", "/printers/{printer}/hardware", changeHardware},
    Route{"GET", "/printers/{printer}/settings", showSettings},
    Route{"PATCH", "/printers/{printer}/settings", changeSettings},
    Route{"GET", "/printers/{printer}/documents", listDocuments, true},
    Route{"GET", "/printers/{printer}/documents/{document}", showDocument},
    Route{"GET", "/printers/{printer}/documents/{document}/paper.json", showDocumentLines},
    Route{"GET", "/printers/{printer}/documents/{document}/paper.svg", drawDocument},
    Route{"GET", "/printers/{printer}/documents/{document}/paper.txt", writeDocument},
    Route{"GET", "/printers/{printer}/closures", listClosures, true},
    Route{"POST", "/printers/{printer}/snapshots", keepSnapshot},
    Route{"POST", "/printers/{printer}/restore", restoreSnapshot},
    Route{"GET", "/snapshots", listSnapshots},
    Route{"DELETE", "/snapshots/{snapshot}", forgetSnapshot, true},
    Route{"POST", "/printers/{printer}/assert", assertNow},
    Route{"POST", "/printers/{printer}/wait", waitFor},
    Route{"GET", "/printers/{printer}/trace", showTrace, true},
    Route{"GET", "/printers/{printer}/trace/events", followTrace, true},
    Route{"GET", "/printers/{printer}/faults", showFaults},
    Route{"POST", "/printers/{printer}/faults", armFaults},
    Route{"DELETE", "/printers/{printer}/faults", disarmFaults},
    Route{"DELETE", "/printers/{printer}/faults/{fault}", disarmFault},
};

} // namespace

std::span<const Route> controlRoutes()
{
    return routes;
}

Json queryOf(const Target& target)
{
    Json values = Json::object();
    for (const auto& [name, value] : target.query) {
        std::int64_t number = 0;
        const char* end = value.data() + value.size();
        const auto parsed = std::from_chars(value.data(), end, number);
        const bool isNumber = !value.empty() && parsed.ec == std::errc() && parsed.ptr == end;
        values[name] = isNumber ? Json(number) : Json(value);
    }
    return values;
}

} // namespace virtual_printer
