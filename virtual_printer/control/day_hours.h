// What was sold in each hour of the day that runs. The journal is read on from where it was read to the last
// time, and never much of it at once: tills wait meanwhile.
#pragma once

#include "virtual_printer/printers/printer.h"

#include <map>

namespace virtual_printer {

class DayHours
{
public:
    struct Hour
    {
        int receipts = 0;
        Cents turnover = 0;
    };

    // False when there is more to be read.
    bool readOn(const Printer& printer);
    // By the beginning of each.
    [[nodiscard]] const std::map<Moment, Hour>& byHour() const { return hours; }

private:
    std::map<Moment, Hour> hours;
    int closure = 0; // that will end the day
    std::int64_t documentsRead = 0;
};

} // namespace virtual_printer
