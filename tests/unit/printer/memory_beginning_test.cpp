// A memory goes back to what it held at some moment, and remembering that moment writes nothing.
#include "tests/unit/own_folder.h"
#include "tests/unit/printer/scripted_sale.h"
#include "tests/unit/printer/simulated_disk.h"

#include <gtest/gtest.h>

namespace virtual_printer {
namespace {

using telvofm::test::OwnFolder;
using test::History;
using test::SimulatedDisk;

// Steps: a day and its closure, the beginning of the next day, a receipt that is open.
constexpr int remembered = 1 + test::receiptsOfDay * test::stepsOfSale + 1 + 1 + 4;
constexpr int stepsInAll = 2 * remembered;

class MemoryBeginning : public testing::Test
{
protected:
    void sellTo(int step)
    {
        for (; done < step; ++done) {
            commit(test::nextStep(state));
        }
    }

    void commit(const Draft& draft)
    {
        memory.commit(state, draft);
        state = draft.next;
    }

    void carryOut(Draft::Service service)
    {
        Draft draft(state, test::momentOf(0));
        draft.service = service;
        commit(draft);
    }

    [[nodiscard]] bool isAsRemembered() const
    {
        return history.find(memory, remembered, remembered) == remembered;
    }

    OwnFolder folder;
    SimulatedDisk disk;
    const History history{stepsInAll};
    Memory memory{folder.file("printer.db")};
    State state = test::stateWhenNew();
    int done = 0;
};

TEST_F(MemoryBeginning, HasAClosureAndAnOpenReceipt) // or the tests below would show little
{
    sellTo(remembered);
    EXPECT_FALSE(memory.closures({}, {}).empty());
    EXPECT_TRUE(memory.backup());
    EXPECT_TRUE(state.receipt);
}

TEST_F(MemoryBeginning, ComesBackAfterSales)
{
    sellTo(remembered);
    memory.remember();
    for (int round = 0; round < 2; ++round) {
        sellTo(stepsInAll - round);
        ASSERT_FALSE(isAsRemembered());
        memory.goBack();
        EXPECT_TRUE(isAsRemembered());
        state = *memory.load();
        done = remembered;
    }
    sellTo(stepsInAll);
    EXPECT_EQ(history.find(memory, stepsInAll, stepsInAll), stepsInAll) << "and goes on as it did";
}

// What is searched is kept apart from the documents.
TEST_F(MemoryBeginning, FindsNothingOfWhatWasTakenBack)
{
    sellTo(remembered);
    memory.remember();
    constexpr int manySteps = 1000;
    sellTo(manySteps);
    ASSERT_FALSE(memory.numbersOf({.text = "chlieb 50."}).empty());
    memory.goBack();
    EXPECT_TRUE(memory.numbersOf({.text = "chlieb 50."}).empty());
    state = *memory.load();
    Draft other(state, test::momentOf(state.standing->documents));
    Document document = test::documentOf(*state.standing, Document::Kind::receipt, 77);
    document.lines.push_back({.kind = Line::Kind::item, .text = "Mlieko"});
    test::keep(other, document);
    commit(other);
    EXPECT_EQ(memory.numbersOf({.text = "mlieko"}), std::vector{77});
}

TEST_F(MemoryBeginning, ComesBackWhenTheReceiptWasLonger)
{
    sellTo(remembered);
    Draft longer(state, test::momentOf(0));
    longer.receipt().document.lines.resize(state.receipt->document.lines.size() + 20);
    memory.remember();
    commit(longer);
    memory.goBack();
    EXPECT_TRUE(isAsRemembered());
}

TEST_F(MemoryBeginning, ComesBackAfterTheJournalWasCleared)
{
    sellTo(remembered);
    memory.remember();
    carryOut(Draft::Service::clearJournal);
    ASSERT_TRUE(memory.documents({}).empty());
    memory.goBack();
    EXPECT_TRUE(isAsRemembered());
}

TEST_F(MemoryBeginning, ComesBackWithItsBackupAfterTheClosuresWereCleared)
{
    sellTo(remembered);
    const auto backup = memory.backup();
    ASSERT_TRUE(backup);
    memory.remember();
    sellTo(stepsInAll);
    carryOut(Draft::Service::clearClosures);
    ASSERT_FALSE(memory.backup());
    memory.goBack();
    EXPECT_TRUE(isAsRemembered());
    ASSERT_TRUE(memory.backup());
    EXPECT_EQ(*memory.backup()->settings, *backup->settings);
}

// Whichever operation of the disk fails: the memory is as it was just before, or as remembered.
TEST_F(MemoryBeginning, ComesBackWholeOrNotAtAll)
{
    sellTo(remembered);
    memory.remember();
    sellTo(remembered + 1);
    carryOut(Draft::Service::clearJournal);
    int failures = 0;
    for (bool isBack = false; !isBack; ++failures) {
        int left = failures;
        disk.failureOf = [&left](const SimulatedDisk::Operation& /*operation*/) {
            constexpr int full = 13;
            return left-- == 0 ? full : 0;
        };
        try {
            memory.goBack();
            isBack = true;
        } catch (const DiskFull&) {
            EXPECT_TRUE(memory.documents({}).empty()) << failures;
            EXPECT_TRUE(test::haveSameParts(*memory.load(), state)) << failures;
        }
    }
    disk.failureOf = nullptr;
    EXPECT_GT(failures, 2);
    EXPECT_TRUE(isAsRemembered());
}

TEST_F(MemoryBeginning, HasNoBackupThatWasMadeLater)
{
    sellTo(1);
    memory.remember();
    sellTo(remembered);
    ASSERT_TRUE(memory.backup());
    memory.goBack();
    EXPECT_EQ(history.find(memory, 1, 1), 1);
    EXPECT_FALSE(memory.backup());
}

TEST_F(MemoryBeginning, ComesBackAfterAnotherMemoryTookItsPlace)
{
    sellTo(remembered);
    memory.remember();
    for (int round = 0; round < 2; ++round) {
        memory.copyFrom(Memory());
        ASSERT_FALSE(isAsRemembered());
        memory.goBack();
        EXPECT_TRUE(isAsRemembered());
    }
}

TEST_F(MemoryBeginning, IsStillThereWhenTheMemoryWasMovedAndOpenedAgain)
{
    sellTo(remembered);
    memory.remember();
    sellTo(stepsInAll);
    Memory moved = std::move(memory);
    moved.goBack();
    memory = Memory(); // closed
    moved = Memory();
    EXPECT_EQ(history.find(Memory(folder.file("printer.db")), remembered, remembered), remembered);
}

// A hundred thousand documents would be copied at every start.
TEST_F(MemoryBeginning, IsRememberedWithoutWritingAnything)
{
    sellTo(remembered);
    const std::size_t before = disk.operations.size();
    memory.remember();
    EXPECT_EQ(disk.operations.size(), before);
}

} // namespace
} // namespace virtual_printer
