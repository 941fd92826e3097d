// The clock that a printer is started with: the system's, or one that began at a given moment and runs. The
// printer's own clock is this one and the offset that setDateTime has set.
#pragma once

#include "virtual_printer/fiscal/moment.h"

#include <chrono>
#include <functional>

namespace virtual_printer {

using Clock = std::function<Moment()>;

Clock systemClock();
// What time does, in steps of its own.
using PresentTime = std::function<std::chrono::steady_clock::time_point()>;
// Runs on from `start`, so many times as fast as time does, and stands when it has come to `end`.
Clock clockFrom(Moment start, int speed = 1, Moment end = lastMoment,
                const PresentTime& time = std::chrono::steady_clock::now);
// Always shows the same.
Clock standingClock(Moment moment);

} // namespace virtual_printer
