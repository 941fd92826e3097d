// Extracts of the journal and the fiscal memory: what lies within the bounds, and nothing else.
#include "tests/unit/printer/asked_printer.h"

namespace virtual_printer {
namespace {

using Lines = std::vector<std::string>;

// Three days of one receipt each.
class PrinterExtracts : public AskedPrinter
{
protected:
    void SetUp() override
    {
        keepDay(1, "2025-12-30", 3000);
        keepDay(2, "2025-12-31", 3100);
        keepDay(3, "2026-01-01", 100);
    }

    // The numbers of the receipts (R) and of the daily closures (Z) in a text.
    static std::string documentsIn(const std::string& text)
    {
        std::string found;
        for (std::size_t i = 0; i < text.size(); ++i) {
            const std::string_view rest = std::string_view(text).substr(i);
            for (const std::string_view head : {"\nReceipt ", "DAILY CLOSURE "}) {
                if (rest.starts_with(head)) {
                    found += head[0] == '\n' ? "R" : "Z";
                    found += rest[head.size()];
                }
            }
        }
        return found;
    }

    // The extract that the command reads and the one that its printing twin prints are about the same
    // documents.
    std::string extract(const std::string& name, const Lines& fields)
    {
        std::string documents = documentsIn(dataOf("get" + name, fields));
        std::string printed;
        for (const std::string& line : paperOf("print" + name, fields)) {
            printed += line + "\n";
        }
        EXPECT_EQ(documentsIn(printed), documents);
        EXPECT_EQ(printed.find("Nothing within these bounds") != std::string::npos, documents.empty());
        return documents;
    }

    std::string byDates(const std::string& letter, const std::string& from, const std::string& to)
    {
        std::string documents = extract("JournalStructD", {letter, from, to});
        EXPECT_EQ(extract("JournalStructD1", {letter, from, to}), documents);
        return documents;
    }

    std::string closuresByDates(const std::string& from, const std::string& to)
    {
        return dataOf("getIntervalFPD", {"0", from, to});
    }

    std::string closuresByNumbers(const std::string& from, const std::string& to)
    {
        return dataOf("getIntervalFPC", {"0", from, to});
    }

