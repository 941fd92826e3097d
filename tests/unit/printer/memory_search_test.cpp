// Documents found in the memory by what is on them.
#include "tests/unit/own_folder.h"
#include "tests/unit/printer/scripted_sale.h"
#include "virtual_printer/memory/text_search.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sqlite3.h>

namespace virtual_printer {
namespace {

using telvofm::test::OwnFolder;
using test::momentOf;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

Document receiptWith(int number, const std::string& name, Cents price)
{
    Document receipt;
    receipt.number = number;
    receipt.moment = momentOf(number);
    receipt.total = price;
    receipt.lines = {{.kind = Line::Kind::heading, .text = "Receipt " + std::to_string(number)},
                     {.kind = Line::Kind::item, .text = name, .unitPrice = price, .sum = price},
                     {.kind = Line::Kind::payment, .text = "Hotovosť", .number = 1, .sum = price}};
    return receipt;
}

class MemorySearch : public testing::Test
{
protected:
    void keep(const std::vector<Document>& documents)
    {
        Draft draft(State(), momentOf(0));
        for (const Document& document : documents) {
            draft.keep(document);
        }
        memory.commit(State(), draft);
    }
    // Receipts with the numbers from `first` to `last`.
    void sell(int first, int last)
    {
        std::vector<Document> receipts;
        for (int number = first; number <= last; ++number) {
            receipts.push_back(receiptWith(number,
                                           number % 50 == 0 ? "Makovník" : "Chlieb " + std::to_string(number),
                                           Cents{100} * number));
        }
        keep(receipts);
    }

    [[nodiscard]] std::vector<int> find(const DocumentQuery& query) const
    {
        std::vector<int> numbers;
        for (const Document& document : memory.documents(query)) {
            numbers.push_back(document.number);
        }
        return numbers;
    }
    [[nodiscard]] std::vector<int> findText(const std::string& text) const { return find({.text = text}); }

    // What a query of the file itself gives, while no memory has it open; 0 without a row.
    std::int64_t inFile(const char* sql)
    {
        memory = Memory();
        sqlite3* database = nullptr;
        EXPECT_EQ(sqlite3_open(path.c_str(), &database), SQLITE_OK);
        std::int64_t value = 0;
        EXPECT_EQ(sqlite3_exec(
                      database, sql,
                      [](void* into, int, char** values, char**) {
                          *static_cast<std::int64_t*>(into) = std::stoll(values[0]);
                          return 0;
                      },
                      &value, nullptr),
                  SQLITE_OK)
            << sqlite3_errmsg(database);
        sqlite3_close(database);
        memory = Memory(path);
        return value;
    }

