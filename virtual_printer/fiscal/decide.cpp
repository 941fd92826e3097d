#include "virtual_printer/fiscal/decide.h"

#include "virtual_printer/fiscal/deciders.h"
#include "virtual_printer/fiscal/documents.h"
#include "virtual_printer/fiscal/passwords.h"
#include "virtual_printer/language/fields.h"

#include <algorithm>
#include <utility>

namespace virtual_printer {
namespace {

bool isTooLong(const State& state, Moment now)
{
    constexpr std::chrono::hours longestDay{24};
    return state.standing->dayIsOpen && now - state.standing->dayBegan > longestDay;
}

// Why a command is not legal in a situation that is not among its own.
Refusal reasonOf(const CommandRule& rule, Situation situation)
{
    const bool wantsReceipt = rule.legal.contain(Situation::open) && !rule.legal.contain(Situation::idle);
    switch (situation) {
    case Situation::defiscalized:
        return Refusal::defiscalized;
    case Situation::paying:
        return wantsReceipt ? Refusal::receiptIsBeingPaid : Refusal::receiptIsOpen;
    case Situation::open:
        return Refusal::receiptIsOpen;
    case Situation::overdue:
        return wantsReceipt ? Refusal::noReceipt : Refusal::dayTooLong;
    case Situation::idle:
        if (wantsReceipt) {
            return Refusal::noReceipt;
        }
        return rule.command == telvofm::Command::sellingDayBegin ? Refusal::dayIsOpen
                                                                 : Refusal::onlyBetweenDays;
    case Situation::noDay:
        break;
    }
    return wantsReceipt ? Refusal::noReceipt : Refusal::noSellingDay;
}

Refusal checkSituation(const CommandRule& rule, const State& state, Moment now)
{
    const Situation situation = situationOf(state, now);
    if (!rule.legal.contain(situation)) {
        return reasonOf(rule, situation);
    }
    // When the day has become too long, a receipt that is open takes no more than one that is being paid.
    const bool addsToReceipt = situation == Situation::open && !rule.legal.contain(Situation::paying);
    return addsToReceipt && isTooLong(state, now) ? Refusal::dayTooLong : Refusal::none;
}

// Whatever would put something on the paper needs paper. A receipt that is open goes on: the printer waits
// for the new roll.
Refusal checkHardware(const State& before, const Decision& decision)
{
    const auto isPrinted = [](const Shown& shown) { return std::holds_alternative<Printed>(shown); };
    const auto& shown = decision.draft.shown;
    const bool prints = (decision.rule != nullptr && decision.rule->wants == Wants::printing) ||
                        decision.draft.state().upload->command != 0 ||
                        std::any_of(shown.begin(), shown.end(), isPrinted);
    return prints && !before.receipt ? mayPrint(before) : Refusal::none;
}

} // namespace

Situation situationOf(const State& state, Moment now)
{
    if (state.standing->life == Life::defiscalized) {
        return Situation::defiscalized;
    }
    if (state.receipt) {
        return state.receipt->isBeingPaid ? Situation::paying : Situation::open;
    }
    if (!state.standing->dayIsOpen) {
        return Situation::noDay;
    }
    return isTooLong(state, now) ? Situation::overdue : Situation::idle;
}

Decision decide(const State& state, const Request& request, Moment now)
{
    Decision decision(state, now);
    decision.rule = findRule(request.command, request.fields.size());
    if (decision.rule == nullptr) {
        decision.refusal = isKnown(request.command) ? Refusal::wrongFields : Refusal::unknownCommand;
        return decision;
    }
    const CommandRule& rule = *decision.rule;
    const Fields fields(rule.fields, request.fields);
    Verdict verdict = Fields::check(rule.fields, request.fields);
    if (verdict == Refusal::none) {
        verdict = checkSituation(rule, state, now);
    }
    if (verdict == Refusal::none) {
        verdict = checkPasswords(rule.fields, request.fields, *state.settings);
    }
    if (verdict == Refusal::none) {
        decision.draft.upload() = Upload(); // a request ends the upload before it
        verdict = rule.decide == nullptr ? Verdict() : rule.decide(decision.draft, fields);
    }
    decision.settle(verdict == Refusal::none ? checkHardware(state, decision) : std::move(verdict));
    return decision;
}

Decision decideBlock(const State& state, std::string_view data, bool isLast, CodePage codePage, Moment now)
{
    Decision decision(state, now);
    Verdict verdict = takeBlock(decision.draft, data, isLast, codePage);
    decision.settle(verdict == Refusal::none ? checkHardware(state, decision) : std::move(verdict));
    return decision;
}

} // namespace virtual_printer
