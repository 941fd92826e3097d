// Which cases of a sweep on real links a program runs.
#pragma once

#include "tests/sweep/link_sweep.h"

namespace telvofm::test::sweep {

// TELVOFM_LINK_SWEEP says it: "3/40 20" is the share 3 (from 0) of forty, and of it each twentieth case.
// Without it a few. What is wrong fails the running test.
void sweepChosenPart(LinkSweep& sweep);

inline constexpr Milliseconds betweenLooks{10}; // of hundreds of programs at once

} // namespace telvofm::test::sweep
