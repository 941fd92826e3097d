// Whether a call has told the truth: its result against what the printer received, executed and said, and
// against the rules of the wire.
#pragma once

#include "tests/sweep/reference_till.h"
#include "tests/sweep/swept_call.h"

#include <optional>
#include <span>
#include <string>

namespace telvofm::test::sweep {

// What kind of thing happened. All but `violation` are truthful, or untrue in a way that no till could see.
enum class Verdict
{
    success,
    failure,
    silence, // code 64 on a serial line: the library's own for a silent printer, and one that a printer may
             // send
    lateAnswer,     // the byte that was taken for the answer belongs to an earlier request
    answerDamaged,  // a byte of the dialogue that no checksum covers was changed, made or lost
    blockDamaged,   // damage that the XOR of a reply's block does not show
    requestDamaged, // damage that the XOR of a request or an uploaded block does not show
    violation
};

std::string_view nameOf(Verdict verdict);

struct Judgement
{
    Verdict verdict = Verdict::success;
    std::string why; // of a violation
};

// What is known of a call once it has ended.
struct CallRecord
{
    const CallPlan& plan;
    const Outcome& outcome;
    Link link;
    Fault fault; // that struck during the call or before it
    // What the byte is for that it struck on its way to the till.
    std::optional<Role> struckRole;
    std::span<const HeardRequest> heardBefore; // the call
    std::span<const HeardRequest> heard;       // during it
    std::span<const int> refusals;             // that the printer said during it
    // A byte came to the till during the call that answers an earlier request.
    bool metLateAnswer;
};

// What an outcome is other than its conduct makes it due; nothing when it is that.
std::string contradiction(const Conduct& conduct, const CallPlan& plan, const Outcome& outcome);
// By the printer's record alone.
Judgement judgedByPrinter(const CallRecord& record);

} // namespace telvofm::test::sweep
