// What faults still do to a till after the exchange that they have hit: to its probes, to the further blocks
// of its reply, and while the printer is without power.
#pragma once

#include "virtual_printer/faults/disturb.h"

#include <chrono>
#include <cstdint>
#include <map>

namespace virtual_printer {

class LastingFaults
{
public:
    using Time = std::chrono::steady_clock::time_point;

    // These have done something to an exchange, which is the last one; none where there were none.
    void goOnWith(Hits hits, Time now);
    // On a serial line the printer is off for so long, whatever else comes.
    void switchOff(std::uint64_t fault, std::chrono::milliseconds duration, Time now)
    {
        offUntil[fault] = now + duration;
    }
    // What this one still does ends; what others do goes on.
    void end(std::uint64_t number);

    [[nodiscard]] bool areNone() const { return ofLast.empty(); }
    [[nodiscard]] bool arePowerless(Time now) const;
    [[nodiscard]] Probes answerToProbes(Time now) const;
    // Those that damage the next block of the reply.
    Hits ofNextBlock() { return ofLast.empty() ? Hits() : withMoreBlocks(ofLast, blocksSent++); }

private:
    void follow();

    Hits ofLast;
    Time hit{};
    ProbesMeanwhile meanwhile;
    Time deafUntil{};
    int blocksSent = 0;
    std::map<std::uint64_t, Time> offUntil; // by the fault
};

} // namespace virtual_printer
