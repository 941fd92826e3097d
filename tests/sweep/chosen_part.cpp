#include "tests/sweep/chosen_part.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>

namespace telvofm::test::sweep {
namespace {

struct Part
{
    std::size_t number;
    std::size_t of;
    std::size_t every;
    std::size_t first;
};

// Without a choice the case at each third of all: each waits for seconds.
Part chosenPart(std::size_t size)
{
    Part part = {0, 1, size / 3, size / 3};
    if (const char* const given = std::getenv("TELVOFM_LINK_SWEEP")) {
        char* end = nullptr;
        part.number = std::strtoul(given, &end, 10);
        part.of = std::strtoul(end + 1, &end, 10);
        part.every = std::strtoul(end, nullptr, 10);
        part.first = part.number * part.every;
    }
    return part;
}

} // namespace

void sweepChosenPart(LinkSweep& sweep, std::size_t leastCases)
{
    const Part part = chosenPart(sweep.size());
    for (std::size_t number = part.first; number < sweep.size(); number += part.every * part.of) {
        sweep.run(number);
    }
    EXPECT_GE(sweep.size(), leastCases);
    std::printf("%zu cases of %zu\n", sweep.cases(), sweep.size());
    for (const auto& [verdict, count] : sweep.verdicts()) {
        std::printf("    %-28s %8zu\n", verdict.c_str(), count);
    }
    for (const std::string& violation : sweep.violations()) {
        ADD_FAILURE() << violation;
    }
    EXPECT_GT(sweep.cases(), 0U);
}

} // namespace telvofm::test::sweep
