// What closures are asked for: the sum of the year's, and whether the journal still fits them.
#include "tests/unit/printer/asked_printer.h"

namespace virtual_printer {
namespace {

using PrinterClosures = AskedPrinter;
using Lines = std::vector<std::string>;

TEST_F(PrinterClosures, OfTheYearAreSummedWithoutShowingThePassword)
{
    keepDay(1, "2025-12-31", 10000);
    keepDay(2, "2026-01-01", 1250);
    Closure third = closureOf(3, "2026-01-02 07:00", 250);
    third.sums.byVat['B'] = 499;
    third.sums.byPayment = {{1, 700}, {2, 49}};
    third.paymentNames = {{1, "Hotovost"}};
    third.sums.cancelled = 2;
    third.sums.discounts = 10;
    third.sums.returns = 20;
    third.drawer = {{1, 5000}};
    keep(third);
    const Lines sums = {doubleRule,
                        centred("YEARLY CLOSURE 2026"),
                        pair("Closures", "2"),
                        pair("VAT A", "15.00"),
                        pair("VAT B", "4.99"),
                        pair("Payment Hotovost", "7.00"),
                        pair("Payment 2", "0.49"), // an older entry without the name
                        pair("Receipts", "2"),
                        pair("Cancelled receipts", "2"),
                        pair("Discounts EUR", "0.10"),
                        pair("Returns EUR", "0.20"),
                        pair("Drawer EUR", "50.00"),
                        pair("Turnover EUR", "19.99"),
                        doubleRule};
    EXPECT_EQ(paperOf("printYearlyClosure", {"0000"}), sums);
    EXPECT_EQ(paperOf("printYearlyClosure", {"0000"}), sums); // it clears nothing
    EXPECT_EQ(refusalOf("printYearlyClosure", {"secret"}), Refusal::wrongPassword);
}

TEST_F(PrinterClosures, OfAYearWithoutAnyComeToNothing)
{
    keepDay(1, "2025-12-31", 10000);
    const Lines paper = paperOf("printYearlyClosure", {"0000"});
    ASSERT_GE(paper.size(), 4U);
    EXPECT_EQ(paper[2], pair("Closures", "0"));
    EXPECT_EQ(paper[paper.size() - 2], pair("Turnover EUR", "0.00"));
}

TEST_F(PrinterClosures, AreVerifiedAgainstTheJournal)
{
    keepDay(1, "2025-12-31", 10000);
    keepDay(2, "2026-01-01", 1250);
    standing.closures = 2;
    commit();
    keep(receiptOf(9, 2, "2026-01-01 23:00")); // came to a day that was closed
    EXPECT_EQ(refusalOf("verifyCRCELJ", {"1"}), Refusal::none);
    EXPECT_EQ(refusalOf("verifyCRCELJ", {"2"}), Refusal::journalDamaged);
    EXPECT_EQ(refusalOf("verifyCRCELJ", {"3"}), Refusal::noSuchReceipt);
    EXPECT_EQ(refusalOf("verifyCRCELJ", {"0"}), Refusal::noSuchReceipt);
}

} // namespace
} // namespace virtual_printer
