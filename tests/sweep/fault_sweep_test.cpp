// Every export that sends, with a fault at every byte of its exchange in both directions, on a wire in memory
// with a clock of its own. Every TELVOFM_SWEEP_EVERY-th case is run, and each of them with 1.
#include "tests/sweep/memory_sweep.h"
#include "tests/unit/own_folder.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <map>

namespace telvofm::test::sweep {
namespace {

constexpr int refusalOfTheCall = 5;

// So that nobody takes a sweep that has shrunk for a whole one: there were 324,543 over TCP and 440,405.
std::size_t leastNumber(Link link)
{
    return link == Link::tcp ? 324000 : 440000;
}

std::size_t casesPerRun()
{
    constexpr std::size_t forSamples = 197; // prime, so that every kind of fault comes up
    const char* const given = std::getenv("TELVOFM_SWEEP_EVERY");
    return given == nullptr ? forSamples : std::strtoul(given, nullptr, 10);
}

struct Totals
{
    std::size_t cases = 0;
    std::size_t number = 0; // of the case, also of those that are left out
    std::size_t withLogs = 0;
    std::map<std::string, std::size_t> verdicts;
    std::size_t violations = 0;
};

class FaultSweep : public ::testing::TestWithParam<Circumstances>
{
protected:
    void sweep(const SweptCall& call, const Circumstances& circumstances)
    {
        const Rehearsal rehearsal = cases.rehearse(call, circumstances);
        ASSERT_EQ(rehearsal.outcome.result, rehearsedResult(call, circumstances)) << call.name;
        for (const Fault& fault : allFaults(rehearsal.extent, circumstances.link)) {
            if (totals.number++ % every == 0) {
                runCase(call, rehearsal, circumstances, fault);
            }
        }
    }

    static int rehearsedResult(const SweptCall& call, const Circumstances& circumstances)
    {
        return call.name == "getVariableStr" && circumstances.refusal != 0 ? -1 : circumstances.refusal;
    }

    void runCase(const SweptCall& call, const Rehearsal& rehearsal, const Circumstances& circumstances,
                 const Fault& fault)
    {
        CaseReport report = cases.run(call, rehearsal, circumstances, fault, totals.cases++);
        constexpr std::size_t fewer = 11; // have both logs on
        if (totals.cases % fewer == 0) {
            ++totals.withLogs;
            const auto difference =
                cases.differenceWithLogs(call, circumstances, fault, totals.withLogs % 2 == 0);
            if (!difference.empty()) {
                report.violations.push_back(difference);
            }
        }
        for (std::size_t index = 0; index < report.verdicts.size(); ++index) {
            const auto verdict = std::string(nameOf(report.verdicts[index]));
            ++totals.verdicts["call " + std::to_string(index + 1) + ", " + verdict];
        }
        for (const std::string& violation : report.violations) {
            constexpr std::size_t mostShown = 40;
            if (++totals.violations <= mostShown) {
                ADD_FAILURE() << call.name << ", refusal " << circumstances.refusal << ", " << textOf(fault)
                              << ": " << violation;
            }
        }
    }

    const OwnFolder folder;
    MemorySweep cases{folder.path.string()};
    const std::size_t every = casesPerRun();
    Totals totals;
};

TEST_P(FaultSweep, EveryCallTellsTheTruth)
{
    for (const SweptCall& call : cases.calls()) {
        for (const int refusal : {0, refusalOfTheCall}) {
            sweep(call, {GetParam().link, refusal, GetParam().probes});
        }
    }
    std::printf("%zu cases of %zu, %zu of them again with logs, %zu violations\n", totals.cases,
                totals.number, totals.withLogs, totals.violations);
    for (const auto& [verdict, count] : totals.verdicts) {
        std::printf("    %-28s %8zu\n", verdict.c_str(), count);
    }
    EXPECT_EQ(totals.violations, 0U);
    EXPECT_GE(totals.number, leastNumber(GetParam().link));
    EXPECT_GE(totals.cases, leastNumber(GetParam().link) / every);
}

using Probes = SimulatedPrinter::Probes;

INSTANTIATE_TEST_SUITE_P(Links, FaultSweep,
                         ::testing::Values(Circumstances{Link::tcp, 0, Probes::whenIdle},
                                           Circumstances{Link::tcp, 0, Probes::answersAlways},
                                           Circumstances{Link::serial, 0, Probes::unknown}),
                         [](const auto& instance) {
                             if (instance.param.link == Link::serial) {
                                 return "serial";
                             }
                             return instance.param.probes == Probes::whenIdle ? "tcp" : "tcpAnsweringProbes";
                         });

} // namespace
} // namespace telvofm::test::sweep
