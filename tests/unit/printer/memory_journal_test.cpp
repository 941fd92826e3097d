// Documents and closures in the memory: as they were committed, found by what identifies them, and checked.
#include "tests/unit/own_folder.h"
#include "tests/unit/printer/scripted_sale.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sqlite3.h>

namespace virtual_printer {
namespace {

using telvofm::test::OwnFolder;
using test::momentOf;
using testing::ElementsAre;
using testing::IsEmpty;

class MemoryJournal : public testing::Test
{
protected:
    MemoryJournal()
    {
        keep(Document::Kind::receipt, 1, 1, 10);
        keep(Document::Kind::drawer, 1, 1, 20);
        keep(Document::Kind::cancelledReceipt, 0, 1, 30);
        keep(Document::Kind::receipt, 2, 1, 40, "F1", "T1");
        keep(Document::Kind::closure, 1, 1, 50);
        keepClosure(1, 50);
        keep(Document::Kind::receipt, 3, 2, 60, "F1");
        keep(Document::Kind::receipt, 4, 2, 70, "", "T1");
        keep(Document::Kind::closure, 2, 2, 80);
        keepClosure(2, 80);
    }

    void keep(Document::Kind kind, int number, int closure, int second, const std::string& invoice = "",
              const std::string& transaction = "")
    {
        Document document;
        document.kind = kind;
        document.number = number;
        document.closure = closure;
        document.moment = momentOf(second);
        document.invoice = invoice;
        document.transaction = transaction;
        document.lines.push_back({.kind = Line::Kind::text, .text = std::to_string(second)});
        Draft draft(State(), momentOf(second));
        draft.keep(document);
        memory.commit(State(), draft);
    }

    void keepClosure(int number, int second)
    {
        Draft draft(State(), momentOf(second));
        draft.keep(
            Closure{.number = number, .moment = momentOf(second), .sums = {}, .drawer = {{1, number}}});
        memory.commit(State(), draft);
    }

    void serve(Draft::Service service)
    {
        Draft draft(State(), momentOf(0));
        draft.service = service;
        memory.commit(State(), draft);
    }

    // The second in which each was kept.
    [[nodiscard]] std::vector<int> found(const DocumentQuery& query) const
    {
        std::vector<int> seconds;
        for (const Document& document : memory.documents(query)) {
            seconds.push_back(static_cast<int>((document.moment - momentOf(0)).count()));
            EXPECT_EQ(document.lines.at(0).text, std::to_string(seconds.back()));
        }
        return seconds;
    }

    // Behind the memory's back.
    void change(const char* sql)
    {
        memory = Memory();
        sqlite3* database = nullptr;
        ASSERT_EQ(sqlite3_open(path.c_str(), &database), SQLITE_OK);
        EXPECT_EQ(sqlite3_exec(database, sql, nullptr, nullptr, nullptr), SQLITE_OK)
            << sqlite3_errmsg(database);
        sqlite3_close(database);
        memory = Memory(path);
    }

