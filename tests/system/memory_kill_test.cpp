// A process that writes a printer's memory is killed at each step of a day, at any moment of the step: what
// it has said to be committed is there, the step that it was at happened whole or not at all.
#include "tests/unit/own_folder.h"
#include "tests/unit/printer/scripted_sale.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>
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
    explicit Writer(std::string file)
    {
        std::array<int, 2> in{};
        std::array<int, 2> out{};
        EXPECT_EQ(::pipe(in.data()), 0);
        EXPECT_EQ(::pipe(out.data()), 0);
        posix_spawn_file_actions_t actions;
        ::posix_spawn_file_actions_init(&actions);
        ::posix_spawn_file_actions_adddup2(&actions, in[0], STDIN_FILENO);
        ::posix_spawn_file_actions_adddup2(&actions, out[1], STDOUT_FILENO);
        for (const int end : {in[0], in[1], out[0], out[1]}) {
            ::posix_spawn_file_actions_addclose(&actions, end);
        }
        std::string program = TELVOFM_MEMORY_WRITER;
        const std::array<char*, 3> arguments = {program.data(), file.data(), nullptr};
        EXPECT_EQ(::posix_spawn(&process, program.c_str(), &actions, nullptr, arguments.data(), environ), 0);
        ::posix_spawn_file_actions_destroy(&actions);
        ::close(in[0]);
        ::close(out[1]);
        input = in[1];
        output = out[0];
        EXPECT_TRUE(hasReported()) << "it has not opened the memory";
    }
    Writer(const Writer&) = delete;
    Writer& operator=(const Writer&) = delete;
    ~Writer()
    {
        kill();
        ::close(input);
        ::close(output);
    }

    void beginStep() const { EXPECT_EQ(::write(input, "g", 1), 1); }
    // Waits for it; false when the process is gone.
    [[nodiscard]] bool hasReported() const
    {
        char byte = 0;
        return ::read(output, &byte, 1) == 1;
    }
    void kill()
    {
        if (process > 0) {
            ::kill(process, SIGKILL);
            ::waitpid(process, nullptr, 0);
            process = 0;
        }
    }
    [[nodiscard]] pid_t id() const { return process; }

private:
    pid_t process = 0;
    int input = -1;
    int output = -1;
};

// How long the last step that was let finish took, apart for those that wait for the disk.
class Durations
{
public:
    void note(bool isSynchronized, Clock::duration duration) { last.at(isSynchronized ? 1 : 0) = duration; }
    // Any moment of a step, and a little behind it.
    [[nodiscard]] Clock::duration anyMoment(bool isSynchronized, std::mt19937& random) const
    {
        constexpr double aLittleBehind = 1.3;
        std::uniform_real_distribution<double> part(0, aLittleBehind);
        return std::chrono::duration_cast<Clock::duration>(last.at(isSynchronized ? 1 : 0) * part(random));
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

// Each step of 20 days, or of as many as TELVOFM_KILLS says.
TEST_F(MemoryKill, LeavesEveryCommitAndNoHalfOne)
{
    const char* const wanted = std::getenv("TELVOFM_KILLS");
    const int days = wanted == nullptr ? daysOfAFile : std::atoi(wanted);
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
