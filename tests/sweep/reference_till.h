// What a till has to do on a wire, by the rules of the protocol alone: it reads the record of a call, step by
// step, says what the call must return for what came, and where the record leaves the rules: other bytes, a
// wait too short, too long or left out, a try too many. It shares nothing with the library.
#pragma once

#include "tests/sweep/call_plan.h"
#include "tests/sweep/lived_wire.h"

#include <optional>
#include <string>

namespace telvofm::test::sweep {

struct Conduct
{
    int result = 0;
    bool delivers = true; // a refusal delivers nothing, also one whose code is 0
    std::string reply;
    std::string deviation; // empty when every step was as it has to be
};

Conduct conductOf(const CallPlan& plan, LivedWire& wire, Link link);
// By the whole record of a call.
Conduct conductOf(const CallPlan& plan, std::span<const WireEvent> events, Link link);

} // namespace telvofm::test::sweep
