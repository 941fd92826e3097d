// A printer with its name, the trace of its exchanges, the faults that it is armed with, and those who watch
// it. What has happened is shown after the till has its answer, or before somebody else asks what has
// happened.
#pragma once

#include "virtual_printer/faults/faults.h"
#include "virtual_printer/printers/printer.h"
#include "virtual_printer/trace/trace.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace virtual_printer {

class Station
{
public:
    using Observer = std::function<void(const Station&, const Happened&)>;

    Station(std::string ownName, Printer device) : name(std::move(ownName)), printer(std::move(device)) {}

    void watch(Observer observer) { observers.push_back(std::move(observer)); }

    void show()
    {
        for (const Happened& event : printer.takeHappened()) {
            for (const Observer& observer : observers) {
                observer(*this, event);
            }
        }
    }

    // The number of a connection that begins.
    std::uint64_t newTill() { return ++tills; }

    std::string name;
    Printer printer;
    Trace trace;
    Faults faults;

private:
    std::vector<Observer> observers;
    std::uint64_t tills = 0;
};

} // namespace virtual_printer
