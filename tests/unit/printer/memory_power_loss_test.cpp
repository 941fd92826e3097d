// What is left in the memory when power is lost: behind each single operation on the disk it opens, is whole,
// and has everything that was acknowledged and had to be synchronised, once.
#include "tests/unit/own_folder.h"
#include "tests/unit/printer/scripted_sale.h"
#include "tests/unit/printer/simulated_disk.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace virtual_printer {
namespace {

using telvofm::test::OwnFolder;
using test::History;
using test::PowerLoss;
using test::SimulatedDisk;

class MemoryPowerLoss : public testing::Test
{
protected:
    // Where in the operations each step ends.
    std::vector<std::size_t> sell(int steps)
    {
        std::vector<std::size_t> ends;
        Memory memory(folder.file("printer.db"));
        State state = test::stateWhenNew();
        for (int step = 0; step < steps; ++step) {
            const Draft draft = test::nextStep(state);
            memory.commit(state, draft);
            state = draft.next;
            ends.push_back(disk.operations.size());
        }
        return ends;
    }

    // After how many steps a memory that starts from these files stands.
    int stepsIn(const SimulatedDisk::Files& files, const History& history, int from, int to)
    {
        disk.files = files;
        return history.find(Memory(folder.file("printer.db")), from, to);
    }

    // Loses power behind each operation from the first to the last; `ends` says where the steps end.
    void loseEverywhere(const History& history, const std::vector<std::size_t>& ends, std::size_t first,
                        std::size_t last)
    {
        const std::vector<SimulatedDisk::Operation> operations(
            disk.operations.begin(), disk.operations.begin() + static_cast<std::ptrdiff_t>(ends.back()));
        PowerLoss powerLoss;
        std::mt19937 random(1); // NOLINT(bugprone-random-generator-seed): the same run each time
        int done = 0;
        int safe = 0;
        for (std::size_t i = 0; i < std::min(operations.size(), last); ++i) {
            powerLoss.pass(operations[i]);
            while (done < static_cast<int>(ends.size()) && ends[static_cast<std::size_t>(done)] <= i + 1) {
                safe = history.isSynchronized(done) ? done + 1 : safe;
                ++done;
            }
            if (i < first) {
                continue;
            }
            const int furthest = std::min(done + 1, static_cast<int>(ends.size()));
            const std::string where =
                "behind operation " + std::to_string(i) + ", step " + std::to_string(done);
            ASSERT_GE(stepsIn(powerLoss.nothingUnsynchronized(), history, safe, furthest), 0) << where;
            ASSERT_GE(stepsIn(powerLoss.someUnsynchronized(random), history, safe, furthest), 0) << where;
            ASSERT_GE(stepsIn(test::filesAfter(operations, i + 1), history, done, furthest), 0)
                << "without a loss of power, " << where;
        }
    }

    OwnFolder folder;
    SimulatedDisk disk;
};

TEST_F(MemoryPowerLoss, LosesNothingThatWasSynchronizedAtAnyOperationOfADay)
{
    constexpr int steps = 1 + test::receiptsOfDay * test::stepsOfSale + 1 + 1 + test::stepsOfSale;
    const History history(steps);
    const std::vector<std::size_t> ends = sell(steps);
    loseEverywhere(history, ends, 0, ends.back());
}

// The log goes into the database when it has grown to a thousand pages.
TEST_F(MemoryPowerLoss, LosesNothingWhileTheLogGoesIntoTheDatabase)
{
    constexpr int steps = 640;
    const History history(steps);
    const std::vector<std::size_t> ends = sell(steps);
    const auto isCopied = [&](const SimulatedDisk::Operation& operation) {
        return operation.kind == SimulatedDisk::Operation::Kind::write &&
               operation.file == folder.file("printer.db");
    };
    const auto begin = disk.operations.begin();
    const auto copied = std::find_if(begin + static_cast<std::ptrdiff_t>(ends[0]),
                                     begin + static_cast<std::ptrdiff_t>(ends.back()), isCopied);
    ASSERT_NE(copied, begin + static_cast<std::ptrdiff_t>(ends.back())) << "more steps are needed";
    constexpr std::size_t before = 10;
    constexpr std::size_t behind = 150; // the copying, and what overwrites the log afterwards
    const auto first = static_cast<std::size_t>(copied - begin);
    loseEverywhere(history, ends, first - before, first + behind);
}

TEST_F(MemoryPowerLoss, SynchronizesADocumentBeforeTheCommitReturns)
{
    const History history(1 + test::stepsOfSale);
    const std::vector<std::size_t> ends = sell(1 + test::stepsOfSale);
    using Kind = SimulatedDisk::Operation::Kind;
    for (std::size_t step = 1; step < ends.size(); ++step) {
        const auto begin = disk.operations.begin() + static_cast<std::ptrdiff_t>(ends[step - 1]);
        const auto end = disk.operations.begin() + static_cast<std::ptrdiff_t>(ends[step]);
        ASSERT_NE(begin, end);
        const bool isDocument = step == test::stepsOfSale;
        EXPECT_EQ((end - 1)->kind, isDocument ? Kind::synchronize : Kind::write) << "step " << step;
        EXPECT_EQ(std::count_if(begin, end, [](const auto& each) { return each.kind == Kind::synchronize; }),
                  isDocument ? 1 : 0)
            << "step " << step;
    }
}

} // namespace
} // namespace virtual_printer
