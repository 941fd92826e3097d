// A disk that is full or fails: the commit is refused, nothing of it has happened, and it goes on once there
// is room again.
#include "tests/unit/own_folder.h"
#include "tests/unit/printer/scripted_sale.h"
#include "tests/unit/printer/simulated_disk.h"

#include <functional>
#include <gtest/gtest.h>
#include <sqlite3.h>

namespace virtual_printer {
namespace {

using telvofm::test::OwnFolder;
using test::History;
using test::SimulatedDisk;
using DiskWork = SimulatedDisk::Operation::Kind;

constexpr int steps = 1 + test::receiptsOfDay * test::stepsOfSale + 1 + 1;

class MemoryFullDisk : public testing::Test
{
protected:
    // The operations on the disk from `first` on fail with `code`, so many of them.
    void failFrom(std::size_t first, std::size_t count, int code)
    {
        disk.failureOf = [this, first, count, code](const SimulatedDisk::Operation& operation) {
            // A full disk can still be synchronised, and files made shorter.
            if (code == SQLITE_FULL && operation.kind != DiskWork::write) {
                return SQLITE_OK;
            }
            const bool fails = asked >= first && asked - first < count;
            ++asked;
            return fails ? code : SQLITE_OK;
        };
        asked = 0;
    }

    // Commits all steps; one that is refused is tried again once the disk works. Returns how many were
    // refused.
    int sellWithFailure(std::size_t first, std::size_t count, int code)
    {
        disk.files.clear();
        disk.failureOf = nullptr;
        Memory memory(path);
        failFrom(first, count, code);
        int refused = 0;
        for (int step = 0; step < steps; ++step) {
            const State& before = history.states[static_cast<std::size_t>(step)];
            const Draft draft = test::nextStep(before);
            try {
                memory.commit(before, draft);
            } catch (const DiskFull&) {
                ++refused;
                EXPECT_EQ(history.find(memory, step, step), step) << "as it was before the step";
                const auto failing = std::exchange(disk.failureOf, nullptr);
                expectInFiles(step);
                memory.commit(before, draft);
            }
        }
        disk.failureOf = nullptr; // closing is not looked at
        EXPECT_EQ(history.find(memory, steps, steps), steps);
        return refused;
    }

    // What another start would find if the process were killed now.
    void expectInFiles(int step)
    {
        const SimulatedDisk::Files files = disk.files;
        const auto operations = disk.operations;
        // The holder's lock is not simulated: a second memory may look at a copy.
        for (const auto& [name, content] : files) {
            if (name.starts_with(path)) {
                disk.files[copy + name.substr(path.size())] = content;
            }
        }
        EXPECT_EQ(history.find(Memory(copy), step, step), step) << "in the files";
        disk.files = files;
        disk.operations = operations;
    }

    // Fails at each operation of the day in turn.
    void failEverywhere(std::size_t count, int code)
    {
        int refused = 0;
        for (std::size_t first = 0;; ++first) {
            const int refusedHere = sellWithFailure(first, count, code);
            ASSERT_FALSE(HasFailure()) << "at operation " << first;
            if (asked <= first) {
                break; // the day has no such operation
            }
            EXPECT_GT(refusedHere, 0) << "operation " << first << " has failed and nobody has noticed";
            refused += refusedHere;
        }
        EXPECT_GT(refused, steps);
    }

