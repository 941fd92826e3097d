// Whole days of a till: what reports show, what the closure takes, keeps and leaves behind, and that the
// journal has what was printed.
#include "tests/unit/printer/asked_printer.h"

namespace virtual_printer {
namespace {

using Lines = std::vector<std::string>;

class PrinterDays : public AskedPrinter
{
protected:
    void accept(std::string_view command, const Lines& fields)
    {
        ASSERT_EQ(refusalOf(command, fields), Refusal::none) << command;
    }

    void openDay() { accept("sellingDayBegin", {"0"}); }
    void openReceipt() { accept("paragonBegin", {"0", "1", "0", "0", "1", "0"}); }
    void addItem(const std::string& name, const std::string& total, const std::string& vat)
    {
        accept("itemSale", {"0", name, total, vat, "1.000", total, "ks "});
    }
    void closeReceipt(const std::string& total)
    {
        accept("payment", {"0", "1", total, "0.00", "0", "Hotovost"});
        accept("paragonEnd", {"0", "0"});
    }
    // A whole receipt of one item.
    void sell(const std::string& name, const std::string& total, const std::string& vat = "A")
    {
        openReceipt();
        addItem(name, total, vat);
        closeReceipt(total);
    }
    void closeDay() { accept("printReport", {"Z", "0"}); }

    Lines report() { return paperOf("printReport", {"X", "0"}); }

    static bool has(const Lines& paper, const std::string& left, const std::string& right)
    {
        return std::count(paper.begin(), paper.end(), pair(left, right)) == 1;
    }

    static std::string joined(const Lines& lines)
    {
        std::string text;
        for (const std::string& line : lines) {
            text += line + "\r\n";
        }
        return text;
    }

