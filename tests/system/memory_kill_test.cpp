// A process that writes a printer's memory is killed at each step of a day, at any moment of the step: what
// it has said to be committed is there, the step that it was at happened whole or not at all.
#include "tests/system/child_process.h"
#include "tests/unit/own_folder.h"
#include "tests/unit/printer/scripted_sale.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>
#include <random>

namespace virtual_printer {
namespace {

using telvofm::test::OwnFolder;
using Clock = std::chrono::steady_clock;

constexpr int stepsOfDay = 1 + test::receiptsOfDay * test::stepsOfSale + 1;

class Writer
{
public:
    explicit Writer(const std::string& file) : process({TELVOFM_MEMORY_WRITER, file})
    {
        EXPECT_TRUE(hasReported()) << "it has not opened the memory";
    }

    void beginStep() const { EXPECT_TRUE(process.write("g")); }
    // Waits for it; false when the process is gone.
    [[nodiscard]] bool hasReported() const { return process.byte().has_value(); }
    void kill() { process.kill(); }
    [[nodiscard]] std::int64_t id() const { return process.id(); }

private:
    telvofm::test::ChildProcess process;
};

// How long the last step that was let finish took, apart for those that wait for the disk.
class Durations
{
public:
    void note(bool isSynchronized, Clock::duration duration) { last.at(isSynchronized ? 1 : 0) = duration; }
    // Any moment of a step, and a little behind it. One that took long because the machine was busy with
    // something else says nothing of the next.
    [[nodiscard]] Clock::duration anyMoment(bool isSynchronized, std::mt19937& random) const
    {
        constexpr double aLittleBehind = 1.3;
        constexpr Clock::duration longest = std::chrono::milliseconds(50);
        std::uniform_real_distribution<double> part(0, aLittleBehind);
        return std::chrono::duration_cast<Clock::duration>(
            std::min(last.at(isSynchronized ? 1 : 0), longest) * part(random));
    }

private:
    std::array<Clock::duration, 2> last{};
};

class MemoryKill : public testing::Test
{
protected:
    // Kills a writer at step `target` after it has taken the steps up to there; returns where the memory
    // then stands.
    int killAt(int target, int stand)
    {
        Writer writer(file);
        for (; stand < target; ++stand) {
            const Clock::time_point start = Clock::now();
            writer.beginStep();
            EXPECT_TRUE(writer.hasReported()) << "step " << stand;
            durations.note(history.isSynchronized(stand), Clock::now() - start);
        }
        const Clock::duration delay = durations.anyMoment(history.isSynchronized(target), random);
        writer.beginStep();
        for (const Clock::time_point start = Clock::now(); Clock::now() - start < delay;) {
        }
        writer.kill();
        const int reported = target + (writer.hasReported() ? 1 : 0);
        const int found = history.find(Memory(file), reported, target + 1);
        EXPECT_GE(found, reported) << "killed at step " << target;
        killedBefore += found == target ? 1 : 0;
        return found;
    }

    static constexpr int daysOfAFile = 20;

    OwnFolder folder;
    std::string file = folder.file("printer.db");
    test::History history{daysOfAFile * stepsOfDay + 1};
    Durations durations;
    std::mt19937 random{std::random_device{}()};
    int killedBefore = 0;
};

// Each step of as many days as the build or the variable TELVOFM_KILLS says.
TEST_F(MemoryKill, LeavesEveryCommitAndNoHalfOne)
{
    const char* const wanted = std::getenv("TELVOFM_KILLS");
    const int days = wanted == nullptr ? TELVOFM_KILLS_OF_EACH_STEP : std::atoi(wanted);
    int kills = 0;
    for (int day = 0; day < days;) {
        std::filesystem::remove(file);
        int stand = 0;
        for (int target = 0; target < daysOfAFile * stepsOfDay && day < days; ++target) {
            stand = killAt(target, stand);
            ASSERT_FALSE(HasFailure());
            ++kills;
            day += target % stepsOfDay == stepsOfDay - 1 ? 1 : 0;
        }
    }
    std::printf("%d kills, %d of them before the step was committed\n", kills, killedBefore);
}

TEST_F(MemoryKill, FreesTheFileThatTheProcessHeld)
{
    Writer writer(file);
    const std::string holder = "in use by process " + std::to_string(writer.id()) + ";";
    try {
        const Memory memory(file);
        ADD_FAILURE() << "two processes hold it";
    } catch (const std::runtime_error& error) {
        EXPECT_THAT(error.what(), testing::HasSubstr(holder));
    }
    writer.kill();
    EXPECT_NO_THROW(Memory{file});
}

} // namespace
} // namespace virtual_printer
