// Replies that are longer than a block: what of them is read for each block, and what becomes of them when
// the journal changes meanwhile.
#include "tests/system/virtual_printer_fixture.h"
#include "tests/unit/own_folder.h"
#include "tests/unit/printer/asked_printer.h"

#include <algorithm>
#include <functional>
#include <sqlite3.h>

namespace virtual_printer {
namespace {

class LongReplies : public testing::Test
{
protected:
    static Document receipt(int number) { return receiptOf(number, 1, "2026-01-01 12:00"); }

    static Memory filled(Memory memory, int receipts)
    {
        Draft draft(readyToSell(), at("2026-01-01 12:00"));
        draft.standing().documents = draft.standing().receipts = receipts;
        for (int number = 1; number <= receipts; ++number) {
            draft.keep(receipt(number));
        }
        memory.commit(State(), draft);
        return memory;
    }

    static Station stationWith(Memory memory)
    {
        return {"printer", Printer(std::move(memory), readyToSell(), [] { return at("2026-01-01 13:00"); })};
    }

    // Says the data of what comes upon these bytes: of a block that others follow, or of the last one.
    static std::string dataOf(const std::string& block, char terminator = '\x17')
    {
        std::string data = block.size() < 4 ? "" : block.substr(2, block.size() - 4);
        EXPECT_EQ(block, data.empty() ? "a block" : blockOf(data, terminator));
        return data;
    }

    static std::string said(TillSession& till, const std::string& bytes)
    {
        return bytesOf(till.take(bytes, TillSession::Time()));
    }

