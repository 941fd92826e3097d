#include "virtual_printer/printers/clock.h"

#include <algorithm>
#include <chrono>
#include <ctime>

namespace virtual_printer {
namespace {

using std::chrono::floor;
using std::chrono::seconds;

} // namespace

Clock systemClock()
{
    return [last = std::time_t(0), moment = Moment()]() mutable {
        const std::time_t present = std::time(nullptr);
        if (present == last) { // it is asked several times for each command
            return moment;
        }
        last = present;
        const std::tm* parts = std::localtime(&present); // one thread asks
        const auto day = std::chrono::local_days(std::chrono::year(parts->tm_year + 1900) /
                                                 (parts->tm_mon + 1) / parts->tm_mday);
        moment = Moment(day + std::chrono::hours(parts->tm_hour) + std::chrono::minutes(parts->tm_min) +
                        seconds(parts->tm_sec));
        return moment;
    };
}

// Whole seconds and what is over them by themselves: all of it in nanoseconds is soon more than there is room
// for.
Clock clockFrom(Moment start, int speed, Moment end, const PresentTime& time)
{
    return [start, speed, end, time, began = time()] {
        const auto passed = time() - began;
        const auto whole = floor<seconds>(passed);
        if (whole > (end - start) / speed) {
            return end;
        }
        return std::min(end, start + whole * speed + floor<seconds>((passed - whole) * speed));
    };
}

Clock standingClock(Moment moment)
{
    return [moment] { return moment; };
}

} // namespace virtual_printer
