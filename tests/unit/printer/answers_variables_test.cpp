// The variables that tills can read, one after the other.
#include "tests/unit/printer/asked_printer.h"

namespace virtual_printer {
namespace {

class PrinterVariables : public AskedPrinter
{
protected:
    // As it stands in the reply, whose line end the library cuts off.
    std::string variable(const std::string& name)
    {
        std::string text = dataOf("getVariable", {name});
        EXPECT_TRUE(text.ends_with("\r\n")) << text;
        return text.substr(0, text.size() - std::min<std::size_t>(text.size(), 2));
    }

    static Receipt openReceipt(bool isBeingPaid)
    {
        Receipt open;
        open.document = receiptOf(1, 1, "2026-01-02 07:59");
        open.isBeingPaid = isBeingPaid;
        open.paid = isBeingPaid ? 1000 : 0;
        return open;
    }
};

TEST_F(PrinterVariables, AreRefusedWhenTheyAreNone)
{
    for (const std::string name : {"NO_SUCH", "", "state", "DRAWER_", "DRAWER_9", "DRAWER_1x", "VAT_",
                                   "VAT_I", "VAT_a", "VAT_AB", "VAT_@"}) {
        EXPECT_EQ(refusalOf("getVariable", {name}), Refusal::unknownVariable) << name;
    }
    EXPECT_EQ(refusalOf("getVariable"), Refusal::wrongFields);
}

TEST_F(PrinterVariables, MayHaveBlanksBehindTheirName)
{
    EXPECT_EQ(variable("STATE  "), "closed");
}

TEST_F(PrinterVariables, StateIsThatOfTheReceipt)
{
    EXPECT_EQ(variable("STATE"), "closed");
}

TEST_F(PrinterVariables, StateTellsAnOpenReceipt)
{
    receipt = openReceipt(false);
    EXPECT_EQ(variable("STATE"), "open");
}

TEST_F(PrinterVariables, StateTellsAReceiptThatIsBeingPaid)
{
    receipt = openReceipt(true);
    EXPECT_EQ(variable("STATE"), "paying");
}

TEST_F(PrinterVariables, TotalDueAndPaidAreThoseOfTheOpenReceipt)
{
    receipt = openReceipt(true);
    EXPECT_EQ(variable("TOTAL"), "12.50");
    EXPECT_EQ(variable("PAID"), "10.00");
    EXPECT_EQ(variable("DUE"), "2.50");
}

TEST_F(PrinterVariables, TotalDueAndPaidAreZeroWithoutAReceipt)
{
    EXPECT_EQ(variable("TOTAL"), "0.00");
    EXPECT_EQ(variable("PAID"), "0.00");
    EXPECT_EQ(variable("DUE"), "0.00");
}

TEST_F(PrinterVariables, LastReceiptIsItsNumberAndTotal)
{
    standing.receipts = 8;
    keep(receiptOf(7, 1, "2026-01-01 12:00", "x", 100));
    keep(receiptOf(8, 1, "2026-01-01 12:00", "x", 499));
    Document cancelled = receiptOf(0, 1, "2026-01-01 12:00", "x", 300);
    cancelled.kind = Document::Kind::cancelledReceipt;
    keep(cancelled);
    EXPECT_EQ(variable("LAST_RECEIPT"), "8");
    EXPECT_EQ(variable("LAST_TOTAL"), "4.99");
}

TEST_F(PrinterVariables, LastReceiptIsZeroBeforeTheFirstOne)
{
    EXPECT_EQ(variable("LAST_RECEIPT"), "0");
    EXPECT_EQ(variable("LAST_TOTAL"), "0.00");
}

// The numbers go on, but the two variables tell of the same receipt.
TEST_F(PrinterVariables, LastReceiptIsZeroAgainWhenTheJournalIsInitialized)
{
    standing.receipts = 8;
    keep(receiptOf(8, 1, "2026-01-01 12:00", "x", 499));
    ASSERT_EQ(variable("LAST_RECEIPT"), "8");
    ASSERT_EQ(refusalOf("initELJ", {"9999"}), Refusal::none);
    EXPECT_EQ(variable("LAST_RECEIPT"), "0");
    EXPECT_EQ(variable("LAST_TOTAL"), "0.00");
    EXPECT_EQ(dataOf("getLastParagon"), "");
    EXPECT_EQ(refusalOf("repeatParagon"), Refusal::nothingSold);
    EXPECT_EQ(asked().state().standing->receipts, 8);
}

TEST_F(PrinterVariables, DayIsOpenOrClosed)
{
    EXPECT_EQ(variable("DAY"), "closed");
}

TEST_F(PrinterVariables, DayIsOpenFromItsBeginning)
{
    standing.dayIsOpen = true;
    standing.dayBegan = at("2026-01-02 07:00");
    EXPECT_EQ(variable("DAY"), "open");
}

TEST_F(PrinterVariables, ReceiptsAndTurnoverAreThoseOfTheDay)
{
    standing.day.receipts = 2;
    standing.day.byVat = {{'A', 1250}, {'B', 499}};
    standing.ever.receipts = 40;
    standing.ever.byVat = {{'A', 100'000}};
    EXPECT_EQ(variable("RECEIPTS"), "2");
    EXPECT_EQ(variable("TURNOVER"), "17.49");
    EXPECT_EQ(variable("RECEIPTS_EVER"), "42"); // the day that runs counts
    EXPECT_EQ(variable("TURNOVER_EVER"), "1017.49");
}

TEST_F(PrinterVariables, TurnoverMayBeNegative)
{
    standing.day.byVat = {{'A', -5}};
    EXPECT_EQ(variable("TURNOVER"), "-0.05");
}

TEST_F(PrinterVariables, DrawerIsItsCash)
{
    standing.drawer = {{1, 2950}, {2, 100}};
    EXPECT_EQ(variable("DRAWER"), "29.50");
}

TEST_F(PrinterVariables, DrawerIsToldByPaymentType)
{
    standing.drawer = {{1, 2950}, {2, 100}, {9, 300}};
    EXPECT_EQ(variable("DRAWER_1"), "29.50");
    EXPECT_EQ(variable("DRAWER_2"), "1.00");
    EXPECT_EQ(variable("DRAWER_5"), "0.00"); // a type that is set
    EXPECT_EQ(variable("DRAWER_9"), "3.00"); // one that is not, but lies there
}

TEST_F(PrinterVariables, ClosuresAreCountedAndWhatIsLeft)
{
    standing.closures = 3;
    EXPECT_EQ(variable("CLOSURES"), "3");
    EXPECT_EQ(variable("CLOSURES_LEFT"), "1997");
}

TEST_F(PrinterVariables, DocumentsAreThoseOfTheJournal)
{
    standing.documents = 17;
    EXPECT_EQ(variable("DOCUMENTS"), "17");
}

TEST_F(PrinterVariables, VatIsTheRateOfALetter)
{
    EXPECT_EQ(variable("VAT_A"), "23");
    EXPECT_EQ(variable("VAT_D"), "0");
    EXPECT_EQ(variable("VAT_H"), ""); // none is set
}

TEST_F(PrinterVariables, ClockIsThePrinters)
{
    EXPECT_EQ(variable("CLOCK"), "2026-01-02 08:00:00");
}

TEST_F(PrinterVariables, ClockIsTheOneThatWasSet)
{
    standing.clockOffset = std::chrono::hours(25) + std::chrono::seconds(1);
    EXPECT_EQ(variable("CLOCK"), "2026-01-03 09:00:01");
}

TEST_F(PrinterVariables, LifeOfAPrinterInUse)
{
    EXPECT_EQ(variable("LIFE"), "fiscal");
    EXPECT_EQ(variable("DKP"), "88812345678900001");
}

TEST_F(PrinterVariables, LifeOfANewPrinter)
{
    standing = *factoryNew().standing;
    EXPECT_EQ(variable("LIFE"), "training");
    EXPECT_EQ(variable("DKP"), "");
}

TEST_F(PrinterVariables, LifeOfAPrinterThatIsOnlyRead)
{
    standing.life = Life::defiscalized;
    EXPECT_EQ(variable("LIFE"), "defiscalized");
}

TEST_F(PrinterVariables, PaperIsThereOrLowOrOut)
{
    EXPECT_EQ(variable("PAPER"), "ok");
    let(&Hardware::paperIsLow);
    EXPECT_EQ(variable("PAPER"), "low");
    let(&Hardware::paperIsOut);
    EXPECT_EQ(variable("PAPER"), "out");
}

TEST_F(PrinterVariables, CoverIsClosedOrOpen)
{
    EXPECT_EQ(variable("COVER"), "closed");
    let(&Hardware::coverIsOpen);
    EXPECT_EQ(variable("COVER"), "open");
}

TEST_F(PrinterVariables, VersionIsThatOfTheProgram)
{
    EXPECT_EQ(variable("VERSION"), TELVOFM_VERSION_TEXT);
}

TEST_F(PrinterVariables, ArchivesAreTheYearsThatAreOver)
{
    keepDay(1, "2023-12-31", 100);
    keepDay(2, "2025-01-01", 100);
    keepDay(3, "2025-12-31", 100);
    keepDay(4, "2026-01-01", 100);
    EXPECT_EQ(variable("ARCHIVES"), "2023 2025");
}

TEST_F(PrinterVariables, ArchivesAreNoneInTheFirstYear)
{
    keepDay(1, "2026-01-01", 100);
    EXPECT_EQ(variable("ARCHIVES"), "");
}

} // namespace
} // namespace virtual_printer
