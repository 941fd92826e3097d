// CTS and DSR of a serial line while faults hold them off: each is on again when the last that holds it lets
// go.
#pragma once

#include "virtual_printer/faults/steps.h"

#include <algorithm>
#include <vector>

namespace virtual_printer {

class HeldLines
{
public:
    // The lines as the till sees them after it.
    SetLines take(const SetLines& step)
    {
        if (!step.clearToSend || !step.dataSetReady) {
            holds.push_back(step);
        } else if (const auto found = holdOf(step.fault); found != holds.end()) {
            holds.erase(found);
        }
        return lines();
    }

    // Nobody holds them any more, but for want of power.
    SetLines forget()
    {
        std::erase_if(holds, [](const SetLines& hold) { return !isPowerless(hold); });
        return lines();
    }

    // A step by which one that stays would let go.
    [[nodiscard]] bool isAwaited(const Step& step) const
    {
        const auto* lines = std::get_if<SetLines>(&step.action);
        return lines != nullptr && std::any_of(holds.begin(), holds.end(), [lines](const SetLines& hold) {
                   return hold.fault == lines->fault;
               });
    }

    [[nodiscard]] bool areHeld() const { return !holds.empty(); }

private:
    static bool isPowerless(const SetLines& hold) { return !hold.clearToSend && !hold.dataSetReady; }

    std::vector<SetLines>::iterator holdOf(std::uint64_t fault)
    {
        return std::find_if(holds.begin(), holds.end(),
                            [fault](const SetLines& hold) { return hold.fault == fault; });
    }

    [[nodiscard]] SetLines lines() const
    {
        SetLines all;
        for (const SetLines& hold : holds) {
            all.clearToSend = all.clearToSend && hold.clearToSend;
            all.dataSetReady = all.dataSetReady && hold.dataSetReady;
        }
        return all;
    }

    std::vector<SetLines> holds; // one for each time that a fault has taken some
};

} // namespace virtual_printer
