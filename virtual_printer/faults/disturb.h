// What faults make of an answer: the list of steps that a printer without trouble would take, rewritten.
#pragma once

#include "virtual_printer/faults/faults.h"
#include "virtual_printer/faults/steps.h"

#include <span>
#include <string>

namespace virtual_printer {

using Hits = std::vector<Faults::Hit>;

bool has(const Hits& hits, FaultKind kind);
// Null when there is none.
const Faults::Hit* find(const Hits& hits, FaultKind kind);
// At the answer when it does not say.
FaultMoment momentOf(const Fault& fault);

struct Circumstances
{
    bool isSerial = false;
    std::string answerBefore{}; // the last one on this connection
};

// `answer` is what the till would get, the first bytes of the answer of `exchange`.
Steps disturbed(std::string answer, std::uint64_t exchange, const Hits& hits, const Circumstances& around);

// Only its bytes: what is done to the blocks that follow.
std::string damaged(std::string answer, const Hits& hits, const Circumstances& around);

// How probes are answered after it, and for how long from then on.
struct ProbesMeanwhile
{
    Probes answer = Probes::ready;
    std::chrono::milliseconds duration{0};
    std::uint64_t whileArmed = 0; // as long as this fault is armed, without a limit
};
ProbesMeanwhile probesDuring(const Hits& hits);

} // namespace virtual_printer
