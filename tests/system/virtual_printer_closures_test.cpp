// The virtual printer's day: what reports show, and what the closure of the day takes, keeps and leaves
// behind.
#include "tests/system/virtual_printer_fixture.h"

namespace virtual_printer {
namespace {

using VirtualPrinterClosures = VirtualPrinter;
using Lines = std::vector<std::string>;

const std::string rule(Paper::columns, '=');
const std::string readingReport = request(0x50, {"X", "0"});
const std::string closure = request(0x50, {"Z", "0"});

std::string centered(const std::string& text)
{
    return std::string((Paper::columns - text.size()) / 2, ' ') + text;
}

TEST_F(VirtualPrinterClosures, ReadTheDayWithoutClearingItHoweverOften)
{
    sell("Chlieb", "12.50");
    sell("Caj", "4.99", "B");
    const Lines report = {rule,
                          centered("REPORT X"),
                          line("Time", "2026-01-01 12:00"),
                          line("VAT A", "12.50"),
                          line("VAT B", "4.99"),
                          line("Receipts", "2"),
                          line("Cancelled receipts", "0"),
                          line("Drawer EUR", "0.00"),
                          line("Turnover EUR", "17.49"),
                          line("Turnover ever EUR", "17.49"),
                          rule};
    EXPECT_EQ(paperOf(readingReport), report);
    EXPECT_EQ(paperOf(readingReport), report);
}

TEST_F(VirtualPrinterClosures, ClearTheDayAndKeepWhatWasEverSold)
{
    sell("Chlieb", "12.50");
    EXPECT_EQ(
        paperOf(closure),
        (Lines{rule, centered("DAILY CLOSURE 1"), line("Time", "2026-01-01 12:00"), line("VAT A", "12.50"),
               line("Receipts", "1"), line("Cancelled receipts", "0"), line("Drawer EUR", "0.00"),
               line("Turnover EUR", "12.50"), line("Turnover ever EUR", "12.50"), rule}));
    const auto afterwards = [&](const std::string& title) {
        return Lines{rule,
                     centered(title),
                     line("Time", "2026-01-01 12:00"),
                     line("Receipts", "0"),
                     line("Cancelled receipts", "0"),
                     line("Drawer EUR", "0.00"),
                     line("Turnover EUR", "0.00"),
                     line("Turnover ever EUR", "12.50"),
                     rule};
    };
    EXPECT_EQ(paperOf(readingReport), afterwards("REPORT X"));
    EXPECT_EQ(paperOf(closure), afterwards("DAILY CLOSURE 2"));
}

TEST_F(VirtualPrinterClosures, CountCancelledReceiptsAndTheDrawerUntilTheDayIsClosed)
{
    openReceipt();
    EXPECT_EQ(answerTo(item(0x24, "Chlieb", "12.50") + request(0x2B, {"0", "omyl"}) +
                       request(0x2E, {"0", "vklad", "1", "50.00", "1"}) +
                       request(0x2E, {"0", "vyber", "2", "-20.50", "1"})),
              accepted + accepted + accepted + accepted);
    const Lines report = paperOf(closure);
    ASSERT_EQ(report.size(), 9U);
    EXPECT_EQ(report[3], line("Receipts", "0"));
    EXPECT_EQ(report[4], line("Cancelled receipts", "1"));
    EXPECT_EQ(report[5], line("Drawer EUR", "29.50"));
    const Lines next = paperOf(readingReport);
    ASSERT_EQ(next.size(), 9U);
    EXPECT_EQ(next[4], line("Cancelled receipts", "0"));
    EXPECT_EQ(next[5], line("Drawer EUR", "0.00"));
}

TEST_F(VirtualPrinterClosures, EndTheSellingDayButNotTheNumbersOfItsReceipts)
{
    sell("Chlieb", "12.50");
    closeDay();
    EXPECT_EQ(answerTo(request(0x20, {"0", "1", "0", "0", "1", "0"})), refused(Refusal::noSellingDay));
    paper.clear();
    sell("Caj", "4.99");
    ASSERT_GE(paper.size(), 2U);
    EXPECT_EQ(paper[1], line("Receipt 2", "2026-01-01 12:00"));
}

TEST_F(VirtualPrinterClosures, AreRefusedWhileAReceiptIsOpenAndWithoutALetter)
{
    EXPECT_EQ(answerTo(request(0x50)), refused(Refusal::wrongFields));
    openReceipt();
    EXPECT_EQ(answerTo(closure), refused(Refusal::receiptIsOpen));
    EXPECT_EQ(answerTo(request(0x92, {"CLOSURES"}) + "\x03"), blockOf("0\r\n", '\x03'));
}

TEST_F(VirtualPrinterClosures, AreToldByTheVariables)
{
    sell("Chlieb", "12.50");
    closeDay();
    sell("Caj", "4.99");
    EXPECT_EQ(dataOf(request(0x92, {"RECEIPTS"})), "1\r\n");
    EXPECT_EQ(dataOf(request(0x92, {"TURNOVER"})), "4.99\r\n");
    EXPECT_EQ(dataOf(request(0x92, {"RECEIPTS_EVER"})), "2\r\n");
    EXPECT_EQ(dataOf(request(0x92, {"TURNOVER_EVER"})), "17.49\r\n");
    EXPECT_EQ(dataOf(request(0x92, {"CLOSURES"})), "1\r\n");
    EXPECT_EQ(dataOf(request(0x92, {"STATE"})), "closed\r\n");
}

TEST_F(VirtualPrinterClosures, OfTheYearAreSummedWithoutShowingThePassword)
{
    time = "2025-12-31 23:59";
    sell("Chlieb", "100.00");
    closeDay();
    time = "2026-01-01 12:00";
    sell("Chlieb", "12.50");
    closeDay();
    sell("Caj", "4.99", "B");
    closeDay();
    const std::string yearly = request(0x52, {"secret"});
    const Lines sums = {rule,
                        centered("YEARLY CLOSURE 2026"),
                        line("Closures", "2"),
                        line("VAT A", "12.50"),
                        line("VAT B", "4.99"),
                        line("Receipts", "2"),
                        line("Cancelled receipts", "0"),
                        line("Drawer EUR", "0.00"),
                        line("Turnover EUR", "17.49"),
                        rule};
    EXPECT_EQ(paperOf(yearly), sums);
    EXPECT_EQ(paperOf(yearly), sums);
}

} // namespace
} // namespace virtual_printer
