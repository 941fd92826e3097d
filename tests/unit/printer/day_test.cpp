// The selling day: begun, looked at and closed.
#include "tests/unit/printer/situations.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace virtual_printer {
namespace {

class PrinterDay : public testing::Test, protected DecidingPrinter
{
protected:
    Refusal report(const std::string& letter, const std::string& number = "0")
    {
        return send(Command::printReport, {letter, number});
    }
    Refusal beginDay(const std::string& mode = "0") { return send(Command::sellingDayBegin, {mode}); }
    void sellOne(const std::string& total, const std::string& vat = "A")
    {
        ASSERT_EQ(begin(), Refusal::none);
        ASSERT_EQ(sell("Chlieb", total, vat), Refusal::none);
        ASSERT_EQ(pay("1", total, total), Refusal::none);
        ASSERT_EQ(end(), Refusal::none);
    }
    void setClosures(int closures)
    {
        Standing changed = standing();
        changed.closures = closures;
        state.standing = std::make_shared<const Standing>(std::move(changed));
    }
    // What stands at the right of the pair with this title.
    [[nodiscard]] std::string valueOf(const std::string& title) const
    {
        const auto& lines = documents.back().lines;
        const auto found =
            std::find_if(lines.begin(), lines.end(), [&](const Line& line) { return line.text == title; });
        return found == lines.end() ? "(no such line)" : found->right;
    }
};

TEST_F(PrinterDay, BeginsWithTheModeZeroOnly)
{
    sellOne("1.00");
    ASSERT_EQ(report("Z"), Refusal::none);
    EXPECT_EQ(beginDay("1"), Refusal::valueOutOfRange);
    EXPECT_EQ(beginDay("-1"), Refusal::valueOutOfRange);
    now += std::chrono::hours(9);
    EXPECT_EQ(beginDay(), Refusal::none);
    EXPECT_TRUE(standing().dayIsOpen);
    EXPECT_EQ(standing().dayBegan, now);
    EXPECT_EQ(beginDay(), Refusal::dayIsOpen);
}

TEST_F(PrinterDay, IsNotClosedBeforeADocumentOrADrawerMovement)
{
    EXPECT_EQ(report("Z"), Refusal::nothingToClose);
    ASSERT_EQ(report("X"), Refusal::none);
    EXPECT_EQ(report("Z"), Refusal::nothingToClose) << "a report is no sale";
    ASSERT_EQ(drawer("0", "5.00"), Refusal::none);
    EXPECT_EQ(report("Z"), Refusal::none);
}

TEST_F(PrinterDay, IsClosedAfterACancelledReceipt)
{
    ASSERT_EQ(begin(), Refusal::none);
    ASSERT_EQ(send(Command::destroyParagon, {"0", ""}), Refusal::none);
    EXPECT_EQ(report("Z"), Refusal::none);
}

// 12.30 under A is 10.00 and 23 %, 5.95 under B is 5.00 and 19 %.
TEST_F(PrinterDay, ClosesWithItsSums)
{
    sellOne("12.30", "A");
    sellOne("5.95", "B");
    ASSERT_EQ(drawer("0", "50.00"), Refusal::none);
    const std::size_t documentsBefore = documents.size();
    ASSERT_EQ(report("Z", "7"), Refusal::none);
    ASSERT_EQ(documents.size(), documentsBefore + 1);
    const Document& closure = documents.back();
    EXPECT_EQ(closure.kind, Document::Kind::closure);
    EXPECT_EQ(closure.number, 1);
    EXPECT_EQ(closure.closure, 1);
    std::vector<Line> vat;
    std::copy_if(closure.lines.begin(), closure.lines.end(), std::back_inserter(vat),
                 [](const Line& line) { return line.kind == Line::Kind::vatSum; });
    ASSERT_EQ(vat.size(), 2U);
    EXPECT_EQ(vat[0].base, 1000);
    EXPECT_EQ(vat[0].sum, 1230);
    EXPECT_EQ(vat[1].base, 500);
    EXPECT_EQ(vat[1].number, 19);
    EXPECT_EQ(valueOf("Receipts"), "2");
    EXPECT_EQ(valueOf("Cancelled receipts"), "0");
    EXPECT_EQ(valueOf("Hotovost"), "18.25");
    EXPECT_EQ(valueOf("Drawer Hotovost"), "68.25");
    EXPECT_EQ(valueOf("Drawer movements"), "1");
    EXPECT_EQ(valueOf("Turnover EUR"), "18.25");
    EXPECT_EQ(valueOf("Turnover ever EUR"), "18.25");
    EXPECT_EQ(closure.lines.back().kind, Line::Kind::cut);
    EXPECT_EQ(shown.size(), closure.lines.size()) << "all of it is printed";
}

TEST_F(PrinterDay, LeavesTheDrawerTheNumbersAndTheSumsEver)
{
    sellOne("10.00");
    const Decision closing =
        decide(state, {1, static_cast<unsigned char>(Command::printReport), {"Z", "0"}}, now);
    ASSERT_EQ(closing.draft.closures.size(), 1U);
    EXPECT_EQ(closing.draft.closures[0].number, 1);
    EXPECT_EQ(closing.draft.closures[0].moment, now);
    EXPECT_EQ(closing.draft.closures[0].sums.byVat, (ByVat{{'A', 1000}}));
    EXPECT_EQ(closing.draft.closures[0].drawer, (ByPayment{{1, 1000}}));
    EXPECT_EQ(closing.draft.closures[0].paymentNames, (PaymentNames{{1, "Hotovost"}}));
    ASSERT_EQ(report("Z"), Refusal::none);
    EXPECT_FALSE(standing().dayIsOpen);
    EXPECT_EQ(standing().day, Sums());
    EXPECT_EQ(standing().ever.turnover(), 1000);
    EXPECT_EQ(standing().drawer, (ByPayment{{1, 1000}}));
    EXPECT_EQ(standing().closures, 1);
    EXPECT_EQ(standing().receipts, 1);
    ASSERT_EQ(beginDay(), Refusal::none);
    sellOne("2.00");
    EXPECT_EQ(documents.back().number, 2);
    EXPECT_EQ(documents.back().closure, 2);
    ASSERT_EQ(report("Z"), Refusal::none);
    EXPECT_EQ(valueOf("Turnover EUR"), "2.00");
    EXPECT_EQ(valueOf("Turnover ever EUR"), "12.00");
}

TEST_F(PrinterDay, IsLookedAtUnderEveryOtherLetterWithoutClearing)
{
    sellOne("10.00");
    for (char letter = 'A'; letter < 'Z'; ++letter) {
        ASSERT_EQ(report({letter}), Refusal::none) << letter;
        EXPECT_EQ(documents.back().kind, Document::Kind::report);
        EXPECT_EQ(valueOf("Turnover EUR"), "10.00");
    }
    EXPECT_TRUE(standing().dayIsOpen);
    EXPECT_EQ(standing().day.turnover(), 1000);
    EXPECT_EQ(report("z"), Refusal::unknownOperation);
    EXPECT_EQ(report("1"), Refusal::unknownOperation);
    EXPECT_EQ(report("X", "-1"), Refusal::valueOutOfRange);
    EXPECT_EQ(report("X", "10000"), Refusal::valueOutOfRange);
    EXPECT_EQ(report("X", "9999"), Refusal::none);
}

TEST_F(PrinterDay, TakesOnlyTheClosureAfterTwentyFourHours)
{
    sellOne("10.00");
    now += std::chrono::hours(24);
    EXPECT_EQ(report("X"), Refusal::none);
    now += std::chrono::seconds(1);
    EXPECT_EQ(report("X"), Refusal::dayTooLong);
    EXPECT_EQ(begin(), Refusal::dayTooLong);
    EXPECT_EQ(drawer("0", "1.00"), Refusal::dayTooLong);
    EXPECT_EQ(report("Z"), Refusal::none);
}

TEST_F(PrinterDay, IsClosedEmptyWhenItHasBecomeTooLong)
{
    now += std::chrono::hours(25);
    EXPECT_EQ(report("Z"), Refusal::none);
    EXPECT_EQ(standing().closures, 1);
}

TEST_F(PrinterDay, LetsAnOpenReceiptEndWhenItHasBecomeTooLong)
{
    ASSERT_EQ(begin(), Refusal::none);
    ASSERT_EQ(sell("Chlieb", "1.00"), Refusal::none);
    now += std::chrono::hours(24);
    EXPECT_EQ(sell("Maslo", "2.00"), Refusal::none);
    now += std::chrono::seconds(1);
    EXPECT_EQ(sell("Mlieko", "4.00"), Refusal::dayTooLong);
    EXPECT_EQ(send(Command::itemDiscount, {"0", "", "0", "0.50", ""}), Refusal::dayTooLong);
    EXPECT_EQ(send(Command::subTotal, {"0", "", "0"}), Refusal::dayTooLong);
    EXPECT_EQ(send(Command::setInvoiceNumber, {"F-1"}), Refusal::dayTooLong);
    EXPECT_EQ(send(Command::getVariable, {"TOTAL"}), Refusal::none);
    EXPECT_EQ(send(Command::printAnnouncement, {"0", "Vitajte"}), Refusal::none);
    EXPECT_EQ(pay("1", "3.00", "1.00"), Refusal::none);
    EXPECT_EQ(sell("Mlieko", "4.00"), Refusal::receiptIsBeingPaid);
    EXPECT_EQ(pay("1", "2.00", "2.00"), Refusal::none);
    EXPECT_EQ(end(), Refusal::none);
    EXPECT_EQ(begin(), Refusal::dayTooLong);
    EXPECT_EQ(report("Z"), Refusal::none);
}

TEST_F(PrinterDay, LetsAnOpenReceiptBeCancelledWhenItHasBecomeTooLong)
{
    ASSERT_EQ(begin(), Refusal::none);
    now += std::chrono::hours(25);
    EXPECT_EQ(send(Command::destroyParagon, {"0", ""}), Refusal::none);
    EXPECT_EQ(report("Z"), Refusal::none);
}

TEST_F(PrinterDay, WarnsWhenThirtyClosuresAreLeftAndBeginsNoMoreWhenNoneIs)
{
    const auto warningAfter = [&](int closures) {
        setClosures(closures);
        if (!standing().dayIsOpen) {
            EXPECT_EQ(beginDay(), Refusal::none);
        }
        EXPECT_EQ(drawer("0", "1.00"), Refusal::none);
        EXPECT_EQ(report("Z"), Refusal::none);
        const auto& lines = documents.back().lines;
        const auto found = std::find_if(lines.begin(), lines.end(),
                                        [](const Line& line) { return line.text.starts_with("WARNING"); });
        return found == lines.end() ? std::string() : found->text;
    };
    EXPECT_EQ(warningAfter(1968), "");
    EXPECT_EQ(warningAfter(1969), "WARNING: ROOM FOR 30 MORE CLOSURES");
    EXPECT_EQ(warningAfter(1999), "WARNING: ROOM FOR 0 MORE CLOSURES");
    EXPECT_EQ(standing().closures, 2000);
    EXPECT_EQ(beginDay(), Refusal::memoryFull);
}

TEST_F(PrinterDay, MakesNoEntryInTraining)
{
    changeLife(Life::training);
    sellOne("10.00");
    const Decision closing =
        decide(state, {1, static_cast<unsigned char>(Command::printReport), {"Z", "0"}}, now);
    EXPECT_EQ(closing.refusal, Refusal::none);
    EXPECT_TRUE(closing.draft.closures.empty());
    ASSERT_EQ(report("Z"), Refusal::none);
    const auto isTrainingLine = [](const Line& line) { return line.kind == Line::Kind::notFiscal; };
    const auto& lines = documents.back().lines;
    EXPECT_TRUE(std::any_of(lines.begin(), lines.end(), isTrainingLine));
    EXPECT_TRUE(documents.back().isTraining);
    EXPECT_EQ(documents.back().number, 0);
    EXPECT_EQ(standing().closures, 0);
    EXPECT_EQ(standing().ever, Sums());
    EXPECT_FALSE(standing().dayIsOpen);
    EXPECT_EQ(standing().day, Sums());
}

} // namespace
} // namespace virtual_printer
