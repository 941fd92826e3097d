// One printer: what it stands at, its clock, what a person does at it, its settings.
#include "virtual_printer/control/document_json.h"
#include "virtual_printer/control/routes.h"
#include "virtual_printer/control/settings_json.h"
#include "virtual_printer/control/state_json.h"

namespace virtual_printer {
namespace {

// The printer's clock shows `moment`, and goes on as the setting says.
void startClock(ControlledPrinter& printer, Moment moment, ClockSetting setting)
{
    Printer& device = printer.station.printer;
    const Moment withoutOffset = moment - device.state().standing->clockOffset;
    const Moment end = lastMoment - device.state().standing->clockOffset;
    device.setClock(setting.stands ? standingClock(withoutOffset)
                                   : clockFrom(withoutOffset, setting.speed, end));
    printer.clock = setting;
}

// What the printer's clock cannot go before.
std::string latestIn(const State& state)
{
    const Standing& standing = *state.standing;
    return state.receipt                                                     ? "the open receipt"
           : standing.dayIsOpen && standing.dayBegan > standing.lastDocument ? "the open day"
                                                                             : "the last document";
}

// A memory as it is when a printer is started for the first time.
Memory memoryOf(const State& state, Moment now)
{
    Draft draft(state, now);
    draft.standing();
    draft.settings();
    draft.pictures();
    Memory memory;
    memory.commit(State(), draft);
    return memory;
}

} // namespace

Outcome listPrinters(const Call& call)
{
    Json list = Json::array();
    for (const auto& printer : call.printers) {
        list.push_back(
            {{"name", printer->station.name}, {"situation", situationName(printer->station.printer)}});
    }
    return jsonAnswer({{"printers", list}});
}

Outcome showState(const Call& call)
{
    return jsonAnswer(stateToJson(call.printer()));
}

Outcome showTotals(const Call& call)
{
    return jsonAnswer(totalsToJson(call.printer().station.printer));
}

Outcome resetPrinter(const Call& call)
{
    const Members members = call.members();
    members.allow({"to"});
    const bool isNew = members.oneOf("to", "new", {"new", "started"}) == "new";
    ControlledPrinter& printer = call.printer();
    Printer& device = printer.station.printer;
    if (isNew) {
        device.takeOver(memoryOf(call.whenNew, device.now()));
    } else {
        device.goBack();
    }
    device.setClock(isNew ? printer.clockWhenNew : printer.startedClock);
    printer.clock = {};
    printer.beginAnew(); // first: what the faults have put off is none of the new printer's
    printer.station.faults.disarmAll();
    return jsonAnswer(stateToJson(printer));
}

Outcome showClock(const Call& call)
{
    return jsonAnswer(clockToJson(call.printer()));
}

Outcome changeClock(const Call& call)
{
    constexpr std::int64_t fastest = 86'400;
    constexpr std::int64_t farthest = 10LL * 366 * 24 * 60 * 60;
    const Members members = call.members();
    members.allow({"now", "forward", "mode", "speed"});
    ControlledPrinter& printer = call.printer();
    const Printer& device = printer.station.printer;
    const Moment moment = members.moment("now").value_or(device.now()) +
                          std::chrono::seconds(members.whole("forward", 0, 0, farthest));
    if (moment > lastMoment) {
        throw ControlRefusal(status::badRequest, "The clock ends with the year 9999; give an earlier \"now\" "
                                                 "or a smaller \"forward\".");
    }
    const ClockSetting setting = {
        .stands =
            members.oneOf("mode", printer.clock.stands ? "stands" : "runs", {"stands", "runs"}) == "stands",
        .speed = static_cast<int>(members.whole("speed", printer.clock.speed, 1, fastest))};
    if (moment < device.earliest()) {
        throw ControlRefusal(status::conflict, "The clock cannot go before " + latestIn(device.state()) +
                                                   ", of " + toText(device.earliest()) +
                                                   "; give a later moment, or reset the printer first.");
    }
    startClock(printer, moment, setting);
    return jsonAnswer(clockToJson(printer));
}

Outcome showHardware(const Call& call)
{
    return jsonAnswer(hardwareToJson(*call.printer().station.printer.state().hardware));
}

Outcome changeHardware(const Call& call)
{
    const Members members = call.members();
    members.allow({"paper", "cover", "drawer", "display", "operatorDisplay"});
    constexpr std::size_t longestText = 255;
    Printer& printer = call.printer().station.printer;
    Hardware hardware = *printer.state().hardware;
    if (members.find("paper") != nullptr) {
        const std::string paper = members.oneOf("paper", "", {"ok", "low", "out"});
        hardware.paperIsOut = paper == "out";
        hardware.paperIsLow = paper == "low";
    }
    const auto isOpen = [&members](std::string_view part, bool before) {
        return members.oneOf(part, before ? "open" : "closed", {"open", "closed"}) == "open";
    };
    hardware.coverIsOpen = isOpen("cover", hardware.coverIsOpen);
    hardware.drawerIsOpen = isOpen("drawer", hardware.drawerIsOpen);
    hardware.display = members.text("display", hardware.display, 0, longestText);
    hardware.operatorDisplay = members.text("operatorDisplay", hardware.operatorDisplay, 0, longestText);
    printer.changeHardware(hardware);
    return jsonAnswer(hardwareToJson(hardware));
}

Outcome showSettings(const Call& call)
{
    return jsonAnswer(toJson(*call.printer().station.printer.state().settings));
}

Outcome changeSettings(const Call& call)
{
    Printer& printer = call.printer().station.printer;
    if (printer.state().receipt) {
        throw ControlRefusal(status::conflict,
                             "A receipt is open, and its sums are those of the settings it began with; "
                             "end or cancel it first.");
    }
    const Settings next = changed(*printer.state().settings, call.body);
    printer.changeSettings(next);
    return jsonAnswer(toJson(next));
}

} // namespace virtual_printer
