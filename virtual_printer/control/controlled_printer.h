// A printer as the control interface knows it: with the clock that it was given, and from where on assertions
// count.
#pragma once

#include "virtual_printer/control/day_hours.h"
#include "virtual_printer/control/message.h"
#include "virtual_printer/control/roll.h"
#include "virtual_printer/printers/station.h"

#include <cstdint>

namespace virtual_printer {

// A place in what a printer has done so far: in its trace, and in its journal.
struct Position
{
    std::uint64_t exchange = 1; // the number of the next one
    int document = 0;           // how many the journal holds
};

struct ClockSetting
{
    bool stands = false;
    int speed = 1;
};

struct ControlledPrinter
{
    explicit ControlledPrinter(Station& at) : station(at), startedClock(at.printer.currentClock())
    {
        at.printer.remember();
        since = present();
        roll.begin(at.printer);
    }

    [[nodiscard]] Position present() const
    {
        return {station.trace.end(), station.printer.state().standing->documents};
    }
    // For whoever watches: something is not as it was.
    void hasChanged() { ++changes; }
    void take(const Happened& event)
    {
        const int documents = station.printer.state().standing->documents;
        if (documents < documentsKnown) {
            roll.forgetDocuments();
            hours = {};
        }
        documentsKnown = documents;
        roll.add(event);
        hasChanged();
    }
    // Another memory has taken the place of its own.
    void beginAnew()
    {
        documentsKnown = present().document;
        roll.begin(station.printer);
        hours = {};
        mark();
    }
    // It has become another one: from here on assertions count that do not say otherwise.
    void mark()
    {
        station.trace.beginAnew();
        since = present();
    }

    Station& station;
    Clock startedClock;
    ClockSetting clock{};
    Position since{};
    Roll roll;
    DayHours hours;
    int documentsKnown = 0;
    std::uint64_t changes = 0;
};

} // namespace virtual_printer