    const std::string first = textOf(closureOf(1, "2025-12-30 22:00", 3000), 40);
    const std::string second = textOf(closureOf(2, "2025-12-31 22:00", 3100), 40);
    const std::string third = textOf(closureOf(3, "2026-01-01 22:00", 100), 40);
};

TEST_F(PrinterExtracts, GiveTheReceiptsOfTheDatesInBothForms)
{
    EXPECT_EQ(byDates("P", "2025-12-31", "2026-01-01"), "R2R3");
    EXPECT_EQ(byDates("P", "31.12.2025", "31.12.2025"), "R2");
    EXPECT_EQ(byDates("P", "01.01.2026", "31.12.2026"), "R3");
    EXPECT_EQ(byDates("P", "2025-12-29", "2025-12-29"), "");
    EXPECT_EQ(byDates("P", "2026-01-02", "2099-12-31"), "");
    EXPECT_EQ(byDates("P", "2026-01-01", "2025-12-30"), "");
}

TEST_F(PrinterExtracts, HeedATimeBehindTheDate)
{
    EXPECT_EQ(byDates("P", "2025-12-30 12:00", "2025-12-31 11:59"), "R1");
    EXPECT_EQ(byDates("P", "30.12.2025 12:01", "31.12.2025 12:00"), "R2");
}

TEST_F(PrinterExtracts, AreOpenAtAnEmptyBound)
{
    EXPECT_EQ(byDates("P", "", "2025-12-31"), "R1R2");
    EXPECT_EQ(byDates("P", "2025-12-31", ""), "R2R3");
    EXPECT_EQ(byDates("P", "", ""), "R1R2R3");
}

TEST_F(PrinterExtracts, GiveTheClosuresUnderTheirLetter)
{
    EXPECT_EQ(byDates("Z", "2025-12-31", "2026-01-01"), "Z2Z3");
    EXPECT_EQ(byDates("Z", "2025-12-31 00:00", "2025-12-31 21:59"), "");
}

TEST_F(PrinterExtracts, GiveDocumentsByTheirNumbers)
{
    EXPECT_EQ(extract("JournalStructZ", {"2", "3"}), "R2R3");
    EXPECT_EQ(extract("JournalStructZ", {"4", "9"}), "");
    EXPECT_EQ(extract("JournalStructZ", {"-1", "0"}), "");
    EXPECT_EQ(extract("JournalStructZ", {"3", "2"}), "");
    EXPECT_EQ(extract("JournalStructZ1", {"P", "1", "1"}), "R1");
    EXPECT_EQ(extract("JournalStructZ1", {"Z", "1", "2"}), "Z1Z2");
    EXPECT_EQ(extract("JournalStructU", {"2"}), "R2");
    EXPECT_EQ(extract("JournalStructU", {"7"}), "");
    EXPECT_EQ(extract("JournalStructU", {"no number"}), "");
    EXPECT_EQ(extract("JournalStructU", {"2x"}), "");
}

TEST_F(PrinterExtracts, OfTheFiscalMemoryGiveTheClosuresByNumber)
{
    EXPECT_EQ(closuresByNumbers("1", "2"), first + second);
    EXPECT_EQ(closuresByNumbers("3", "99"), third);
    EXPECT_EQ(closuresByNumbers("4", "99"), "");
    EXPECT_EQ(closuresByNumbers("2", "1"), "");
}

TEST_F(PrinterExtracts, OfTheFiscalMemoryGiveTheClosuresByDate)
{
    EXPECT_EQ(closuresByDates("31.12.2025", "01.01.2026"), second + third);
    EXPECT_EQ(closuresByDates("2025-12-30", "2025-12-30"), first);
    EXPECT_EQ(closuresByDates("2020-01-01", "2025-12-29"), "");
    EXPECT_EQ(closuresByDates("", ""), first + second + third);
    EXPECT_EQ(closuresByDates("29.02.2024", ""), first + second + third); // a leap year
}

TEST_F(PrinterExtracts, OfTheFiscalMemoryArePrintedWithinTheirBounds)
{
    Lines printed = {doubleRule, centred("FISCAL MEMORY")};
    for (const std::string& line : linesIn(second)) {
        printed.push_back(line);
    }
    printed.push_back(doubleRule);
    EXPECT_EQ(paperOf("printIntervalFPC", {"0", "2", "2"}), printed);
    EXPECT_EQ(paperOf("printIntervalFPD", {"0", "2025-12-31", "2025-12-31"}), printed);
    EXPECT_EQ(paperOf("printIntervalFPC", {"0", "4", "5"}),
              (Lines{doubleRule, centred("FISCAL MEMORY"), "Nothing within these bounds", doubleRule}));
}

TEST_F(PrinterExtracts, ShowTheDocumentsAsTheyWerePrinted)
{
    const std::string text = textOf(receiptOf(2, 2, "2025-12-31 12:00", "Chlieb", 3100), columns());
    EXPECT_EQ(dataOf("getJournalStructU", {"2"}), text);
    Lines printed = {doubleRule, centred("JOURNAL")};
    for (const std::string& line : linesIn(text)) {
        printed.push_back(line);
    }
    printed.push_back(doubleRule);
    EXPECT_EQ(paperOf("printJournalStructU", {"2"}), printed);
}

TEST_F(PrinterExtracts, AreCutOffAsAWhole)
{
    ask("printJournalStructZ", {"1", "3"});
    const auto happened = asked().takeHappened();
    ASSERT_EQ(happened.size(), 1U);
    std::string cuts;
    for (const Shown& shown : happened.front().shown) {
        cuts += std::get<Printed>(shown).line.kind == Line::Kind::cut ? "|" : ".";
    }
    EXPECT_EQ(cuts, std::string(2 + 3 * 4 + 1, '.') +
                        "|"); // the head, three receipts of four lines, the rule at the end
}

TEST_F(PrinterExtracts, AreRefusedForBoundsThatAreNone)
{
    for (const std::string date : {"yesterday", "2026-13-01", "2026-02-30", "31.02.2026", "29.02.2025",
                                   "2026-1-1", "2026-01-01 24:00", "2026-01-01x", "21112026"}) {
        EXPECT_EQ(refusalOf("getJournalStructD", {"P", date, ""}), Refusal::badDate) << date;
        EXPECT_EQ(refusalOf("printIntervalFPD", {"0", "", date}), Refusal::badDate) << date;
    }
    EXPECT_EQ(refusalOf("getIntervalFPC", {"0", "one", "2"}), Refusal::badNumber);
    EXPECT_EQ(refusalOf("getJournalStructZ1", {"P", "1", ""}), Refusal::badNumber);
    EXPECT_EQ(refusalOf("getJournalStructD", {"P", ""}), Refusal::wrongFields);
    EXPECT_EQ(refusalOf("printIntervalFPC", {"0", "1"}), Refusal::wrongFields);
}

TEST_F(PrinterExtracts, ArePrintedOnlyWithPaperAndAClosedCover)
{
    const Lines all = {"P", "", ""};
    let(&Hardware::paperIsOut);
    EXPECT_EQ(refusalOf("printJournalStructD", all), Refusal::outOfPaper);
    EXPECT_EQ(refusalOf("repeatParagon"), Refusal::outOfPaper);
    EXPECT_EQ(documentsIn(dataOf("getJournalStructD", all)), "R1R2R3");
    let(&Hardware::coverIsOpen);
    EXPECT_EQ(refusalOf("printJournalStructD", all), Refusal::coverIsOpen);
    let(&Hardware::paperIsLow);
    EXPECT_EQ(extract("JournalStructD", all), "R1R2R3");
}

TEST_F(PrinterExtracts, EndWithTheRoll)
{
    Document longest = receiptOf(4, 4, "2026-01-02 07:00");
    longest.lines.insert(longest.lines.begin(), 5'000, Line{.text = "x"});
    for (int number = 4; number < 9; ++number) {
        longest.number = number;
        keep(longest);
    }
    const Lines paper = paperOf("printJournalStructZ", {"4", "8"});
    ASSERT_GE(paper.size(), 2U);
    EXPECT_EQ(paper[paper.size() - 2], "No more room on this roll");
    EXPECT_EQ(std::count(paper.begin(), paper.end(), "No more room on this roll"), 1);
    EXPECT_EQ(paper.back(), doubleRule);
    EXPECT_LT(paper.size(), 20'000U);
    EXPECT_GT(paper.size(), 15'000U); // three of them; a fourth would not be whole
    EXPECT_GT(dataOf("getJournalStructZ", {"4", "8"}).size(), 25'000U);
}

TEST_F(PrinterExtracts, AreThereForEveryCommandThatAsks)
{
    const Memory empty;
    const State state;
    for (const CommandRule& each : commandRules()) {
        if (each.wants == Wants::nothing) {
            continue;
        }
        const std::vector<std::string> fields(each.fields.size(), "1");
        EXPECT_NO_THROW(replyTo(each, Fields(each.fields, fields), state, empty, at(now))) << each.name;
    }
}

} // namespace
} // namespace virtual_printer
