// The exports that send a command.
#include "tests/torture/time_limit.h"
#include "tests/torture/tortured_link.h"
#include "tests/torture/verdict.h"
#include "tests/unit/limited_memory.h"

#include <stdexcept>

namespace telvofm::test::torture {
namespace {

sweep::CallPlan planOf(const sweep::CallAtPrinter& call, sweep::Exchange::Kind kind)
{
    sweep::CallPlan plan;
    plan.exchanges.push_back({kind, {call.heard.front().bytes}});
    plan.exchanges.push_back({sweep::Exchange::Kind::upload, call.heard.front().uploaded});
    return plan;
}

} // namespace

TorturedLink::Rehearsed TorturedLink::rehearse(const SweptCall& call, bool isFirst)
{
    Watching watching;
    tools::CallContext context;
    renewPrinter();
    open(call.needsPictures);
    if (!isFirst) {
        sweep::perform(call, context);
    }
    printer.beginCall();
    const auto outcome = sweep::perform(call, context, watching);
    printer.settle();
    const auto atPrinter = printer.endCall();
    closeFM();
    if (outcome.result != 0 || atPrinter.heard.empty()) {
        throw std::runtime_error(std::string(call.name) + " fails without a failure");
    }
    return {planOf(atPrinter, call.kind), Places(watching), isFirst};
}

void TorturedLink::torture(const SweptCall& call, Torment torment, bool withLogs)
{
    switchLogs(withLogs);
    const std::string name = std::string(call.name) + (withLogs ? " with logs" : "");
    const Rehearsed rehearsed = rehearse(call, false);
    tryEach(name, rehearsed.places, torment, [&](Case& one) { run(call, rehearsed, one); });
    if (torment == Torment::allocation) {
        const Rehearsed first = rehearse(call, true);
        tryEach(name + " at first", first.places, torment, [&](Case& one) { run(call, first, one); });
    }
    switchLogs(false);
}

void TorturedLink::run(const SweptCall& call, const Rehearsed& rehearsed, Case& one)
{
    constexpr std::size_t enough = 200;
    for (std::string* const text : {&one.outcome, &one.verdict, &one.nextCall}) {
        text->reserve(enough); // nothing of ours may look like a leak
    }
    renewPrinter();
    const long piecesBefore = printer.whileStill(piecesHeld);
    {
        tools::CallContext context;
        open(call.needsPictures);
        if (!rehearsed.isFirst) {
            sweep::perform(call, context);
        }
        const bool hasSucceeded = judgeCall(call, rehearsed, one, context);
        judgeTheNextCall(one, hasSucceeded);
        closeFM();
    }
    renewPrinter();
    expectNothingLeft(one, piecesBefore);
}

// Whether it has succeeded.
bool TorturedLink::judgeCall(const SweptCall& call, const Rehearsed& rehearsed, Case& one,
                             tools::CallContext& context)
{
    const Places& places = *one.places;
    const bool lacksMemory = places.asksForMemory(one.torment, one.index);
    if (lacksMemory) {
        printer.settle(); // whether it hears anything matters: nothing of before may still be on its way
    }
    Tormenting tormenting(one.torment, one.index);
    printer.beginCall();
    const auto outcome = [&] {
        const TimeLimit limit(one.what);
        return sweep::perform(call, context, tormenting);
    }();
    judgeHost(one, tormenting);
    if (outcome.result != 0 || !outcome.thrown.empty()) {
        printer.settle();
    }
    const auto atPrinter = printer.endCall();
    const bool mustSucceed = one.torment == Torment::interrupted || places.isOfLog(one.torment, one.index) ||
                             places.isOfStandardOutput(one.torment, one.index);
    const Verdict verdict =
        verdictOf({call, rehearsed.plan, outcome, link, atPrinter, lacksMemory, mustSucceed});
    one.outcome += outcome.thrown.empty() ? std::to_string(outcome.result) : "thrown";
    one.verdict += verdict.name;
    if (!verdict.violation.empty()) {
        report(one, verdict.violation);
    }
    return outcome.thrown.empty() && outcome.result == 0;
}

} // namespace telvofm::test::torture
