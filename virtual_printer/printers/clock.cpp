#include "virtual_printer/printers/clock.h"

#include <chrono>
#include <ctime>

namespace virtual_printer {
namespace {

using std::chrono::floor;
using std::chrono::seconds;
using std::chrono::steady_clock;

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

Clock clockFrom(Moment start, int speed)
{
    return [start, speed, began = steady_clock::now()] {
        return start + floor<seconds>((steady_clock::now() - began) * speed);
    };
}

Clock standingClock(Moment moment)
{
    return [moment] { return moment; };
}

} // namespace virtual_printer