    const Codes codes;
    const std::string journal = request(0x9F);
    const std::string taken = "\x06";
    const std::string noDisplay = request(0xE0); // a request that is always accepted
};

// A block of 256 bytes wants as many documents as have more: two of these, then two others. The fourth cannot
// be read, and nobody notices before the second block; another printer has answered long before.
TEST_F(LongReplies, ReadForABlockOnlyTheDocumentsThatItNeeds)
{
    const std::size_t sizeOfDocument = textOf(receipt(1), 40).size();
    ASSERT_TRUE(sizeOfDocument > 128 && sizeOfDocument < 170) << sizeOfDocument;
    const telvofm::test::OwnFolder folder;
    const std::string path = folder.file("printer.db");
    filled(Memory(path), 1000);
    sqlite3* database = nullptr;
    ASSERT_EQ(sqlite3_open(path.c_str(), &database), SQLITE_OK);
    EXPECT_EQ(
        sqlite3_exec(database, "UPDATE contents SET content = x'05' WHERE id > 3", nullptr, nullptr, nullptr),
        SQLITE_OK);
    sqlite3_close(database);

    Station reading = stationWith(Memory(path));
    Station other = stationWith(Memory());
    TillSession reader(reading, CodePage::windows1250, codes);
    TillSession till(other, CodePage::windows1250, codes);
    EXPECT_EQ(dataOf(said(reader, journal)),
              (textOf(receipt(1), 40) + textOf(receipt(2), 40)).substr(0, 256));
    EXPECT_EQ(said(till, noDisplay), accepted);
    EXPECT_EQ(said(reader, taken), "") << "an end would make half a journal a whole one";
    EXPECT_FALSE(reading.trace.find(1)->isTaken);
    EXPECT_TRUE(reading.trace.find(1)->isOver);
    EXPECT_EQ(said(reader, noDisplay), accepted);
}

TEST_F(LongReplies, AreWholeHoweverLong)
{
    constexpr int receipts = 600;
    Station station = stationWith(filled(Memory(), receipts));
    Station other = stationWith(Memory());
    TillSession reader(station, CodePage::windows1250, codes);
    TillSession till(other, CodePage::windows1250, codes);
    std::string wanted;
    for (int number = 1; number <= receipts; ++number) {
        wanted += textOf(receipt(number), 40);
    }
    std::string whole = dataOf(said(reader, journal));
    EXPECT_EQ(station.trace.find(1)->answer, whole) << "as far as the till has asked for it";
    while (whole.size() + ReplyData::mostOfABlock < wanted.size()) {
        whole += dataOf(said(reader, taken));
        ASSERT_EQ(said(till, noDisplay), accepted);
    }
    whole += dataOf(said(reader, taken), '\x03');
    EXPECT_EQ(whole, wanted);
    EXPECT_EQ(said(reader, "\x03"), "");
    const Exchanged& exchanged = *station.trace.find(1);
    EXPECT_TRUE(exchanged.isTaken);
    EXPECT_EQ(exchanged.answer, wanted.substr(0, Exchanged::mostBytes));
}

TEST_F(LongReplies, HaveTheDocumentsThatThereWereWhenTheyWereAskedFor)
{
    Station station = stationWith(filled(Memory(), 3));
    TillSession reader(station, CodePage::windows1250, codes);
    std::string whole = dataOf(said(reader, journal));
    for (const Request& sold :
         {Request{1, 0x29, {"0"}}, Request{1, 0x20, {"0", "1", "0", "0", "1", "0"}},
          Request{1, 0x24, {"0", "Syr", "0", "A", "1", "0", "ks"}}, Request{1, 0x22, {"0", "0"}}}) {
        ASSERT_EQ(station.printer.execute(sold, CodePage::windows1250).refusal, Refusal::none);
    }
    ASSERT_EQ(station.printer.state().standing->documents, 4);
    whole += dataOf(said(reader, taken), '\x03');
    EXPECT_EQ(whole, textOf(receipt(1), 40) + textOf(receipt(2), 40) + textOf(receipt(3), 40));
}

TEST_F(LongReplies, BreakOffWhereTheJournalIsClearedOrReplaced)
{
    const auto clear = [](Printer& printer) {
        EXPECT_EQ(printer.execute({1, 0xF3, {"9999"}}, CodePage::windows1250).refusal, Refusal::none);
    };
    const auto replace = [](Printer& printer) { printer.takeOver(filled(Memory(), 600)); };
    const auto goBack = [](Printer& printer) { printer.goBack(); };
    for (const std::function<void(Printer&)>& change :
         {std::function<void(Printer&)>(clear), std::function<void(Printer&)>(replace),
          std::function<void(Printer&)>(goBack)}) {
        Station station = stationWith(filled(Memory(), 600));
        station.printer.remember();
        TillSession reader(station, CodePage::windows1250, codes);
        dataOf(said(reader, journal));
        dataOf(said(reader, taken));
        change(station.printer);
        EXPECT_EQ(said(reader, taken), "");
        EXPECT_EQ(said(reader, noDisplay), accepted);
    }
}

// Each piece is one document, one closure, one number.
TEST_F(LongReplies, AreMadeOfSmallPieces)
{
    const Memory memory = filled(Memory(), 300);
    const State state = readyToSell();
    struct Asked
    {
        std::string command;
        std::vector<std::string> fields;
        std::string first;
        std::string second;
    };
    const std::vector<Asked> all = {
        {"getJournal", {}, textOf(receipt(1), 40), textOf(receipt(2), 40)},
        {"getJournalStructZ", {"7", "300"}, textOf(receipt(7), 40), textOf(receipt(8), 40)},
        {"getParagonIDs", {"N", ""}, "1\r\n", "2\r\n"}};
    for (const auto& [command, fields, first, second] : all) {
        const CommandRule& rule =
            *std::find_if(commandRules().begin(), commandRules().end(),
                          [&name = command](const CommandRule& each) { return each.name == name; });
        const Reply reply = replyTo(rule, Fields(rule.fields, fields), state, memory, at("2026-01-01 13:00"));
        EXPECT_EQ(reply.data, "") << command;
        EXPECT_EQ(reply.further(), first) << command;
        EXPECT_EQ(reply.further(), second) << command;
    }
}

} // namespace
} // namespace virtual_printer
