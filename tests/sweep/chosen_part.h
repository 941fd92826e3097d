// Which cases of a sweep on real links a program runs.
#pragma once

#include "tests/sweep/link_sweep.h"

namespace telvofm::test::sweep {

// TELVOFM_LINK_SWEEP says it: "3/40 19" is the share 3 (from 0) of forty, and of it each nineteenth case.
// Without it a few. What is wrong fails the running test, and so does a sweep that has shrunk below
// `leastCases`: it says less than is published of it.
void sweepChosenPart(LinkSweep& sweep, std::size_t leastCases);

inline constexpr Milliseconds betweenLooks{10}; // of hundreds of programs at once

} // namespace telvofm::test::sweep
