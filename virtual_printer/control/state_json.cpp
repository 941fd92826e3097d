#include "virtual_printer/control/state_json.h"

#include "virtual_printer/control/document_json.h"
#include "virtual_printer/fiscal/decide.h"

namespace virtual_printer {
namespace {

Json receiptToJson(const State& state)
{
    if (!state.receipt) {
        return nullptr;
    }
    Json receipt = toJson(state.receipt->document, *state.settings, 0);
    receipt["paid"] = formatCents(state.receipt->paid);
    receipt["due"] = formatCents(state.receipt->due());
    return receipt;
}

} // namespace

std::string_view situationName(const Printer& printer)
{
    switch (situationOf(printer.state(), printer.now())) {
    case Situation::noDay:
        return "noDay";
    case Situation::idle:
        return "idle";
    case Situation::open:
        return "open";
    case Situation::paying:
        return "paying";
    case Situation::overdue:
        return "overdue";
    case Situation::defiscalized:
        break;
    }
    return "defiscalized";
}

Json toJson(const Position& position)
{
    return {{"exchange", position.exchange}, {"document", position.document}};
}

Json clockToJson(const ControlledPrinter& printer)
{
    return {{"now", toText(printer.station.printer.now())},
            {"mode", printer.clock.stands ? "stands" : "runs"},
            {"speed", printer.clock.speed}};
}

Json hardwareToJson(const Hardware& hardware)
{
    return {{"paper", hardware.paperIsOut   ? "out"
                      : hardware.paperIsLow ? "low"
                                            : "ok"},
            {"cover", hardware.coverIsOpen ? "open" : "closed"},
            {"drawer", hardware.drawerIsOpen ? "open" : "closed"},
            {"display", hardware.display},
            {"operatorDisplay", hardware.operatorDisplay}};
}

Json stateToJson(const ControlledPrinter& printer)
{
    const State& state = printer.station.printer.state();
    return {{"situation", situationName(printer.station.printer)},
            {"life", nameOf(state.standing->life)},
            {"dayBegan", state.standing->dayIsOpen ? Json(toText(state.standing->dayBegan)) : Json()},
            {"clock", clockToJson(printer)},
            {"hardware", hardwareToJson(*state.hardware)},
            {"receipt", receiptToJson(state)},
            {"position", toJson(printer.present())},
            {"paper", {{"first", printer.roll.first()}, {"next", printer.roll.end()}}},
            {"since", toJson(printer.since)}};
}

Json totalsToJson(const Printer& printer)
{
    const Standing& standing = *printer.state().standing;
    const PaymentNames names = namesIn(*printer.state().settings);
    return {{"day", toJson(standing.day, names)},
            {"closedDays", toJson(standing.ever, names)},
            {"drawer", paymentsToJson(standing.drawer, names)},
            {"lastReceipt", standing.receipts},
            {"lastClosure", standing.closures},
            {"documents", standing.documents}};
}

} // namespace virtual_printer