    OwnFolder folder;
    std::string path = folder.file("printer.db");
    std::string copy = folder.file("copy.db");
    SimulatedDisk disk;
    std::size_t asked = 0;
    History history{steps};
};

constexpr std::size_t everyFurther = 1'000'000;

TEST_F(MemoryFullDisk, RefusesACommitThatFindsNoRoom)
{
    failEverywhere(everyFurther, SQLITE_FULL);
}

TEST_F(MemoryFullDisk, RefusesACommitOneWriteOfWhichFails)
{
    failEverywhere(1, SQLITE_IOERR_WRITE);
}

TEST_F(MemoryFullDisk, RefusesACommitThatCannotBeSynchronizedAndDoesNotFindItLater)
{
    disk.failureOf = nullptr;
    int synchronized = 0;
    for (int failing = 0; failing < 4; ++failing) {
        disk.files.clear();
        disk.failureOf = nullptr;
        Memory memory(path);
        synchronized = 0;
        bool isRefused = false;
        for (int step = 0; step < steps; ++step) {
            disk.failureOf = [&](const SimulatedDisk::Operation& operation) {
                return operation.kind == DiskWork::synchronize && synchronized++ == failing
                           ? SQLITE_IOERR_FSYNC
                           : SQLITE_OK;
            };
            const State& before = history.states[static_cast<std::size_t>(step)];
            try {
                memory.commit(before, test::nextStep(before));
            } catch (const DiskFull&) {
                isRefused = true;
                disk.failureOf = nullptr;
                EXPECT_EQ(history.find(memory, step, step), step);
                expectInFiles(step);
                break;
            }
        }
        EXPECT_TRUE(isRefused) << failing;
    }
}

// Whoever reads the journal meanwhile goes on.
TEST_F(MemoryFullDisk, LeavesTheJournalTheSameOneWhenItIsNotClearedOrReplaced)
{
    disk.failureOf = nullptr;
    Memory memory(path);
    memory.commit(State(), test::nextStep(test::stateWhenNew()));
    memory.remember();
    Memory other;
    other.copyFrom(memory);
    const State state = memory.load().value();
    Draft clearing(state, Moment());
    clearing.service = Draft::Service::clearJournal;
    for (const std::function<void()>& change :
         {std::function<void()>([&] { memory.commit(state, clearing); }),
          std::function<void()>([&] { memory.copyFrom(other); }),
          std::function<void()>([&] { memory.goBack(); })}) {
        const std::uint64_t before = memory.journalNumber();
        failFrom(0, everyFurther, SQLITE_FULL);
        EXPECT_THROW(change(), DiskFull);
        EXPECT_EQ(memory.journalNumber(), before);
        disk.failureOf = nullptr;
        change();
        EXPECT_NE(memory.journalNumber(), before);
    }
}

TEST_F(MemoryFullDisk, KeepsToItsQuota)
{
    disk.failureOf = nullptr;
    Memory memory(path);
    constexpr std::int64_t quota = 200'000;
    memory.limitSize(quota);
    State state = test::stateWhenNew();
    int step = 0;
    const auto commitNext = [&] {
        const Draft draft = test::nextStep(state);
        memory.commit(state, draft);
        state = draft.next;
        ++step;
    };
    EXPECT_THROW(
        while (step < 100'000) { commitNext(); }, DiskFull);
    EXPECT_GT(step, 10);
    EXPECT_EQ(History(step).find(memory, step, step), step) << "as it was before";
    EXPECT_LE(disk.files[path].size(), static_cast<std::size_t>(quota));
    memory.limitSize(2 * quota);
    commitNext();
    EXPECT_EQ(History(step).find(memory, step, step), step);
}

// As those of earlier builds were. Files may be written within their size, and grow so many times and no
// further.
TEST_F(MemoryFullDisk, LeavesAFileOfLargerPagesAsItIs)
{
    {
        Memory memory(path);
        memory.commit(State(), test::nextStep(test::stateWhenNew()));
    }
    sqlite3* database = nullptr;
    ASSERT_EQ(sqlite3_open(path.c_str(), &database), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(database,
                           "PRAGMA locking_mode = EXCLUSIVE; PRAGMA journal_mode = DELETE;"
                           "PRAGMA page_size = 4096; VACUUM; PRAGMA journal_mode = WAL",
                           nullptr, nullptr, nullptr),
              SQLITE_OK);
    sqlite3_close(database);
    const std::string content = disk.files[path];
    std::size_t grown = 0;
    bool isTooSmall = true;
    for (std::size_t room = 0; isTooSmall; ++room) {
        SCOPED_TRACE(room);
        disk.files = {{path, content}};
        grown = 0;
        disk.failureOf = [&](const SimulatedDisk::Operation& operation) {
            const bool grows = operation.kind == DiskWork::write &&
                               operation.offset + operation.data.size() > disk.files[operation.file].size();
            return grows && ++grown > room ? SQLITE_FULL : SQLITE_OK;
        };
        Memory memory(path);
        isTooSmall = grown > room;
        disk.failureOf = nullptr;
        EXPECT_EQ(history.find(memory, 1, 1), 1);
        memory.commit(history.states[1], test::nextStep(history.states[1]));
        EXPECT_EQ(history.find(memory, 2, 2), 2);
    }
    EXPECT_GT(grown, 10U) << "which is what writing it once more takes";
}

} // namespace
} // namespace virtual_printer
