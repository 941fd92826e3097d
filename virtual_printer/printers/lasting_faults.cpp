#include "virtual_printer/printers/lasting_faults.h"

#include <algorithm>
#include <utility>

namespace virtual_printer {

void LastingFaults::goOnWith(Hits hits, Time now)
{
    ofLast = std::move(hits);
    hit = now;
    blocksSent = 1;
    follow();
}

void LastingFaults::end(std::uint64_t number)
{
    offUntil.erase(number);
    if (std::erase_if(ofLast, [number](const Faults::Hit& one) { return one.number == number; }) != 0) {
        follow();
    }
}

void LastingFaults::follow()
{
    meanwhile = probesDuring(ofLast);
    deafUntil = {};
    for (const Faults::Hit& one : ofLast) {
        if (one.fault.kind == FaultKind::powerLoss) {
            deafUntil = std::max(deafUntil, hit + one.fault.duration.value_or(std::chrono::milliseconds(0)));
        }
    }
}

bool LastingFaults::arePowerless(Time now) const
{
    return now < deafUntil ||
           std::any_of(offUntil.begin(), offUntil.end(), [now](const auto& one) { return now < one.second; });
}

Probes LastingFaults::answerToProbes(Time now) const
{
    return now - hit < meanwhile.duration ? meanwhile.answer : Probes::ready;
}

} // namespace virtual_printer
