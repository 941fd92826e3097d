#include "tests/sweep/link_sweep.h"

#include <algorithm>
#include <stdexcept>

namespace telvofm::test::sweep {
namespace {

constexpr int refusingAddress = 2;
constexpr int refusalBehind = 77;
constexpr Milliseconds bound{500};      // of what a busy machine may shift a moment by
constexpr Milliseconds shortBusy{8000}; // longer than each wait of a TCP link

// A delay that is a millisecond beside a wait cannot be kept on a real link.
Fault onRealClock(Fault fault)
{
    if (fault.kind == Fault::Kind::busy) {
        fault.delay = shortBusy;
    } else if (fault.kind == Fault::Kind::delayed) {
        const bool isUnder = fault.delay.count() % 1000 == 999;
        fault.delay += isUnder ? -bound : bound;
    }
    return fault;
}

CallPlan planOfHeard(const CallAtPrinter& call, Exchange::Kind kind)
{
    CallPlan plan;
    plan.exchanges.push_back({kind, {call.heard.front().bytes}});
    plan.exchanges.push_back({Exchange::Kind::upload, call.heard.front().uploaded});
    return plan;
}

} // namespace

LinkSweep::LinkSweep(Link kindOfLink, std::string portName, PrinterOnLink& printerOfLink, std::string folder)
    : link(kindOfLink), port(std::move(portName)), printer(printerOfLink), own(std::move(folder))
{
    writePicture(own + "/picture.bmp");
    setLogginOn((own + "/missing/calls.log").c_str());
    setLogginOff();
    for (const SweptCall& call : everyCall(own + "/reply")) {
        all.push_back(rehearsed(call));
    }
    // Of its fields, so that a printer that hears it behind half a request finds its end.
    behind = rehearsed(callOf("sellingDayBegin", own + "/reply_behind", refusingAddress + 1));
    behind.call = callOf("sellingDayBegin", own + "/reply_behind", refusingAddress);
    behind.plan.exchanges.front().units.front()[1] = refusingAddress;
}

SimulatedPrinter LinkSweep::freshPrinter() const
{
    SimulatedPrinter fresh;
    fresh.setProbes(link == Link::tcp ? SimulatedPrinter::Probes::whenIdle
                                      : SimulatedPrinter::Probes::unknown);
    fresh.giveUpAfter(bound * 4); // a busy machine lets the till pause
    fresh.refuse(refusingAddress, refusalBehind);
    return fresh;
}

void LinkSweep::open(const SweptCall& call, const Fault& fault)
{
    printer.begin(Fault{}, freshPrinter());
    if (openFM(port.c_str()) != 0) {
        throw std::runtime_error("the link does not open");
    }
    if (call.needsPictures) {
        preparePictures(own + "/picture.bmp");
    }
    printer.begin(fault, freshPrinter());
}

LinkSweep::Swept LinkSweep::rehearsed(const SweptCall& call)
{
    tools::CallContext context;
    open(call, {});
    printer.beginCall();
    const Outcome outcome = perform(call, context);
    printer.settle();
    const CallAtPrinter atPrinter = printer.endCall();
    closeFM();
    if (outcome.result != 0 || atPrinter.heard.size() != 1) {
        throw std::runtime_error(std::string(call.name) + " fails without a fault");
    }
    return {call, planOfHeard(atPrinter, call.kind), atPrinter.extent, allFaults(atPrinter.extent, link)};
}

std::size_t LinkSweep::size() const
{
    std::size_t sum = 0;
    for (const Swept& swept : all) {
        sum += swept.faults.size();
    }
    return sum;
}

Judgement LinkSweep::judged(const SweptCall& call, const CallPlan& plan, const Fault& fault,
                            std::optional<Role> struckRole, bool mayBeLate, CallAtPrinter& atPrinter)
{
    tools::CallContext context;
    printer.beginCall();
    const Outcome outcome = perform(call, context);
    atPrinter = printer.endCall();
    return judgedByPrinter({plan,
                            outcome,
                            link,
                            fault,
                            struckRole,
                            {},
                            atPrinter.heard,
                            atPrinter.refusals,
                            mayBeLate || atPrinter.heard.size() > 1});
}

void LinkSweep::run(std::size_t number)
{
    std::size_t index = number;
    const auto swept = std::find_if(all.begin(), all.end(), [&](const Swept& one) {
        if (index < one.faults.size()) {
            return true;
        }
        index -= one.faults.size();
        return false;
    });
    const Fault& meant = swept->faults[index];
    if (link == Link::serial && (meant.kind == Fault::Kind::closed || meant.kind == Fault::Kind::busy)) {
        return; // a pseudo-terminal cannot be pulled out, and its lines are the test's
    }
    const Fault fault = onRealClock(meant);
    std::optional<Role> struckRole;
    if (fault.direction == Direction::toTill && fault.position < swept->extent.toTill.size()) {
        struckRole = swept->extent.toTill[fault.position];
    }
    open(swept->call, fault);
    CallAtPrinter first;
    const Judgement judgement = judged(swept->call, swept->plan, fault, struckRole, false, first);
    // An answer to the first call may come late: when it was sent again, or when it has failed.
    CallAtPrinter second;
    const bool mayBeLate = first.heard.size() != 1 || judgement.verdict != Verdict::success;
    const Judgement then = judged(behind.call, behind.plan, fault, struckRole, mayBeLate, second);
    closeFM();
    ++done;
    ++counts["call 1, " + std::string(nameOf(judgement.verdict))];
    ++counts["call 2, " + std::string(nameOf(then.verdict))];
    const std::string what =
        std::to_string(number) + ": " + std::string(swept->call.name) + ", " + textOf(fault);
    if (judgement.verdict == Verdict::violation) {
        wrong.push_back(what + ": call 1: " + judgement.why);
    }
    if (then.verdict == Verdict::violation) {
        wrong.push_back(what + ": call 2: " + then.why);
    }
}

} // namespace telvofm::test::sweep
