// The calls that the tests of the judges speak of.
#pragma once

#include "tests/sweep/call_plan.h"
#include "tests/unit/bytes.h"

namespace telvofm::test::sweep {

inline const std::string request = bytes({0x1C, 0x01, 0xE0, 0x04}); // its XOR is F9
inline const CallPlan commandPlan = {{{Exchange::Kind::command, {request}}}};
inline const CallPlan queryPlan = {{{Exchange::Kind::query, {request}}}};

} // namespace telvofm::test::sweep
