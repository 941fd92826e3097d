#include "tests/sweep/session_judge.h"

#include "tests/sweep/reference_till.h"

namespace telvofm::test::sweep {
namespace {

constexpr Milliseconds early{100}; // by the grain of a system's waits
constexpr Milliseconds busyMachine{10000};
constexpr Milliseconds serialStep{
    15000}; // a silence on a serial line is found to be one after one step or two
constexpr int mostWays = 100000;

std::string textOfTime(const LinkCall& call, const LinkSession& session, Milliseconds silence)
{
    const Milliseconds most = silence + session.overheard.fault.delay + busyMachine +
                              (session.link == Link::serial ? serialStep : Milliseconds(0));
    if (call.lasted + early >= silence && call.lasted <= most) {
        return {};
    }
    return "it took " + std::to_string(call.lasted.count()) + " ms where the rules have " +
           std::to_string(silence.count()) + " to " + std::to_string(most.count());
}

// What this way of the wire has against the call; nothing when the call is as it makes it due.
std::string objection(const LinkCall& call, const LinkSession& session, OverheardWire& wire)
{
    wire.beginCall();
    const Conduct conduct = conductOf(call.plan, wire, session.link);
    const std::string against = contradiction(conduct, call.plan, call.outcome);
    return against.empty() ? textOfTime(call, session, wire.silence()) : against;
}

std::string objection(std::span<const LinkCall> calls, const LinkSession& session, OverheardWire& wire,
                      bool isWhole)
{
    for (const LinkCall& call : calls) {
        const std::string against = objection(call, session, wire);
        if (!against.empty()) {
            return &call == &calls.back() ? against : "the call before it is untrue";
        }
    }
    return isWhole && wire.hasMore() ? "the till sent more than its calls do" : "";
}

} // namespace

Judgement judgedBySession(const LinkSession& session, std::span<const LinkCall> calls, bool isWhole)
{
    const LinkCall& last = calls.back();
    Judgement judgement{Verdict::violation, {}};
    Choices choices;
    int ways = 0;
    do {
        OverheardWire wire(session.overheard, session.link, choices);
        const std::string against = objection(calls, session, wire, isWhole);
        if (!against.empty()) {
            if (judgement.why.empty()) {
                judgement.why = "no way of the wire bears out its " + std::to_string(last.outcome.result) +
                                "; against the first: " + against;
            }
            continue;
        }
        judgement = judgedByPrinter({last.plan,
                                     last.outcome,
                                     session.link,
                                     session.overheard.fault,
                                     session.struckRole,
                                     {},
                                     last.atPrinter.heard,
                                     last.atPrinter.refusals,
                                     last.atPrinter.metLateAnswer || wire.hasMetEarlierByte()});
    } while (judgement.verdict == Verdict::violation && choices.next() && ++ways < mostWays);
    return judgement;
}

} // namespace telvofm::test::sweep
