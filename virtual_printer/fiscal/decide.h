// Deciding: a pure function of the state, the request and the moment. It gives a refusal, or what changes;
// nothing has happened yet when it returns. The memory commits what changes, then the till is answered, then
// it is shown.
#pragma once

#include "virtual_printer/fiscal/draft.h"
#include "virtual_printer/language/code_page.h"
#include "virtual_printer/language/commands.h"
#include "virtual_printer/language/request.h"

#include <string>
#include <utility>

namespace virtual_printer {

struct Decision
{
    explicit Decision(const State& state, Moment now) : draft(state, now) {}

    void settle(Verdict verdict)
    {
        refusal = verdict.refusal;
        detail = std::move(verdict.detail);
    }

    Refusal refusal = Refusal::none;
    std::string detail{};              // of the refusal, as its verdict has it
    const CommandRule* rule = nullptr; // null for an unknown command
    Draft draft;                       // means nothing after a refusal
};

// `request` has its texts in UTF-8.
Decision decide(const State& state, const Request& request, Moment now);
// A block of the upload that the state expects. Its data is as it came: a picture, or text in `codePage`.
Decision decideBlock(const State& state, std::string_view data, bool isLast, CodePage codePage, Moment now);

Situation situationOf(const State& state, Moment now);

} // namespace virtual_printer
