#include "tests/sweep/memory_sweep.h"

#include <algorithm>
#include <stdexcept>

namespace telvofm::test::sweep {
namespace {

constexpr int callsAddress = 1;
constexpr Byte refusingAddress = 2;
constexpr int acceptingAddress = 3;
constexpr int refusalBehind = 77;

constexpr Milliseconds longRest{60000};

} // namespace

MemorySweep::MemorySweep(std::string folder)
    : own(std::move(folder)), all(everyCall(own + "/reply", callsAddress)),
      last(callOf("printJobCancel", own + "/reply", acceptingAddress))
{
    const std::string file = own + "/reply_behind";
    followers = {callOf("printJobCancel", file, refusingAddress),
                 callOf("getVariable", file, acceptingAddress), callOf("saveBCKP", file, acceptingAddress),
                 callOf("itemSale", file, acceptingAddress)};
    writePicture(own + "/picture.bmp");
    setLogginOn((own + "/missing/calls.log").c_str()); // one export writes its failures also while it is off
    setLogginOff();
}

void MemorySweep::open(const SweptCall& call, const Circumstances& circumstances)
{
    resetWire(circumstances.link);
    SimulatedPrinter& printer = wire().printer;
    printer.refuse(refusingAddress, refusalBehind);
    if (circumstances.refusal != 0) {
        printer.refuse(callsAddress, circumstances.refusal);
    }
    printer.setProbes(circumstances.link == Link::serial ? SimulatedPrinter::Probes::unknown
                                                         : circumstances.probes);
    openLink(call, circumstances.link);
}

void MemorySweep::openLink(const SweptCall& call, Link link)
{
    if (openFM(link == Link::tcp ? "printer" : "COM1") != 0) {
        throw std::runtime_error("the link in memory does not open");
    }
    if (call.needsPictures) {
        preparePictures(own + "/picture.bmp");
    }
}

MemorySweep::Performed MemorySweep::performed(const SweptCall& call)
{
    wire().beginCall();
    const std::size_t heardBefore = wire().printer.heard().size();
    const std::size_t refusedBefore = wire().printer.refused().size();
    tools::CallContext context;
    Outcome outcome = perform(call, context);
    return {std::move(outcome), heardBefore, refusedBefore, std::exchange(wire().events, {}),
            wire().metLateAnswer};
}

// A refused request is repeated, and nothing is uploaded behind it: the plan is that of an accepted one.
CallPlan MemorySweep::plan(const SweptCall& call, Link link)
{
    resetWire(link);
    openLink(call, link);
    const Performed done = performed(call);
    closeFM();
    std::string sent;
    for (const WireEvent& event : done.events) {
        sent += event.act == WireEvent::Act::sent ? event.bytes : "";
    }
    return planOf(sent, call.kind);
}

Rehearsal MemorySweep::rehearse(const SweptCall& call, const Circumstances& circumstances)
{
    CallPlan plan = this->plan(call, circumstances.link);
    open(call, circumstances);
    wire().arm({});
    Performed done = performed(call);
    closeFM();
    return {std::move(plan), wire().extent(), std::move(done.outcome)};
}

const CallPlan& MemorySweep::planBehind(const SweptCall& call, Link link)
{
    const auto key = std::pair(&call, link);
    auto found = plansBehind.find(key);
    if (found == plansBehind.end()) {
        found = plansBehind.emplace(key, plan(call, link)).first;
    }
    return found->second;
}

Judgement MemorySweep::judge(const Performed& done, const CallPlan& plan, Link link, const Fault& fault,
                             std::optional<Role> struckRole)
{
    const std::string against = contradiction(conductOf(plan, done.events, link), plan, done.outcome);
    if (!against.empty()) {
        return {Verdict::violation, against};
    }
    const std::span<const HeardRequest> heard(wire().printer.heard());
    return judgedByPrinter({plan, done.outcome, link, fault, struckRole, heard.first(done.heardBefore),
                            heard.subspan(done.heardBefore),
                            std::span(wire().printer.refused()).subspan(done.refusedBefore),
                            done.metLateAnswer});
}

CaseReport MemorySweep::run(const SweptCall& call, const Rehearsal& rehearsal,
                            const Circumstances& circumstances, const Fault& fault, std::size_t number)
{
    const Link link = circumstances.link;
    const SweptCall& follower = followers[number % followers.size()];
    const CallPlan& planOfFollower = planBehind(follower, link);
    const CallPlan& planOfLast = planBehind(last, link);
    std::optional<Role> struckRole;
    if (fault.direction == Direction::toTill && fault.position < rehearsal.extent.toTill.size()) {
        struckRole = rehearsal.extent.toTill[fault.position];
    }
    CaseReport report;
    const auto add = [&](std::size_t index, const Judgement& judgement) {
        report.verdicts[index] = judgement.verdict;
        if (judgement.verdict == Verdict::violation) {
            report.violations.push_back("call " + std::to_string(index + 1) + ": " + judgement.why);
        }
    };
    open(call, circumstances);
    wire().arm(fault);
    const Performed first = performed(call);
    add(0, judge(first, rehearsal.plan, link, fault, struckRole));
    if (mustGoThrough(rehearsal, circumstances, fault, wire().printer.heard()) &&
        (first.outcome.result != rehearsal.outcome.result ||
         (first.outcome.result == 0 && report.verdicts[0] != Verdict::success))) {
        report.violations.emplace_back("call 1: it must go as without a fault, and returned " +
                                       std::to_string(first.outcome.result));
    }
    const bool rests = number / followers.size() % 2 == 1;
    wire().rest(rests ? longRest : Milliseconds(0));
    add(1, judge(performed(follower), planOfFollower, link, fault, struckRole));
    wire().rest(rests ? longRest : Milliseconds(0));
    add(2, judge(performed(last), planOfLast, link, fault, struckRole));
    closeFM();
    return report;
}

std::string MemorySweep::differenceWithLogs(const SweptCall& call, const Circumstances& circumstances,
                                            const Fault& fault, bool onFullDisk)
{
    const auto once = [&] {
        open(call, circumstances);
        wire().arm(fault);
        Performed done = performed(call);
        done.heardBefore = wire().printer.heard().size();
        closeFM();
        return std::pair(std::move(done), wire().now());
    };
    const auto without = once();
    const std::string missing = own + "/missing/log";
    setLogginOn(onFullDisk ? "/dev/full" : missing.c_str());
    setRawLogginOn(onFullDisk ? "/dev/full" : missing.c_str());
    const auto with = once();
    seRawLogginOff();
    setLogginOn(missing.c_str());
    setLogginOff();
    if (without.first.outcome.result != with.first.outcome.result ||
        without.first.outcome.data != with.first.outcome.data ||
        without.first.outcome.returnedText != with.first.outcome.returnedText ||
        without.first.outcome.thrown != with.first.outcome.thrown) {
        return "a log that cannot be written changed the result";
    }
    if (without.first.heardBefore != with.first.heardBefore || without.first.events != with.first.events ||
        without.second != with.second) {
        return "a log that cannot be written changed what went over the wire";
    }
    return {};
}

} // namespace telvofm::test::sweep
