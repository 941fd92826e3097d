// What is decided about a request: it is accepted, or it is refused, and then what in particular was wrong
// with it. Deciders give it, and the paper and the trace tell it.
#pragma once

#include "virtual_printer/fiscal/refusal.h"

#include <string>
#include <utility>

namespace virtual_printer {

struct Verdict
{
    Verdict() = default;
    // Most refusals say everything by themselves.
    Verdict(Refusal reason, std::string inParticular = {}) : refusal(reason), detail(std::move(inParticular))
    {
    }

    bool operator==(Refusal other) const { return refusal == other; }

    Refusal refusal = Refusal::none;
    std::string detail; // a sentence of its own: which field is wrong and what it takes, or a sum
};

// What a person is told: the sentence of the refusal, and behind it what was wrong in particular.
inline std::string sentenceOf(Refusal refusal, const std::string& detail)
{
    return std::string(textOf(refusal).sentence) + (detail.empty() ? "" : " " + detail);
}

} // namespace virtual_printer
