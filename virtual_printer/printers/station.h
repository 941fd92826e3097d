// A printer with its name, and those who watch it. What has happened is shown after the till has its answer.
#pragma once

#include "virtual_printer/printers/printer.h"

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

    std::string name;
    Printer printer;

private:
    std::vector<Observer> observers;
};

} // namespace virtual_printer
