#include "tests/torture/tortured_link.h"

#include "tests/unit/limited_memory.h"

#include <algorithm>
#include <stdexcept>
#include <sys/syscall.h>

namespace telvofm::test::torture {
namespace {

using sweep::judgedByPrinter;
using sweep::Judgement;
using sweep::Outcome;
using sweep::Verdict;

constexpr int acceptingAddress = 3;
constexpr std::string_view noMemory = "std::bad_alloc";

sweep::CallPlan planOf(const sweep::CallAtPrinter& call, sweep::Exchange::Kind kind)
{
    sweep::CallPlan plan;
    plan.exchanges.push_back({kind, {call.heard.front().bytes}});
    plan.exchanges.push_back({sweep::Exchange::Kind::upload, call.heard.front().uploaded});
    return plan;
}

bool asksForMemory(const TrappedCall& call)
{
    return call.number == SYS_mmap || call.number == SYS_brk || call.number == SYS_mremap;
}

} // namespace

TorturedLink::TorturedLink(Link kindOfLink, std::string portName, sweep::PrinterOnLink& printerOfLink,
                           std::string folder, std::size_t oneOfSoMany)
    : link(kindOfLink), port(std::move(portName)), printer(printerOfLink), own(std::move(folder)),
      every(oneOfSoMany), all(sweep::everyCall(own + "/reply")),
      next(sweep::callOf("sellingDayBegin", own + "/reply_behind", acceptingAddress))
{
    sweep::writePicture(own + "/picture.bmp");
    setLogginOn((own + "/calls.log").c_str()); // one export writes its failures also while it is off
    setLogginOff();
    planOfNext = rehearse(next).plan;
    leftBehind.emplace();
}

void TorturedLink::report(const Case& one, const std::string& why)
{
    sums.violations.push_back(one.what + ": " + why);
}

void TorturedLink::renewPrinter()
{
    sweep::SimulatedPrinter habit;
    habit.setProbes(link == Link::tcp ? sweep::SimulatedPrinter::Probes::whenIdle
                                      : sweep::SimulatedPrinter::Probes::unknown);
    printer.begin({}, habit);
}

void TorturedLink::open(bool withPictures)
{
    if (openFM(port.c_str()) != 0) {
        throw std::runtime_error("the link does not open");
    }
    if (withPictures) {
        sweep::preparePictures(own + "/picture.bmp");
    }
}

TorturedLink::Rehearsed TorturedLink::rehearse(const SweptCall& call)
{
    Watching watching;
    tools::CallContext context;
    renewPrinter();
    open(call.needsPictures);
    sweep::perform(call, context); // makes room for the request
    printer.beginCall();
    const Outcome outcome = sweep::perform(call, context, watching);
    printer.settle();
    const auto atPrinter = printer.endCall();
    closeFM();
    if (outcome.result != 0 || atPrinter.heard.empty()) {
        throw std::runtime_error(std::string(call.name) + " fails without a failure");
    }
    return {planOf(atPrinter, call.kind), {watching.systemCalls, watching.allocations}};
}

TorturedLink::Places TorturedLink::rehearse(const FreeCall& call)
{
    Watching watching;
    renewPrinter();
    if (!call.opensItself) {
        open(false);
    }
    call.before();
    watching.begin();
    const int result = call.call();
    watching.end();
    closeFM();
    if (result != call.undisturbed) {
        throw std::runtime_error(call.name + " returns " + std::to_string(result) + " without a failure");
    }
    return {watching.systemCalls, watching.allocations};
}

std::vector<TorturedLink::Case> TorturedLink::casesOf(const std::string& name, const Places& places,
                                                      Torment torment)
{
    const bool isMemory = torment == Torment::allocation;
    const auto count = isMemory ? static_cast<std::size_t>(places.allocations) : places.systemCalls.size();
    std::vector<Case> cases;
    for (std::size_t index = 0; index < count; ++index) {
        const TrappedCall failing = isMemory ? TrappedCall{} : places.systemCalls[index];
        if ((torment == Torment::interrupted && !failing.blocks) || sums.places++ % every != 0) {
            continue;
        }
        const std::string place = isMemory ? "allocation" : nameOf(failing);
        const std::string_view way = torment == Torment::interrupted ? " interrupted: " : " failed: ";
        Case one{name, place, failing, torment, index};
        one.what.append(", ").append(place).append(" ").append(std::to_string(index));
        one.kind.append(way);
        cases.push_back(std::move(one));
    }
    return cases;
}

// What the library leaves it leaves each time; a buffer of the printer grows once.
void TorturedLink::tryEach(const std::vector<Case>& cases, const std::function<void(Case&)>& run)
{
    for (const Case& one : cases) {
        Case tried = one;
        run(tried);
        if (tried.hasLeftMemory) {
            tried = one;
            tried.isTriedAgain = true;
            run(tried);
        }
    }
}

void TorturedLink::torture(const SweptCall& call, Torment torment, bool withLogs)
{
    if (withLogs) {
        setLogginOn((own + "/calls.log").c_str());
        setRawLogginOn((own + "/raw.log").c_str());
    }
    const Rehearsed rehearsed = rehearse(call);
    tryEach(casesOf(std::string(call.name), rehearsed.places, torment),
            [&](Case& one) { run(call, rehearsed, one); });
    setLogginOff();
    seRawLogginOff();
}

void TorturedLink::torture(const FreeCall& call, Torment torment)
{
    tryEach(casesOf(call.name, rehearse(call), torment), [&](Case& one) { run(call, one); });
}

void TorturedLink::run(const SweptCall& call, const Rehearsed& rehearsed, Case& one)
{
    constexpr std::size_t enough = 200;
    one.kind.reserve(enough); // nothing of ours may look like a leak
    renewPrinter();
    const long piecesBefore = printer.whileStill(piecesHeld);
    int resultBehind = 0;
    {
        tools::CallContext context;
        open(call.needsPictures);
        sweep::perform(call, context); // as in the rehearsal
        const bool hasSucceeded = judgeCall(call, rehearsed, one, context);
        resultBehind = resultOfTheNextCall(one, hasSucceeded);
        closeFM();
    }
    renewPrinter();
    expectNothingLeft(one, piecesBefore);
    ++sums.cases;
    ++sums.outcomes[one.kind];
    ++sums.outcomes["the next call: " + std::to_string(resultBehind)];
}

bool TorturedLink::judgeCall(const SweptCall& call, const Rehearsed& rehearsed, Case& one,
                             tools::CallContext& context)
{
    Tormenting tormenting(one.torment, one.index);
    printer.beginCall();
    const Outcome outcome = sweep::perform(call, context, tormenting);
    if (outcome.result != 0 || !outcome.thrown.empty()) {
        printer.settle();
    }
    const auto atPrinter = printer.endCall();
    const bool mayThrow = one.torment == Torment::allocation || asksForMemory(one.failing);
    const bool mustSucceed = one.torment == Torment::interrupted || one.failing.isLog;
    if (!tormenting.hasStruck()) {
        report(one, "nothing failed");
    }
    if (mayThrow && outcome.thrown == noMemory) {
        one.kind += "thrown";
        return false;
    }
    const Judgement judgement = judgedByPrinter({rehearsed.plan,
                                                 outcome,
                                                 link,
                                                 {},
                                                 {},
                                                 {},
                                                 atPrinter.heard,
                                                 atPrinter.refusals,
                                                 atPrinter.metLateAnswer});
    one.kind += std::to_string(outcome.result);
    if (judgement.verdict == Verdict::violation) {
        report(one, judgement.why);
    } else if (mustSucceed && judgement.verdict != Verdict::success) {
        report(one, "it must change nothing, and the call returned " + std::to_string(outcome.result));
    }
    return judgement.verdict == Verdict::success;
}

void TorturedLink::run(const FreeCall& call, Case& one)
{
    constexpr std::size_t enough = 200;
    one.kind.reserve(enough);
    renewPrinter();
    const long piecesBefore = printer.whileStill(piecesHeld);
    if (!call.opensItself) {
        open(false);
    }
    call.before();
    Tormenting tormenting(one.torment, one.index);
    int result = 0;
    bool hasThrown = false;
    tormenting.begin();
    try {
        result = call.call();
    } catch (const std::bad_alloc&) {
        hasThrown = true;
    }
    tormenting.end();
    one.kind += hasThrown ? "thrown" : std::to_string(result);
    const bool mayThrow =
        !call.opensItself && (one.torment == Torment::allocation || asksForMemory(one.failing));
    if (hasThrown ? !mayThrow : !call.results.contains(result)) {
        report(one, "it ended with " + one.kind);
    }
    if (one.torment == Torment::interrupted && (hasThrown || result != call.undisturbed)) {
        report(one, "a signal has changed its result: " + one.kind);
    }
    if (call.opensItself && result == 0) {
        resultOfTheNextCall(one, false);
    }
    closeFM();
    setLogginOff();
    seRawLogginOff();
    renewPrinter();
    expectNothingLeft(one, piecesBefore);
    ++sums.cases;
    ++sums.outcomes[call.name + ", " + one.kind];
}

int TorturedLink::resultOfTheNextCall(const Case& one, bool followsSuccess)
{
    tools::CallContext context;
    printer.beginCall();
    const Outcome outcome = sweep::perform(next, context);
    if (!followsSuccess) {
        printer.settle(); // it may have been served with an answer of before
    }
    const auto atPrinter = printer.endCall();
    const Judgement judgement = judgedByPrinter({planOfNext,
                                                 outcome,
                                                 link,
                                                 {},
                                                 {},
                                                 {},
                                                 atPrinter.heard,
                                                 atPrinter.refusals,
                                                 atPrinter.metLateAnswer});
    if (judgement.verdict == Verdict::violation) {
        report(one, "the next call: " + judgement.why);
    }
    return outcome.result;
}

void TorturedLink::expectNothingLeft(Case& one, long piecesBefore)
{
    const LeftBehind::Found found = leftBehind->look(piecesBefore, [this] { renewPrinter(); });
    if (found.isMemory && !one.isTriedAgain) {
        one.hasLeftMemory = true;
        return;
    }
    for (const std::string& left : found.left) {
        report(one, left);
    }
}

} // namespace telvofm::test::torture