    OwnFolder folder;
    std::string path = folder.file("printer.db");
    Memory memory{path};
};

TEST_F(MemorySearch, KnowsNoLetterCase)
{
    keep({receiptWith(1, "Čučoriedky ŠTIAVNICKÉ Ľ Ő Ž Ý Ĺ", 100), receiptWith(2, "Rožok", 20)});
    EXPECT_THAT(findText("čučoriedky štiavnické ľ ő ž ý ĺ"), ElementsAre(1));
    EXPECT_THAT(findText("ČUČORIEDKY"), ElementsAre(1));
    EXPECT_THAT(findText("rOŽOK"), ElementsAre(2));
    EXPECT_THAT(findText("ožo"), ElementsAre(2));
    EXPECT_THAT(findText("cucoriedky"), IsEmpty()) << "another letter is another letter";
}

TEST_F(MemorySearch, FindsSumsWrittenWithAPointOrAComma)
{
    keep({receiptWith(1, "Chlieb", 1250), receiptWith(2, "Rožok", -20), receiptWith(3, "Mlieko 1,5 l", 1)});
    EXPECT_THAT(findText("12,50"), ElementsAre(1));
    EXPECT_THAT(findText("12.50"), ElementsAre(1));
    EXPECT_THAT(findText("-0,20"), ElementsAre(2));
    EXPECT_THAT(findText("1.5 L"), ElementsAre(3));
    EXPECT_THAT(findText("chlieb 12,50"), ElementsAre(1)) << "what stands in a line stands together";
    EXPECT_THAT(findText("HOTOVOSŤ 12.50"), ElementsAre(1));
    EXPECT_THAT(findText("rožok 12.50"), IsEmpty());
}

TEST_F(MemorySearch, FindsEverythingThatALineSays)
{
    Document receipt;
    receipt.invoice = "FA-2026/17";
    receipt.transaction = "T99";
    receipt.lines = {{.kind = Line::Kind::item,
                      .text = "Káva",
                      .unit = "ks",
                      .quantity = 2000,
                      .unitPrice = 321,
                      .sum = 642},
                     {.kind = Line::Kind::pair, .text = "Exchange rate", .right = "25.30"},
                     {.kind = Line::Kind::payment, .text = "Koruny", .sum = 642, .foreign = 16243},
                     {.kind = Line::Kind::vatSum, .vat = 'A', .number = 23, .sum = 642, .base = 522},
                     {.kind = Line::Kind::qrCode, .text = "https://example.com/O-17"},
                     {.kind = Line::Kind::picture, .text = "dots of a picture", .number = 1}};
    keep({receipt, receiptWith(2, "Rožok", 20)});
    for (const char* text : {"káva 6.42", "3.21", "exchange rate 25.30", "koruny", "162.43", "5.22",
                             "example.COM/o-17", "fa-2026/17", "t99"}) {
        EXPECT_THAT(findText(text), SizeIs(1)) << text;
    }
    EXPECT_THAT(findText("dots of"), IsEmpty());
}

TEST_F(MemorySearch, GoesOverTheWholeJournalInBothDirections)
{
    sell(1, 210);
    EXPECT_THAT(findText("makovník"), ElementsAre(50, 100, 150, 200));
    EXPECT_THAT(find({.text = "makovník", .newestFirst = true}), ElementsAre(200, 150, 100, 50));
    EXPECT_THAT(find({.text = "makovník", .newestFirst = true, .most = 2, .skip = 1}), ElementsAre(150, 100));
    EXPECT_THAT(find({.text = "makovník", .most = 2, .skip = 3}), ElementsAre(200));
    EXPECT_THAT(find({.text = "makovník", .onlyLast = true}), ElementsAre(200));
    EXPECT_THAT(findText("receipt 64"), ElementsAre(64));
    EXPECT_THAT(findText("receipt 65"), ElementsAre(65));
    EXPECT_THAT(findText("receipt 210"), ElementsAre(210));
    EXPECT_THAT(findText("chlieb"), SizeIs(206));
    EXPECT_THAT(findText("nowhere"), IsEmpty());
    EXPECT_THAT(find({.numbers = std::pair(90, 160), .text = "makovník"}), ElementsAre(100, 150));
    EXPECT_THAT(find({.kinds = {Document::Kind::drawer}, .text = "makovník"}), IsEmpty());
    EXPECT_THAT(
        find({.moments = std::pair(momentOf(1), momentOf(150)), .text = "makovník", .newestFirst = true}),
        ElementsAre(150, 100, 50));
    EXPECT_THAT(memory.numbersOf({.text = "makovník"}), ElementsAre(50, 100, 150, 200));
}

TEST_F(MemorySearch, IsTheSameAfterARestartAndInACopy)
{
    sell(1, 130);
    EXPECT_EQ(inFile("SELECT count(*) FROM searched"), 2) << "the newest documents are read themselves";
    EXPECT_THAT(findText("makovník"), ElementsAre(50, 100));
    sell(131, 150);
    EXPECT_THAT(findText("makovník"), ElementsAre(50, 100, 150));
    Memory copy;
    copy.copyFrom(memory);
    std::swap(copy, memory);
    EXPECT_THAT(findText("makovník"), ElementsAre(50, 100, 150));
    sell(151, 200);
    EXPECT_THAT(findText("makovník"), ElementsAre(50, 100, 150, 200));
}

TEST_F(MemorySearch, ForgetsWhatIsCleared)
{
    sell(1, 130);
    Draft draft(State(), momentOf(0));
    draft.service = Draft::Service::clearJournal;
    memory.commit(State(), draft);
    EXPECT_THAT(findText("makovník"), IsEmpty());
    keep({receiptWith(1, "Rožok", 20)});
    EXPECT_THAT(findText("rožok"), ElementsAre(1));
    sell(2, 70);
    EXPECT_THAT(findText("makovník"), ElementsAre(50));
}

TEST_F(MemorySearch, ForgetsWhatCameBehindWhatItGoesBackTo)
{
    keep({receiptWith(1, "Rožok", 20)});
    Draft draft(State(), momentOf(0));
    draft.standing().documents = 1; // a state, to go back to
    memory.commit(State(), draft);
    sell(2, 70);
    memory.remember();
    sell(71, 200);
    EXPECT_THAT(findText("makovník"), ElementsAre(50, 100, 150, 200));
    memory.goBack();
    EXPECT_THAT(findText("makovník"), ElementsAre(50));
    std::vector<Document> others(40, receiptWith(7, "Koláč", 300));
    keep(others);
    EXPECT_THAT(findText("makovník"), ElementsAre(50));
    EXPECT_THAT(findText("koláč"), SizeIs(40));
}

TEST_F(MemorySearch, HoldsForAMemoryOfAnEarlierVersion)
{
    sell(1, 130);
    inFile("DROP TABLE searched; PRAGMA user_version = 1");
    EXPECT_THAT(findText("MAKOVNÍK"), ElementsAre(50, 100));
    EXPECT_EQ(inFile("SELECT count(*) FROM searched"), 2);
    EXPECT_EQ(inFile("PRAGMA user_version"), 2);
}

// Tills come between two steps: what they do meanwhile leads nobody astray.
TEST_F(MemorySearch, GoesOnStepByStepWhileTheJournalGrowsOrGoes)
{
    constexpr int receipts = 2 * TextSearch::documentsOfAStep;
    std::vector<Document> many;
    for (int number = 1; number <= receipts; ++number) {
        many.push_back(receiptWith(number, number == 5 ? "Makovník" : "Chlieb", 100));
    }
    memory = Memory();
    keep(many);
    TextSearch search({.text = "makovník", .newestFirst = true});
    EXPECT_FALSE(memory.goOn(search));
    EXPECT_THAT(search.found(), IsEmpty());
    keep({receiptWith(90'000, "Makovník", 100)});
    EXPECT_TRUE(memory.goOn(search));
    EXPECT_THAT(search.found(), ElementsAre(5)) << "what came behind its beginning is not of it";

    TextSearch firstPage({.text = "chlieb", .newestFirst = true, .most = 3});
    EXPECT_TRUE(memory.goOn(firstPage)) << "the page is full";
    EXPECT_THAT(firstPage.found(), ElementsAre(receipts, receipts - 1, receipts - 2));

    TextSearch another({.text = "makovník", .newestFirst = true});
    EXPECT_FALSE(memory.goOn(another));
    EXPECT_THAT(another.found(), ElementsAre(receipts + 1));
    Draft draft(State(), momentOf(0));
    draft.service = Draft::Service::clearJournal;
    memory.commit(State(), draft);
    while (!memory.goOn(another)) {
    }
    EXPECT_THAT(another.found(), SizeIs(1));
    EXPECT_THAT(memory.documents({.positions = std::pair(receipts + 1, receipts + 1)}), IsEmpty());
}

} // namespace
} // namespace virtual_printer
