// What faults make of an answer: the list of steps that a printer without trouble would take, rewritten.
#pragma once

#include "virtual_printer/faults/faults.h"
#include "virtual_printer/faults/steps.h"

#include <string>
#include <vector>

namespace virtual_printer {

bool has(const Hits& hits, FaultKind kind);
// Null when there is none.
const Faults::Hit* find(const Hits& hits, FaultKind kind);
// The request never reaches the printer's mind.
bool losesRequest(const Hits& hits);
// Of the faults that damage blocks of a reply, those that are not done with so many of them.
Hits withMoreBlocks(const Hits& hits, int blocks);

struct Circumstances
{
    bool isSerial = false;
    std::string answerBefore{}; // the last one on this connection
    // What the printer has made of the request, if it was asked.
    bool isAsked = false;
    bool isRefused = false;
    bool isExecuted = false;
    bool diskWasFull = false;
};

struct Disturbed
{
    Steps steps;
    // Of each hit: why it could do nothing; empty where it did something.
    std::vector<std::string> idle;
};
// `answer` is what the till would get, the first bytes of the answer of `exchange`.
Disturbed disturbed(std::string answer, std::uint64_t exchange, const Hits& hits,
                    const Circumstances& around);

// Those that have done something.
Hits doneOf(const Hits& hits, const Disturbed& all);
// What each has done, or why it could do nothing, in a sentence.
std::vector<std::string> deedsOf(const Hits& hits, const Disturbed& all);

// How probes are answered after it, and for how long from then on.
struct ProbesMeanwhile
{
    Probes answer = Probes::ready;
    std::chrono::milliseconds duration{0};
};
ProbesMeanwhile probesDuring(const Hits& hits);

} // namespace virtual_printer
