// Who has changed, live: whoever watches asks for what it wants to see.
#include "virtual_printer/control/routes.h"

#include <utility>

namespace virtual_printer {
namespace {

std::string eventOf(const char* name, const Json& data)
{
    return std::string("event: ") + name + "\ndata: " + data.dump() + "\n\n";
}

Json noticeOf(const ControlledPrinter& printer)
{
    return {{"printer", printer.station.name},         {"changes", printer.changes},
            {"exchange", printer.station.trace.end()}, {"paper", printer.roll.end()},
            {"document", printer.present().document},  {"faults", printer.station.faults.list().size()}};
}

// A client of many changes a moment hears of the last ones only: it has no queue.
class Watcher
{
public:
    Watcher(const ControlledPrinters& all, std::string run)
        : printers(all), runOfProgram(std::move(run)), seen(all.size())
    {
    }

    std::string more()
    {
        std::string events;
        if (!hasBegun) {
            hasBegun = true;
            events = eventOf("start", {{"run", runOfProgram}, {"version", TELVOFM_VERSION_TEXT}});
        }
        for (std::size_t index = 0; index < printers.size(); ++index) {
            if (std::exchange(seen[index], printers[index]->changes + 1) != printers[index]->changes + 1) {
                events += eventOf("changed", noticeOf(*printers[index]));
            }
        }
        return events;
    }

private:
    const ControlledPrinters& printers;
    std::string runOfProgram;
    std::vector<std::uint64_t> seen; // one more than its changes; 0: none is known
    bool hasBegun = false;
};

} // namespace

Outcome followPrinters(const Call& call)
{
    const Json asked = queryOf(call.target);
    Members(asked, "").allow({});
    return Stream{"text/event-stream",
                  [watcher = Watcher(call.printers, call.run)]() mutable { return watcher.more(); }};
}

} // namespace virtual_printer