    OwnFolder folder;
    std::string path = folder.file("printer.db");
    Memory memory{path};
};

TEST_F(MemoryJournal, FindsDocumentsInTheirOrder)
{
    EXPECT_THAT(found({}), ElementsAre(10, 20, 30, 40, 50, 60, 70, 80));
    EXPECT_THAT(memory.numbersOf({}), ElementsAre(1, 1, 0, 2, 1, 3, 4, 2));
}

TEST_F(MemoryJournal, FindsDocumentsByKind)
{
    EXPECT_THAT(found({.kinds = {Document::Kind::receipt}}), ElementsAre(10, 40, 60, 70));
    EXPECT_THAT(found({.kinds = {Document::Kind::closure, Document::Kind::drawer}}), ElementsAre(20, 50, 80));
    EXPECT_THAT(found({.kinds = {Document::Kind::report}}), IsEmpty());
}

TEST_F(MemoryJournal, FindsDocumentsByNumberMomentAndClosure)
{
    EXPECT_THAT(found({.numbers = std::pair(2, 3)}), ElementsAre(40, 60, 80));
    EXPECT_THAT(found({.numbers = std::pair(5, 9)}), IsEmpty());
    EXPECT_THAT(found({.moments = std::pair(momentOf(20), momentOf(50))}), ElementsAre(20, 30, 40, 50));
    EXPECT_THAT(found({.closure = 2}), ElementsAre(60, 70, 80));
    EXPECT_THAT(memory.numbersOf({.kinds = {Document::Kind::receipt}, .closure = 2}), ElementsAre(3, 4));
}

TEST_F(MemoryJournal, TurnsThePagesOfAPeriodInTheOrderOfTheDocuments)
{
    const std::pair period(momentOf(20), momentOf(60));
    EXPECT_THAT(found({.moments = period, .most = 2, .skip = 1}), ElementsAre(30, 40));
    EXPECT_THAT(found({.moments = period, .newestFirst = true, .most = 2}), ElementsAre(60, 50));
    EXPECT_THAT(found({.moments = period, .newestFirst = true, .most = 9, .skip = 3}), ElementsAre(30, 20));
    EXPECT_THAT(found({.kinds = {Document::Kind::receipt}, .moments = period, .most = 2, .skip = 1}),
                ElementsAre(60));
    EXPECT_THAT(found({.moments = std::pair(momentOf(90), momentOf(99)), .most = 2}), IsEmpty());
    keep(Document::Kind::receipt, 5, 3, 25); // the clock was set back
    keep(Document::Kind::receipt, 6, 3, 75);
    EXPECT_THAT(found({.moments = period, .newestFirst = true, .most = 3}), ElementsAre(25, 60, 50));
    for (int receipt = 7; receipt < 27; ++receipt) {
        keep(Document::Kind::receipt, receipt, 3, 70 + receipt);
    }
    keep(Document::Kind::receipt, 27, 3, 35);
    EXPECT_THAT(found({.moments = period, .newestFirst = true, .most = 3}), ElementsAre(35, 25, 60));
    EXPECT_THAT(found({.moments = period, .most = 3, .skip = 4}), ElementsAre(60, 25, 35));
}

TEST_F(MemoryJournal, FindsDocumentsByWhatTheTillHasCalledThem)
{
    EXPECT_THAT(found({.invoice = "F1"}), ElementsAre(40, 60));
    EXPECT_THAT(found({.transaction = "T1"}), ElementsAre(40, 70));
    EXPECT_THAT(found({.invoice = "F1", .transaction = "T1"}), ElementsAre(40));
    EXPECT_THAT(found({.invoice = "F"}), IsEmpty());
    EXPECT_THAT(found({.invoice = "' OR 1 --"}), IsEmpty());
    EXPECT_THAT(found({.invoice = ""}), IsEmpty()) << "documents without an invoice are not found by it";
}

TEST_F(MemoryJournal, FindsTheNewestOnly)
{
    EXPECT_THAT(found({.onlyLast = true}), ElementsAre(80));
    EXPECT_THAT(found({.kinds = {Document::Kind::receipt}, .onlyLast = true}), ElementsAre(70));
    EXPECT_THAT(found({.numbers = std::pair(1, 2), .closure = 1, .onlyLast = true}), ElementsAre(50));
}

TEST_F(MemoryJournal, KeepsSeveralDocumentsOfOneCommitInTheirOrder)
{
    Draft draft(State(), momentOf(0));
    for (int number = 5; number < 8; ++number) {
        Document document;
        document.number = number;
        draft.keep(document);
    }
    memory.commit(State(), draft);
    EXPECT_THAT(memory.numbersOf({.numbers = std::pair(5, 9)}), ElementsAre(5, 6, 7));
}

TEST_F(MemoryJournal, FindsClosuresByNumberAndMoment)
{
    const auto numbers = [](const std::vector<Closure>& closures) {
        std::vector<int> found;
        for (const Closure& closure : closures) {
            EXPECT_EQ(closure.drawer.at(1), closure.number);
            found.push_back(closure.number);
        }
        return found;
    };
    EXPECT_THAT(numbers(memory.closures({}, {})), ElementsAre(1, 2));
    EXPECT_THAT(numbers(memory.closures(std::pair(2, 9), {})), ElementsAre(2));
    EXPECT_THAT(numbers(memory.closures({}, std::pair(momentOf(0), momentOf(50)))), ElementsAre(1));
    EXPECT_THAT(memory.closures(std::pair(2, 2), std::pair(momentOf(0), momentOf(50))), IsEmpty());
}

TEST_F(MemoryJournal, IsWholeAsItWasWritten)
{
    EXPECT_TRUE(memory.isJournalWhole(1));
    EXPECT_TRUE(memory.isJournalWhole(2));
    EXPECT_FALSE(memory.isJournalWhole(3)) << "there is no such closure";
}

TEST_F(MemoryJournal, IsNotWholeWhenADocumentWasChanged)
{
    change("UPDATE contents SET content = replace(content, '40', '41') WHERE id = 4");
    EXPECT_FALSE(memory.isJournalWhole(1));
    EXPECT_TRUE(memory.isJournalWhole(2)) << "of another day";
}

TEST_F(MemoryJournal, IsNotWholeWhenADocumentIsMissing)
{
    change("DELETE FROM documents WHERE id = 5");
    EXPECT_FALSE(memory.isJournalWhole(1));
}

TEST_F(MemoryJournal, IsNotWholeWhenAContentIsMissing)
{
    change("DELETE FROM contents WHERE id = 5");
    EXPECT_FALSE(memory.isJournalWhole(1));
}

TEST_F(MemoryJournal, IsNotWholeWhenADocumentIsFoundByAnotherNumberOrMoment)
{
    change("UPDATE documents SET number = 9 WHERE id = 1");
    EXPECT_FALSE(memory.isJournalWhole(1));
    change("UPDATE documents SET moment = moment + 1 WHERE id = 6");
    EXPECT_FALSE(memory.isJournalWhole(2));
}

TEST_F(MemoryJournal, IsNotWholeWhenDocumentsHaveChangedPlaces)
{
    change("UPDATE documents SET id = 100 WHERE id = 1; UPDATE contents SET id = 100 WHERE id = 1");
    EXPECT_FALSE(memory.isJournalWhole(1));
}

TEST_F(MemoryJournal, HasNoDocumentsOnceItIsClearedAndStaysWhole)
{
    serve(Draft::Service::clearJournal);
    EXPECT_THAT(found({}), IsEmpty());
    EXPECT_TRUE(memory.isJournalWhole(1));
    EXPECT_EQ(memory.closures({}, {}).size(), 2U);
    keep(Document::Kind::receipt, 5, 3, 90);
    keepClosure(3, 90);
    EXPECT_TRUE(memory.isJournalWhole(3));
}

TEST_F(MemoryJournal, LetsClosuresBeCountedAnewOnceTheyAreCleared)
{
    serve(Draft::Service::clearClosures);
    EXPECT_THAT(memory.closures({}, {}), IsEmpty());
    EXPECT_EQ(found({}).size(), 8U);
    EXPECT_EQ(memory.documents({}).front().closure, 0);
    keep(Document::Kind::receipt, 1, 1, 90);
    keepClosure(1, 90);
    EXPECT_THAT(found({.closure = 1}), ElementsAre(90));
    EXPECT_TRUE(memory.isJournalWhole(1));
}

TEST_F(MemoryJournal, KeepsNothingOfACommitThatFailsAtItsLastPart)
{
    Draft draft(State(), momentOf(0));
    draft.standing().receipts = 99;
    draft.keep(Document());
    draft.keep(Closure{.number = 2, .moment = momentOf(0), .sums = {}, .drawer = {}}); // is there already
    EXPECT_THROW(memory.commit(State(), draft), DiskFull);
    EXPECT_EQ(found({}).size(), 8U);
    EXPECT_EQ(memory.load()->standing->receipts, 0);
    keep(Document::Kind::receipt, 5, 3, 90);
    EXPECT_EQ(found({}).back(), 90);
    memory = Memory();
    memory = Memory(path);
    EXPECT_EQ(found({}).size(), 9U);
}

TEST_F(MemoryJournal, SaysSoWhenARecordIsDamaged)
{
    change("UPDATE contents SET content = x'7F' WHERE id = 1");
    EXPECT_THROW((void)memory.documents({}), std::runtime_error);
}

} // namespace
} // namespace virtual_printer
