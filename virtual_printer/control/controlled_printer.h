// A printer as the control interface knows it: with the clock that it was given, and from where on assertions
// count.
#pragma once

#include "virtual_printer/control/day_hours.h"
#include "virtual_printer/control/message.h"
#include "virtual_printer/control/roll.h"
#include "virtual_printer/printers/station.h"

#include <cstdint>
#include <utility>

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
    ControlledPrinter(Station& at, Clock ofNewPrinter)
        : station(at), startedClock(at.printer.currentClock()), clockWhenNew(std::move(ofNewPrinter))
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
        if (event.clearsJournal) {
            roll.forgetDocuments();
            hours = {};
            since.document = 0; // there is nothing before it any more
            journalBegan = event.exchange + 1;
        }
        roll.add(event);
        hasChanged();
    }
    // Another memory has taken the place of its own.
    void beginAnew()
    {
        roll.begin(station.printer);
        hours = {};
        mark();
    }
    // It has become another one: from here on assertions count that do not say otherwise.
    void mark()
    {
        station.trace.beginAnew();
        since = present();
        journalBegan = since.exchange;
    }

    Station& station;
    Clock startedClock;
    Clock clockWhenNew;
    ClockSetting clock{};
    Position since{};
    Roll roll;
    DayHours hours;
    std::uint64_t journalBegan = 1; // before this exchange places in it meant other documents
    std::uint64_t changes = 0;
};

} // namespace virtual_printer
