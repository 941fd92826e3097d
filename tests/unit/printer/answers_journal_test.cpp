// What the printer remembers of its documents: the journal by days, copies of receipts, and receipts by what
// identifies them.
#include "tests/unit/printer/asked_printer.h"

namespace virtual_printer {
namespace {

using PrinterJournal = AskedPrinter;
using Lines = std::vector<std::string>;

const std::string noon = "2026-01-01 12:00";

TEST_F(PrinterJournal, HasAllDocumentsByTheirDays)
{
    Document cancelled = receiptOf(0, 1, noon, "Omyl");
    cancelled.kind = Document::Kind::cancelledReceipt;
    const Lines texts = {textOf(receiptOf(1, 1, noon), 40), textOf(cancelled, 40),
                         textOf(closureDocument(1, noon), 40), textOf(receiptOf(2, 2, noon, "Caj", 499), 40)};
    keep(receiptOf(1, 1, noon));
    keep(cancelled);
    keep(closureDocument(1, noon));
    keep(receiptOf(2, 2, noon, "Caj", 499));
    const std::string firstDay = texts[0] + texts[1] + texts[2];
    EXPECT_EQ(dataOf("getJournal"), firstDay + texts[3]);
    EXPECT_EQ(dataOf("saveJournalToFile", {"J", "0"}), firstDay + texts[3]);
    EXPECT_EQ(dataOf("saveJournalToFile", {"J", "1"}), firstDay);
    EXPECT_EQ(dataOf("saveJournalToFile", {"X", "2"}), texts[3]);
    EXPECT_EQ(dataOf("saveJournalToFile", {"J", "3"}), "");
    EXPECT_EQ(dataOf("getLastParagon"), texts[3]);
}

TEST_F(PrinterJournal, IsEmptyBeforeTheFirstDocument)
{
    EXPECT_EQ(dataOf("getJournal"), "");
    EXPECT_EQ(dataOf("getLastParagon"), "");
    EXPECT_EQ(dataOf("getParagonIDs", {"N", ""}), "");
    EXPECT_EQ(refusalOf("repeatParagon"), Refusal::nothingSold);
}

TEST_F(PrinterJournal, IsPrintedByDaysToo)
{
    keepDay(1, "2025-12-31", 1250);
    keep(receiptOf(2, 2, noon, "Caj", 499));
    Lines expected = {doubleRule, centred("JOURNAL")};
    for (const std::string& line : linesIn(textOf(receiptOf(2, 2, noon, "Caj", 499), 40))) {
        expected.push_back(line);
    }
    expected.push_back(doubleRule);
    EXPECT_EQ(paperOf("printJournal", {"J", "2"}), expected);
    EXPECT_EQ(refusalOf("printJournal", {"J", "today"}), Refusal::badNumber);
}

TEST_F(PrinterJournal, GivesTextsInTheCodePageOfTheLink)
{
    keep(receiptOf(1, 1, noon, "šálka"));
    EXPECT_NE(dataOf("getLastParagon").find("\x9A\xE1lka"), std::string::npos);
}

TEST_F(PrinterJournal, RepeatsTheWholeLastReceiptUnderItsHead)
{
    keep(receiptOf(1, 1, noon));
    keep(receiptOf(2, 1, noon, "šálka", 499));
    Document cancelled = receiptOf(0, 1, noon, "Omyl");
    cancelled.kind = Document::Kind::cancelledReceipt;
    keep(cancelled);
    keep(closureDocument(1, noon));
    Lines copy = {centred("COPY")};
    for (const std::string& line : linesIn(textOf(receiptOf(2, 1, noon, "šálka", 499), 40))) {
        copy.push_back(line);
    }
    EXPECT_EQ(copy[3], "šálka");
    EXPECT_EQ(paperOf("repeatParagon"), copy);
    EXPECT_EQ(paperOf("repeatParagon"), copy);
}

TEST_F(PrinterJournal, CopiesKeepTheLinesAsData)
{
    const Document original = receiptOf(1, 1, noon);
    keep(original);
    ask("repeatParagon");
    const auto happened = asked().takeHappened();
    ASSERT_EQ(happened.size(), 1U);
    const auto& shown = happened.front().shown;
    ASSERT_EQ(shown.size(), original.lines.size() + 1);
    for (std::size_t index = 0; index < original.lines.size(); ++index) {
        EXPECT_EQ(std::get<Printed>(shown[index + 1]).line, original.lines[index]) << index;
    }
}

TEST_F(PrinterJournal, CopiesAreNoDocuments)
{
    keep(receiptOf(1, 1, noon));
    const std::string before = dataOf("getJournal");
    paperOf("repeatParagon");
    EXPECT_EQ(dataOf("getJournal"), before);
}

TEST_F(PrinterJournal, KeepsACopyOutOfTheReceiptThatIsOpen)
{
    keep(receiptOf(1, 1, noon));
    standing.dayIsOpen = true;
    receipt = Receipt();
    EXPECT_EQ(refusalOf("repeatParagon"), Refusal::receiptIsOpen);
    EXPECT_EQ(refusalOf("printIssuedParagon", {"1", ""}), Refusal::receiptIsOpen);
}

TEST_F(PrinterJournal, CopiesAnIssuedReceiptByItsNumberAndDate)
{
    keepDay(1, "2025-12-31", 1250);
    keepDay(2, "2026-01-01", 499);
    Lines copy = {centred("COPY")};
    for (const std::string& line : linesIn(textOf(receiptOf(1, 1, "2025-12-31 12:00"), 40))) {
        copy.push_back(line);
    }
    EXPECT_EQ(paperOf("printIssuedParagon", {"1", ""}), copy);
    EXPECT_EQ(paperOf("printIssuedParagon", {"1", "31.12.2025"}), copy);
    EXPECT_EQ(paperOf("printIssuedParagon", {"1", "2025-12-31 12:00"}), copy);
    EXPECT_EQ(refusalOf("printIssuedParagon", {"1", "2025-12-31 12:01"}), Refusal::noSuchReceipt);
    EXPECT_EQ(refusalOf("printIssuedParagon", {"1", "2025-12-30"}), Refusal::noSuchReceipt);
    EXPECT_EQ(refusalOf("printIssuedParagon", {"1", "2026-01-01"}), Refusal::noSuchReceipt);
    EXPECT_EQ(refusalOf("printIssuedParagon", {"3", ""}), Refusal::noSuchReceipt);
    EXPECT_EQ(refusalOf("printIssuedParagon", {"0", ""}), Refusal::noSuchReceipt);
    EXPECT_EQ(refusalOf("printIssuedParagon", {"1", "soon"}), Refusal::badDate);
}

class PrinterLookUps : public AskedPrinter
{
protected:
    void SetUp() override
    {
        Document first = receiptOf(1, 1, "2026-01-01 12:00");
        first.invoice = "F-7";
        first.transaction = "T1";
        keep(first);
        Document second = receiptOf(2, 2, "2026-01-02 08:00");
        second.invoice = "F-8";
        second.transaction = "T1";
        keep(second);
        keep(receiptOf(3, 2, "2026-01-02 08:00"));
        Document cancelled = receiptOf(0, 2, "2026-01-02 08:00");
        cancelled.kind = Document::Kind::cancelledReceipt;
        cancelled.invoice = "F-9";
        keep(cancelled);
        keep(closureDocument(2, "2026-01-02 20:00"));
    }