    std::string variable(const std::string& name) { return dataOf("getVariable", {name}); }
};

TEST_F(PrinterDays, AreReadWithoutClearingThemHoweverOften)
{
    openDay();
    sell("Chlieb", "12.50");
    sell("Caj", "4.99", "B");
    const Lines first = report();
    EXPECT_TRUE(has(first, "VAT A 23 %  10.16 + 2.34", "12.50"));
    EXPECT_TRUE(has(first, "VAT B 19 %  4.19 + 0.80", "4.99"));
    EXPECT_TRUE(has(first, "Receipts", "2"));
    EXPECT_TRUE(has(first, "Cancelled receipts", "0"));
    EXPECT_TRUE(has(first, "Turnover EUR", "17.49"));
    EXPECT_TRUE(has(first, "Turnover ever EUR", "17.49"));
    EXPECT_EQ(report(), first);
}

TEST_F(PrinterDays, AreClearedByTheirClosureThatKeepsWhatWasEverSold)
{
    openDay();
    sell("Chlieb", "12.50");
    const Lines closure = paperOf("printReport", {"Z", "0"});
    EXPECT_EQ(std::count(closure.begin(), closure.end(), centred("DAILY CLOSURE 1")), 1);
    EXPECT_TRUE(has(closure, "Receipts", "1"));
    EXPECT_TRUE(has(closure, "Turnover EUR", "12.50"));
    EXPECT_TRUE(has(closure, "Turnover ever EUR", "12.50"));
    openDay();
    const Lines next = report();
    EXPECT_TRUE(has(next, "Receipts", "0"));
    EXPECT_TRUE(has(next, "Turnover EUR", "0.00"));
    EXPECT_TRUE(has(next, "Turnover ever EUR", "12.50"));
    EXPECT_EQ(refusalOf("printReport", {"Z", "0"}), Refusal::nothingToClose);
}

TEST_F(PrinterDays, CountCancelledReceiptsAndTheDrawer)
{
    openDay();
    openReceipt();
    addItem("Chlieb", "12.50", "A");
    accept("destroyParagon", {"0", "omyl"});
    accept("depositeInDrawer", {"0", "vklad", "0", "50.00", "1"});
    accept("depositeInDrawer", {"0", "vyber", "1", "20.50", "1"});
    const Lines closure = paperOf("printReport", {"Z", "0"});
    EXPECT_TRUE(has(closure, "Receipts", "0"));
    EXPECT_TRUE(has(closure, "Cancelled receipts", "1"));
    EXPECT_TRUE(has(closure, "Turnover EUR", "0.00"));
    EXPECT_EQ(variable("DRAWER"), "29.50\r\n"); // it lies there over the closure
    openDay();
    EXPECT_TRUE(has(report(), "Cancelled receipts", "0"));
}

TEST_F(PrinterDays, EndButNotTheNumbersOfTheirReceipts)
{
    openDay();
    sell("Chlieb", "12.50");
    closeDay();
    EXPECT_EQ(refusalOf("paragonBegin", {"0", "1", "0", "0", "1", "0"}), Refusal::noSellingDay);
    openDay();
    takePaper();
    sell("Caj", "4.99");
    EXPECT_TRUE(has(takePaper(), "Receipt 2", "2026-01-02 08:00"));
}

TEST_F(PrinterDays, AreNotClosedWhileAReceiptIsOpen)
{
    openDay();
    openReceipt();
    EXPECT_EQ(refusalOf("printReport", {"Z", "0"}), Refusal::receiptIsOpen);
    EXPECT_EQ(refusalOf("printReport", {"X", "0"}), Refusal::receiptIsOpen);
    EXPECT_EQ(refusalOf("printReport"), Refusal::wrongFields);
    EXPECT_EQ(variable("CLOSURES"), "0\r\n");
}

TEST_F(PrinterDays, AreToldByTheVariables)
{
    openDay();
    sell("Chlieb", "12.50");
    closeDay();
    openDay();
    sell("Caj", "4.99");
    EXPECT_EQ(variable("RECEIPTS"), "1\r\n");
    EXPECT_EQ(variable("TURNOVER"), "4.99\r\n");
    EXPECT_EQ(variable("RECEIPTS_EVER"), "2\r\n");
    EXPECT_EQ(variable("TURNOVER_EVER"), "17.49\r\n");
    EXPECT_EQ(variable("CLOSURES"), "1\r\n");
    EXPECT_EQ(variable("DOCUMENTS"), "3\r\n");
    EXPECT_EQ(variable("LAST_RECEIPT"), "2\r\n");
    EXPECT_EQ(variable("LAST_TOTAL"), "4.99\r\n");
    EXPECT_EQ(variable("STATE"), "closed\r\n");
}

TEST_F(PrinterDays, AreInTheJournalAsTheyWerePrinted)
{
    openDay();
    takePaper();
    sell("\x9A\xE1lka", "12.50"); // in the code page of the link
    closeDay();
    const Lines firstDay = takePaper();
    openDay();
    takePaper();
    sell("Caj", "4.99");
    const Lines today = takePaper();
    EXPECT_EQ(std::count(firstDay.begin(), firstDay.end(), "šálka"), 1);
    EXPECT_EQ(toUtf8(dataOf("getJournal"), CodePage::windows1250), joined(firstDay) + joined(today));
    EXPECT_EQ(toUtf8(dataOf("saveJournalToFile", {"J", "1"}), CodePage::windows1250), joined(firstDay));
    EXPECT_EQ(dataOf("saveJournalToFile", {"J", "2"}), joined(today));
    EXPECT_EQ(dataOf("getLastParagon"), joined(today));
    Lines copy = {centred("COPY")};
    copy.insert(copy.end(), today.begin(), today.end());
    EXPECT_EQ(paperOf("repeatParagon"), copy);
}

TEST_F(PrinterDays, GiveWhatIdentifiesTheirReceipts)
{
    openDay();
    openReceipt();
    addItem("x", "1.00", "A");
    accept("setInvoiceNumber", {"F-7"});
    accept("setTransactionID", {"T1"});
    closeReceipt("1.00");
    openReceipt();
    accept("setInvoiceNumber", {"F-8"});
    accept("destroyParagon", {"0", "omyl"});
    EXPECT_EQ(dataOf("getParagonIDs", {"I", "F-7"}), "1\r\n");
    EXPECT_EQ(dataOf("getParagonIDs", {"T", "T1"}), "1\r\n");
    EXPECT_EQ(dataOf("getParagonIDs", {"I", "F-8"}), "");
    EXPECT_EQ(dataOf("getParagonIDs", {"Z", "1"}), "1\r\n");
}

// A till that has lost an answer compares what the printer has with what it meant.
TEST_F(PrinterDays, TellATillWhatWasCarriedOut)
{
    openDay();
    openReceipt();
    addItem("Chlieb", "12.50", "A");
    addItem("Chlieb", "12.50", "A"); // sent again by the link
    EXPECT_EQ(variable("STATE"), "open\r\n");
    EXPECT_EQ(variable("TOTAL"), "25.00\r\n");
    accept("payment", {"0", "1", "25.00", "20.00", "0", "Hotovost"});
    EXPECT_EQ(variable("STATE"), "paying\r\n");
    EXPECT_EQ(variable("PAID"), "20.00\r\n");
    EXPECT_EQ(variable("DUE"), "5.00\r\n");
}

} // namespace
} // namespace virtual_printer
