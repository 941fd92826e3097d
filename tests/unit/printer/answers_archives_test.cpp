// Archives: what of a year that is over is extracted, and what is found out about it.
#include "tests/unit/printer/asked_printer.h"

namespace virtual_printer {
namespace {

using Lines = std::vector<std::string>;

// Days in two years that are over and in the one that runs.
class PrinterArchives : public AskedPrinter
{
protected:
    void SetUp() override
    {
        keepDay(1, "2024-12-31", 3000);
        keepDay(2, "2025-01-01", 3100);
        keepDay(3, "2025-12-31", 3200);
        keepDay(4, "2026-01-01", 100);
    }

    Lines journal(const std::string& archive, const std::vector<Document>& documents)
    {
        Lines paper = {doubleRule, centred("JOURNAL " + archive)};
        for (const Document& document : documents) {
            for (const std::string& line : linesIn(textOf(document, 40))) {
                paper.push_back(line);
            }
        }
        if (documents.empty()) {
            paper.emplace_back("Nothing within these bounds");
        }
        paper.push_back(doubleRule);
        return paper;
    }

    const Document newYear = receiptOf(2, 2, "2025-01-01 12:00", "Chlieb", 3100);
    const Document newYearsEve = receiptOf(3, 3, "2025-12-31 12:00", "Chlieb", 3200);
};

TEST_F(PrinterArchives, HaveTheDocumentsOfTheirYear)
{
    EXPECT_EQ(paperOf("printJournalStructDArchive", {"P", "", "", "2025"}),
              journal("2025", {newYear, newYearsEve}));
    EXPECT_EQ(paperOf("printJournalStructDArchive", {"P", "2025-06-01", "2026-12-31", "2025"}),
              journal("2025", {newYearsEve}));
    EXPECT_EQ(paperOf("printJournalStructDArchive", {"Z", "2025-12-31", "", "2025"}),
              journal("2025", {closureDocument(3, "2025-12-31 22:00")}));
    EXPECT_EQ(paperOf("printJournalStructDArchive", {"P", "2026-01-01", "", "2025"}), journal("2025", {}));
}

TEST_F(PrinterArchives, BeginAndEndAtMidnight)
{
    keep(receiptOf(5, 5, "2025-01-01 00:00"));
    keep(receiptOf(6, 5, "2025-12-31 23:59:59"));
    keep(receiptOf(7, 5, "2026-01-01 00:00"));
    EXPECT_EQ(paperOf("printJournalStructUArchive", {"5", "2025"}),
              journal("2025", {receiptOf(5, 5, "2025-01-01 00:00")}));
    EXPECT_EQ(paperOf("printJournalStructUArchive", {"6", "2025"}),
              journal("2025", {receiptOf(6, 5, "2025-12-31 23:59:59")}));
    EXPECT_EQ(paperOf("printJournalStructUArchive", {"7", "2025"}), journal("2025", {}));
    EXPECT_EQ(paperOf("printJournalStructUArchive", {"5", "2024"}), journal("2024", {}));
}

TEST_F(PrinterArchives, HaveTheReceiptsOfTheirYear)
{
    EXPECT_EQ(paperOf("printJournalStructUArchive", {"2", "2025"}), journal("2025", {newYear}));
    EXPECT_EQ(paperOf("printJournalStructUArchive", {"1", "2025"}), journal("2025", {}));
    EXPECT_EQ(paperOf("printJournalStructUArchive", {"none", "2025"}), journal("2025", {}));
}

TEST_F(PrinterArchives, HaveTheClosuresOfTheirYear)
{
    Lines paper = {doubleRule, centred("FISCAL MEMORY 2025")};
    for (const Closure& closure :
         {closureOf(2, "2025-01-01 22:00", 3100), closureOf(3, "2025-12-31 22:00", 3200)}) {
        for (const std::string& line : linesIn(textOf(closure, 40))) {
            paper.push_back(line);
        }
    }
    paper.push_back(doubleRule);
    EXPECT_EQ(paperOf("printIntervalFPDArchive", {"0", "", "", "2025"}), paper);
    EXPECT_EQ(paperOf("printIntervalFPDArchive", {"0", "2024-01-01", "2026-12-31", "2025"}), paper);
}

TEST_F(PrinterArchives, AreRefusedWhenThereIsNone)
{
    // The year that runs, one that is to come, one without closures, and what is no year.
    for (const std::string name : {"2026", "2027", "2023", "", "25", "archive", "02025", "-202", "+202"}) {
        EXPECT_EQ(refusalOf("validateArchiveDb", {name}), Refusal::noSuchArchive) << name;
        EXPECT_EQ(refusalOf("printIntervalFPDArchive", {"0", "", "", name}), Refusal::noSuchArchive) << name;
        EXPECT_EQ(refusalOf("printJournalStructUArchive", {"1", name}), Refusal::noSuchArchive) << name;
        EXPECT_EQ(refusalOf("printJournalStructDArchive", {"P", "", "", name}), Refusal::noSuchArchive)
            << name;
    }
    EXPECT_EQ(refusalOf("printJournalStructDArchive", {"P", "soon", "", "2025"}), Refusal::badDate);
}

TEST_F(PrinterArchives, AreValidWhenTheirJournalIsWhole)
{
    EXPECT_EQ(paperOf("validateArchiveDb", {"2024"}), Lines());
    EXPECT_EQ(paperOf("validateArchiveDb", {"2025"}), Lines());
}

TEST_F(PrinterArchives, AreDamagedWhenADocumentCameToAClosureAfterwards)
{
    commit();
    keep(receiptOf(9, 3, "2025-12-31 23:00"));
    EXPECT_EQ(refusalOf("validateArchiveDb", {"2025"}), Refusal::journalDamaged);
    EXPECT_EQ(refusalOf("validateArchiveDb", {"2024"}), Refusal::none);
}

} // namespace
} // namespace virtual_printer
