// Sweeps a call over the wire in memory: the call without a fault, its plan, and then the call with each
// fault and two calls behind it, all of them judged.
#pragma once

#include "tests/sweep/faulty_wire.h"
#include "tests/sweep/judge.h"

#include <array>
#include <map>
#include <string>
#include <vector>

namespace telvofm::test::sweep {

struct Circumstances
{
    Link link = Link::tcp;
    int refusal = 0; // the printer refuses the call with this code; 0: it accepts
    SimulatedPrinter::Probes probes = SimulatedPrinter::Probes::whenIdle;
};

// A call as it goes without a fault.
struct Rehearsal
{
    CallPlan plan;
    Extent extent;
    Outcome outcome;
};

struct CaseReport
{
    std::array<Verdict, 3> verdicts{};
    std::vector<std::string> violations;
};

class MemorySweep
{
public:
    // Files of the sweep lie in this folder; the logs would lie in one that is not there.
    explicit MemorySweep(std::string folder);

    [[nodiscard]] const std::vector<SweptCall>& calls() const { return all; }
    Rehearsal rehearse(const SweptCall& call, const Circumstances& circumstances);
    // The case's number chooses the calls behind it.
    CaseReport run(const SweptCall& call, const Rehearsal& rehearsal, const Circumstances& circumstances,
                   const Fault& fault, std::size_t number);
    // The same case with both logs on, which cannot be written: what differs, or nothing.
    std::string differenceWithLogs(const SweptCall& call, const Circumstances& circumstances,
                                   const Fault& fault, bool onFullDisk);

private:
    struct Performed
    {
        Outcome outcome;
        std::size_t heardBefore;
        std::size_t refusedBefore;
        std::vector<WireEvent> events;
        bool metLateAnswer;
    };

    void open(const SweptCall& call, const Circumstances& circumstances);
    static Performed performed(const SweptCall& call);
    void openLink(const SweptCall& call, Link link);
    CallPlan plan(const SweptCall& call, Link link);
    const CallPlan& planBehind(const SweptCall& call, Link link);
    static Judgement judge(const Performed& done, const CallPlan& plan, Link link, const Fault& fault,
                           std::optional<Role> struckRole);

    std::string own;
    std::vector<SweptCall> all;
    std::vector<SweptCall> followers;
    SweptCall last;
    std::map<std::pair<const SweptCall*, Link>, CallPlan> plansBehind;
};

// What the rules promise of a call with this fault: that it goes as without one.
bool mustGoThrough(const Rehearsal& rehearsal, const Circumstances& circumstances, const Fault& fault,
                   std::span<const HeardRequest> heard);

} // namespace telvofm::test::sweep
