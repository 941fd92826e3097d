#include "tests/sweep/link_sweep.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <stdexcept>

namespace telvofm::test::sweep {
namespace {

constexpr int refusingAddress = 2;
constexpr int refusalBehind = 77;
constexpr Milliseconds bound{500};      // of what a busy machine may shift a moment by
constexpr Milliseconds shortBusy{8000}; // longer than each wait of a TCP link

// A delay that is a millisecond beside a wait cannot be kept on a real link.
Fault onRealClock(Fault fault, Link link)
{
    if (fault.kind == Fault::Kind::busy) {
        fault.delay = link == Link::tcp ? shortBusy : fault.delay;
    } else if (fault.kind == Fault::Kind::delayed) {
        const bool isUnder = fault.delay.count() % 1000 == 999;
        fault.delay += isUnder ? -bound : bound;
    }
    return fault;
}

} // namespace

LinkSweep::LinkSweep(Link kindOfLink, std::function<std::string()> portToOpen, PrinterOnLink& printerOfLink,
                     std::string folder)
    : link(kindOfLink), port(std::move(portToOpen)), printer(printerOfLink), own(std::move(folder))
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
    const std::string name = port();
    printer.begin(Fault{}, freshPrinter());
    if (openFM(name.c_str()) != 0) {
        throw std::runtime_error("the link does not open");
    }
    if (call.needsPictures) {
        preparePictures(own + "/picture.bmp");
    }
    printer.awaitQuiet(); // the session before may have left bytes on a terminal
    printer.begin(fault, freshPrinter());
}

LinkSweep::Swept LinkSweep::rehearsed(const SweptCall& call)
{
    constexpr int attempts = 5;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        if (auto swept = rehearsedUndisturbed(call)) {
            return std::move(*swept);
        }
    }
    throw std::runtime_error(std::string(call.name) + " fails without a fault");
}

std::optional<LinkSweep::Swept> LinkSweep::rehearsedUndisturbed(const SweptCall& call)
{
    tools::CallContext context;
    open(call, {});
    printer.beginCall();
    const Outcome outcome = perform(call, context);
    printer.settle();
    const CallAtPrinter atPrinter = printer.endCall();
    closeFM();
    const Extent& extent = atPrinter.extent;
    const bool wasAsked =
        std::find(extent.toTill.begin(), extent.toTill.end(), Role::flow) != extent.toTill.end();
    if (outcome.result != 0 || atPrinter.heard.size() != 1 || wasAsked) {
        return std::nullopt;
    }
    const HeardRequest& heard = atPrinter.heard.front();
    return Swept{call, planOf(heard.bytes, heard.uploaded, call.kind), extent, allFaults(extent, link)};
}

std::size_t LinkSweep::size() const
{
    std::size_t sum = 0;
    for (const Swept& swept : all) {
        sum += swept.faults.size();
    }
    return sum;
}

LinkCall LinkSweep::performed(const SweptCall& call, const CallPlan& plan)
{
    using Clock = std::chrono::steady_clock;
    tools::CallContext context;
    printer.beginCall();
    const Clock::time_point begin = Clock::now();
    Outcome outcome = perform(call, context);
    const auto lasted = std::chrono::duration_cast<Milliseconds>(Clock::now() - begin);
    return {plan, std::move(outcome), lasted, printer.endCall()};
}

void LinkSweep::add(const std::string& whichCase, int call, const Judgement& judgement)
{
    const std::string name = "call " + std::to_string(call);
    ++counts[name + ", " + std::string(nameOf(judgement.verdict))];
    if (judgement.verdict == Verdict::violation) {
        wrong.push_back(whichCase + ": " + name + ": " + judgement.why);
    }
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
    const Fault fault = onRealClock(swept->faults[index], link);
    std::optional<Role> struckRole;
    if (fault.direction == Direction::toTill && fault.position < swept->extent.toTill.size()) {
        struckRole = swept->extent.toTill[fault.position];
    }
    open(swept->call, fault);
    const std::array<LinkCall, 2> calls = {performed(swept->call, swept->plan),
                                           performed(behind.call, behind.plan)};
    printer.awaitQuiet(); // an end of the link may lose what is on its way
    closeFM();
    const LinkSession session{link, Overheard(printer.passed(), fault), struckRole};
    const std::string what =
        std::to_string(number) + ": " + std::string(swept->call.name) + ", " + textOf(fault);
    Judgement first = judgedBySession(session, std::span(calls).first(1), false);
    const bool isTrueFailure = first.verdict != Verdict::success && first.verdict != Verdict::violation;
    if (fault.kind == Fault::Kind::busy && isTrueFailure) {
        first = {Verdict::violation, "a busy printer was not waited for"};
    }
    add(what, 1, first);
    add(what, 2, judgedBySession(session, calls, true));
    ++done;
}

} // namespace telvofm::test::sweep