    std::string found(const std::string& type, const std::string& input)
    {
        return dataOf("getParagonIDs", {type, input});
    }
};

TEST_F(PrinterLookUps, FindReceiptsByTheirNumber)
{
    EXPECT_EQ(found("N", "2"), "2\r\n");
    EXPECT_EQ(found("N", "4"), "");
    EXPECT_EQ(found("N", "99999999999"), "");
}

TEST_F(PrinterLookUps, FindReceiptsByTheirDate)
{
    EXPECT_EQ(found("D", "02.01.2026"), "2\r\n3\r\n");
    EXPECT_EQ(found("D", "2026-01-01 12:00"), "1\r\n");
    EXPECT_EQ(found("D", "2026-01-01 12:01"), "");
    EXPECT_EQ(found("D", "2026-01-03"), "");
}

TEST_F(PrinterLookUps, FindReceiptsByTheClosureOfTheirDay)
{
    EXPECT_EQ(found("Z", "1"), "1\r\n");
    EXPECT_EQ(found("Z", "2"), "2\r\n3\r\n");
    EXPECT_EQ(found("Z", "3"), "");
}

TEST_F(PrinterLookUps, FindReceiptsByTheirInvoiceAndTransaction)
{
    EXPECT_EQ(found("I", "F-8"), "2\r\n");
    EXPECT_EQ(found("I", "F"), "");
    EXPECT_EQ(found("T", "T1"), "1\r\n2\r\n");
    EXPECT_EQ(found("T", "F-8"), "");
}

TEST_F(PrinterLookUps, FindNothingOfAReceiptThatWasCancelled)
{
    EXPECT_EQ(found("I", "F-9"), "");
}

TEST_F(PrinterLookUps, FindAllReceiptsForAnEmptyInput)
{
    for (const std::string type : {"N", "D", "Z", "I", "T"}) {
        EXPECT_EQ(found(type, ""), "1\r\n2\r\n3\r\n") << type;
    }
}

TEST_F(PrinterLookUps, AreRefusedForWhatIdentifiesNoReceipt)
{
    EXPECT_EQ(refusalOf("getParagonIDs", {"A", "123"}), Refusal::unknownIdentifier);
    EXPECT_EQ(refusalOf("getParagonIDs", {" ", "123"}), Refusal::unknownIdentifier);
    EXPECT_EQ(refusalOf("getParagonIDs", {"A", ""}), Refusal::unknownIdentifier);
    EXPECT_EQ(refusalOf("getParagonIDs", {"", "1"}), Refusal::badText); // no letter at all
    EXPECT_EQ(refusalOf("getParagonIDs", {"D", "soon"}), Refusal::badDate);
    EXPECT_EQ(refusalOf("getParagonIDs", {"N", "one"}), Refusal::badNumber);
    EXPECT_EQ(refusalOf("getParagonIDs", {"Z", "1.5"}), Refusal::badNumber);
    EXPECT_EQ(refusalOf("getParagonIDs", {"N"}), Refusal::wrongFields);
}

} // namespace
} // namespace virtual_printer
