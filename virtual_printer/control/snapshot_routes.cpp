// Keeping what a printer keeps, and giving it back to this or another one.
#include "virtual_printer/control/routes.h"
#include "virtual_printer/control/state_json.h"

namespace virtual_printer {
namespace {

constexpr std::size_t longestName = 64;

Snapshots::Place placeIn(const Members& members)
{
    return members.oneOf("in", "memory", {"memory", "file"}) == "file" ? Snapshots::Place::file
                                                                       : Snapshots::Place::memory;
}

// The printer's time goes on; only the memory is another.
void restore(ControlledPrinter& printer, const Memory& memory)
{
    Printer& device = printer.station.printer;
    const auto offsetBefore = device.state().standing->clockOffset;
    device.takeOver(memory);
    const auto shift = offsetBefore - device.state().standing->clockOffset;
    if (shift != std::chrono::seconds(0)) {
        device.setClock([before = device.currentClock(), shift] { return before() + shift; });
    }
    printer.beginAnew(); // first: what the faults have put off is none of the restored printer's
    printer.station.faults.endDeeds();
}

} // namespace

Outcome listSnapshots(const Call& call)
{
    return jsonAnswer({{"snapshots", call.snapshots.list()}});
}

Outcome keepSnapshot(const Call& call)
{
    const Members members = call.members();
    members.allow({"name", "in"});
    const std::string name = members.text("name", "", 1, longestName);
    call.snapshots.keep(name, placeIn(members), call.printer().station.name,
                        call.printer().station.printer.snapshot());
    constexpr int created = 201;
    return jsonAnswer({{"done", true}}, created);
}

Outcome restoreSnapshot(const Call& call)
{
    const Members members = call.members();
    members.allow({"name", "in"});
    call.snapshots.read(members.text("name", "", 1, longestName), placeIn(members),
                        [&](const Memory& memory) { restore(call.printer(), memory); });
    return jsonAnswer(stateToJson(call.printer()));
}

Outcome forgetSnapshot(const Call& call)
{
    const Json asked = queryOf(call.target);
    const Members members(asked, "");
    members.allow({"in"});
    call.snapshots.forget(call.target.path.at(1), placeIn(members));
    return jsonAnswer({{"done", true}});
}

} // namespace virtual_printer
