// The life of a receipt: how it begins, what it takes to end it, and what becomes of one that is cancelled.
#include "tests/unit/printer/deciding_printer.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace virtual_printer {
namespace {

using Kind = Line::Kind;

class PrinterReceipt : public testing::Test, protected DecidingPrinter
{
protected:
    static bool has(const Document& document, Kind kind, const std::string& text)
    {
        return std::any_of(document.lines.begin(), document.lines.end(),
                           [&](const Line& line) { return line.kind == kind && line.text == text; });
    }
    static const Line* find(const Document& document, Kind kind)
    {
        const auto found = std::find_if(document.lines.begin(), document.lines.end(),
                                        [&](const Line& line) { return line.kind == kind; });
        return found == document.lines.end() ? nullptr : &*found;
    }
    // Of which kinds the lines are, in their order.
    static std::vector<Kind> kindsOf(const Document& document)
    {
        std::vector<Kind> kinds;
        for (const Line& line : document.lines) {
            kinds.push_back(line.kind);
        }
        return kinds;
    }
    void changeLife(Life life)
    {
        Standing changed = standing();
        changed.life = life;
        state.standing = std::make_shared<const Standing>(changed);
    }
};

TEST_F(PrinterReceipt, IsSoldPaidAndKept)
{
    ASSERT_EQ(begin(), Refusal::none);
    ASSERT_EQ(sell("Chlieb", "12.30", "A"), Refusal::none);
    ASSERT_EQ(sell("Caj", "4.00", "D"), Refusal::none);
    ASSERT_EQ(pay("1", "16.30", "20.00"), Refusal::none);
    ASSERT_EQ(end(), Refusal::none);
    EXPECT_EQ(state.receipt, nullptr);
    ASSERT_EQ(documents.size(), 1U);
    const Document& receipt = documents.front();
    EXPECT_EQ(receipt.kind, Document::Kind::receipt);
    EXPECT_EQ(receipt.number, 1);
    EXPECT_EQ(receipt.closure, 1);
    EXPECT_EQ(receipt.moment, now);
    EXPECT_EQ(receipt.total, 1630);
    EXPECT_EQ(receipt.byVat, (ByVat{{'A', 1230}, {'D', 400}}));
    EXPECT_EQ(receipt.byPayment, (ByPayment{{1, 1630}}));
    EXPECT_EQ(kindsOf(receipt), (std::vector{Kind::heading, Kind::pair, Kind::rule, Kind::item, Kind::item,
                                             Kind::rule, Kind::total, Kind::payment, Kind::change, Kind::rule,
                                             Kind::vatSum, Kind::vatSum, Kind::rule, Kind::cut}));
    EXPECT_EQ(standing().receipts, 1);
    EXPECT_EQ(standing().documents, 1);
    EXPECT_EQ(standing().lastDocument, now);
    EXPECT_EQ(standing().drawer, (ByPayment{{1, 1630}}));
    EXPECT_EQ(standing().day.receipts, 1);
    EXPECT_EQ(standing().day.turnover(), 1630);
    EXPECT_TRUE(std::any_of(shown.begin(), shown.end(),
                            [](const Shown& event) { return std::holds_alternative<DrawerOpens>(event); }));
}

// 12.30 with 23 percent is 10.00 and 2.30.
TEST_F(PrinterReceipt, PrintsTheVatTableUnlessTheTillLeavesItOut)
{
    ASSERT_EQ(begin(), Refusal::none);
    ASSERT_EQ(sell("Chlieb", "12.30", "A"), Refusal::none);
    ASSERT_EQ(pay("2", "12.30", "0"), Refusal::none);
    ASSERT_EQ(end(), Refusal::none);
    const Line* table = find(documents.back(), Kind::vatSum);
    ASSERT_NE(table, nullptr);
    EXPECT_EQ(table->vat, 'A');
    EXPECT_EQ(table->number, 23);
    EXPECT_EQ(table->sum, 1230);
    EXPECT_EQ(table->base, 1000);
    ASSERT_EQ(send(Command::paragonBegin, {"0", "1", "0", "0", "0", "0"}), Refusal::none);
    ASSERT_EQ(sell("Chlieb", "12.30", "A"), Refusal::none);
    ASSERT_EQ(pay("2", "12.30", "0"), Refusal::none);
    ASSERT_EQ(end(), Refusal::none);
    EXPECT_EQ(find(documents.back(), Kind::vatSum), nullptr);
}

TEST_F(PrinterReceipt, IsPrintedWithWhatIsSet)
{
    changeSettings([](Settings& settings) {
        settings.prelines = {"before"};
        settings.header = {{1, "Potraviny"}, {2, "Trnava"}};
        settings.additionalHeader = "open all day";
        settings.postlines = {"after"};
        settings.additionalFooter = "thank you";
        settings.superFooter = "come again";
        settings.printsLogo = true;
    });
    state.pictures = std::make_shared<const Pictures>(Pictures{{1, {}}, {4, {}}});
    ASSERT_EQ(begin(), Refusal::none);
    EXPECT_EQ(kindsOf(receipt()), (std::vector{Kind::text, Kind::picture, Kind::heading, Kind::heading,
                                               Kind::text, Kind::pair, Kind::rule}));
    EXPECT_TRUE(has(receipt(), Kind::text, "before"));
    EXPECT_TRUE(has(receipt(), Kind::heading, "Trnava"));
    EXPECT_TRUE(has(receipt(), Kind::text, "open all day"));
    EXPECT_EQ(find(receipt(), Kind::picture)->number, 1);
    ASSERT_EQ(sell("Chlieb", "1.00"), Refusal::none);
    ASSERT_EQ(pay("1", "1.00", "0"), Refusal::none);
    EXPECT_EQ(send(Command::paragonEnd, {"0", "2"}), Refusal::noSuchPicture);
    EXPECT_EQ(send(Command::paragonEnd, {"0", "10"}), Refusal::valueOutOfRange);
    ASSERT_EQ(send(Command::paragonEnd, {"0", "4"}), Refusal::none);
    for (const char* text : {"after", "thank you", "come again"}) {
        EXPECT_TRUE(has(documents.back(), Kind::text, text)) << text;
    }
    EXPECT_EQ(documents.back().lines[documents.back().lines.size() - 3].kind, Kind::picture);
    EXPECT_EQ(documents.back().lines[documents.back().lines.size() - 3].number, 4);
    ASSERT_EQ(send(Command::paragonBegin, {"0", "1", "0", "0", "1", "4"}), Refusal::none);
    EXPECT_EQ(find(receipt(), Kind::picture)->number, 4); // instead of the logo
}

TEST_F(PrinterReceipt, BeginsWithNumbersFrom0To9)
{
    for (const std::size_t field : {1U, 2U, 3U, 4U}) {
        std::vector<std::string> fields = {"0", "1", "0", "0", "1", "0"};
        fields[field] = "10";
        EXPECT_EQ(send(Command::paragonBegin, fields), Refusal::valueOutOfRange) << field;
        fields[field] = "-1";
        EXPECT_EQ(send(Command::paragonBegin, fields), Refusal::valueOutOfRange) << field;
    }
    EXPECT_EQ(send(Command::paragonBegin, {"0", "9", "9", "9", "9", "10"}), Refusal::valueOutOfRange);
    EXPECT_EQ(send(Command::paragonBegin, {"0", "9", "9", "9", "9", "3"}), Refusal::noSuchPicture);
    EXPECT_EQ(send(Command::paragonBegin, {"-5", "9", "9", "9", "9", "0"}), Refusal::none);
}

TEST_F(PrinterReceipt, DoesNotBeginInsideAnother)
{
    ASSERT_EQ(begin(), Refusal::none);
    EXPECT_EQ(begin(), Refusal::receiptIsOpen);
    ASSERT_EQ(sell("Chlieb", "1.00"), Refusal::none);
    ASSERT_EQ(pay("1", "1.00", "0.50"), Refusal::none);
    EXPECT_EQ(begin(), Refusal::receiptIsOpen);
}

TEST_F(PrinterReceipt, DoesNotBeginWithoutPaperOrWithAnOpenCoverButGoesOn)
{
    setHardware(true, false);
    EXPECT_EQ(begin(), Refusal::outOfPaper);
    setHardware(false, true);
    EXPECT_EQ(begin(), Refusal::coverIsOpen);
    setHardware(false, false);
    ASSERT_EQ(begin(), Refusal::none);
    setHardware(true, true);
    EXPECT_EQ(sell("Chlieb", "1.00"), Refusal::none);
    EXPECT_EQ(pay("1", "1.00", "0"), Refusal::none);
    EXPECT_EQ(end(), Refusal::none);
}

TEST_F(PrinterReceipt, DoesNotBeginWhenTheJournalIsFull)
{
    Standing full = standing();
    full.documents = 1'000'000;
    state.standing = std::make_shared<const Standing>(full);
    EXPECT_EQ(begin(), Refusal::journalFull);
    full.documents = 999'999;
    state.standing = std::make_shared<const Standing>(full);
    EXPECT_EQ(begin(), Refusal::none);
}

TEST_F(PrinterReceipt, DoesNotEndWithoutALineOrUnpaid)
{
    EXPECT_EQ(end(), Refusal::noReceipt);
    ASSERT_EQ(begin(), Refusal::none);
    EXPECT_EQ(end(), Refusal::nothingSold);
    ASSERT_EQ(sell("Chlieb", "2.00"), Refusal::none);
    EXPECT_EQ(end(), Refusal::paidTooLittle);
    ASSERT_EQ(pay("2", "2.00", "1.99"), Refusal::none);
    EXPECT_EQ(end(), Refusal::paidTooLittle);
    ASSERT_EQ(pay("2", "2.00", "0.01"), Refusal::none);
    EXPECT_EQ(end(), Refusal::none);
}

TEST_F(PrinterReceipt, ThatComesToNothingEndsWithoutPayment)
{
    ASSERT_EQ(begin(), Refusal::none);
    ASSERT_EQ(sell("Taska", "0.00"), Refusal::none);
    EXPECT_EQ(pay("1", "0.00", "0"), Refusal::alreadyPaid);
    ASSERT_EQ(end(), Refusal::none);
    EXPECT_NE(find(documents.back(), Kind::total), nullptr);
    EXPECT_FALSE(std::any_of(shown.begin(), shown.end(),
                             [](const Shown& event) { return std::holds_alternative<DrawerOpens>(event); }));
}

TEST_F(PrinterReceipt, ThatIsPaidByCardAloneOpensNoDrawer)
{
    ASSERT_EQ(begin(), Refusal::none);
    ASSERT_EQ(sell("Chlieb", "2.00"), Refusal::none);
    ASSERT_EQ(pay("2", "2.00", "2.00"), Refusal::none);
    ASSERT_EQ(end(), Refusal::none);
    EXPECT_FALSE(std::any_of(shown.begin(), shown.end(),
                             [](const Shown& event) { return std::holds_alternative<DrawerOpens>(event); }));
    EXPECT_FALSE(state.hardware->drawerIsOpen);
}

TEST_F(PrinterReceipt, TakesNoMoreLinesOnceItIsBeingPaid)
{
    ASSERT_EQ(begin(), Refusal::none);
    ASSERT_EQ(sell("Chlieb", "2.00"), Refusal::none);
    ASSERT_EQ(pay("2", "2.00", "1.00"), Refusal::none);
    EXPECT_EQ(sell("Chlieb", "2.00"), Refusal::receiptIsBeingPaid);
    EXPECT_EQ(item(Command::itemVoid, "Chlieb", "2.00"), Refusal::receiptIsBeingPaid);
    EXPECT_EQ(send(Command::subTotal, {"0", "", "0"}), Refusal::receiptIsBeingPaid);
    EXPECT_EQ(send(Command::setInvoiceNumber, {"F1"}), Refusal::receiptIsBeingPaid);
}

TEST_F(PrinterReceipt, ThatIsCancelledIsKeptWithoutANumberAndCounted)
{
    ASSERT_EQ(drawer("0", "10.00"), Refusal::none);
    ASSERT_EQ(begin(), Refusal::none);
    ASSERT_EQ(sell("Chlieb", "2.00"), Refusal::none);
    ASSERT_EQ(pay("2", "2.00", "1.00"), Refusal::none);
    ASSERT_EQ(send(Command::destroyParagon, {"0", "zakaznik odisiel"}), Refusal::none);
    EXPECT_EQ(state.receipt, nullptr);
    ASSERT_EQ(documents.size(), 2U);
    EXPECT_EQ(documents.back().kind, Document::Kind::cancelledReceipt);
    EXPECT_EQ(documents.back().number, 0);
    EXPECT_TRUE(documents.back().byPayment.empty());
    EXPECT_TRUE(has(documents.back(), Kind::text, "zakaznik odisiel"));
    EXPECT_EQ(standing().day.cancelled, 1);
    EXPECT_EQ(standing().day.receipts, 0);
    EXPECT_EQ(standing().day.turnover(), 0);
    EXPECT_EQ(standing().drawer, (ByPayment{{1, 1000}}));
    EXPECT_EQ(standing().documents, 2);
    ASSERT_EQ(begin(), Refusal::none);
    EXPECT_EQ(receipt().number, 1); // the number was not used up
    EXPECT_EQ(send(Command::destroyParagon, {"0", ""}), Refusal::none);
    EXPECT_EQ(send(Command::destroyParagon, {"0", ""}), Refusal::noReceipt);
}

TEST_F(PrinterReceipt, IsMarkedUntilThePrinterIsFiscalized)
{
    changeLife(Life::training);
    ASSERT_EQ(begin(), Refusal::none);
    EXPECT_TRUE(receipt().isTraining);
    EXPECT_NE(find(receipt(), Kind::notFiscal), nullptr);
    ASSERT_EQ(send(Command::destroyParagon, {"0", ""}), Refusal::none);
    ASSERT_EQ(drawer("0", "1.00"), Refusal::none);
    EXPECT_NE(find(documents.back(), Kind::notFiscal), nullptr);
    changeLife(Life::fiscal);
    ASSERT_EQ(begin(), Refusal::none);
    EXPECT_FALSE(receipt().isTraining);
    EXPECT_EQ(find(receipt(), Kind::notFiscal), nullptr);
}

TEST_F(PrinterReceipt, HasRoomFor500LinesAndThenForItsPayment)
{
    ASSERT_EQ(begin(), Refusal::none);
    while (receipt().lines.size() < 500) {
        ASSERT_EQ(sell("Chlieb", "0.10"), Refusal::none);
    }
    EXPECT_EQ(sell("Chlieb", "0.10"), Refusal::receiptTooLong);
    EXPECT_EQ(send(Command::subTotal, {"0", "", "0"}), Refusal::receiptTooLong);
    EXPECT_EQ(send(Command::setInvoiceNumber, {"F1"}), Refusal::receiptTooLong);
    EXPECT_EQ(receipt().invoice, "");
    const std::string total = formatCents(receipt().total);
    while (receipt().lines.size() < 600) {
        ASSERT_EQ(pay("1", total, "0.01"), Refusal::none);
    }
    EXPECT_EQ(pay("1", total, "0"), Refusal::receiptTooLong);
    EXPECT_EQ(send(Command::destroyParagon, {"0", ""}), Refusal::none);
}

TEST_F(PrinterReceipt, ChangesOnlyItselfUntilItEnds)
{
    ASSERT_EQ(begin(), Refusal::none);
    const State before = state;
    ASSERT_EQ(sell("Chlieb", "2.00"), Refusal::none);
    ASSERT_EQ(pay("1", "2.00", "1.00"), Refusal::none);
    EXPECT_NE(state.receipt, before.receipt);
    EXPECT_EQ(state.standing, before.standing); // by that the memory need not synchronise a line
    EXPECT_EQ(state.settings, before.settings);
    EXPECT_EQ(state.pictures, before.pictures);
}

TEST_F(PrinterReceipt, ThatWasBegunInTheDayIsEndedWhenTheDayIsTooLong)
{
    ASSERT_EQ(begin(), Refusal::none);
    ASSERT_EQ(sell("Chlieb", "2.00"), Refusal::none);
    now += std::chrono::hours(25);
    ASSERT_EQ(pay("1", "2.00", "0"), Refusal::none);
    ASSERT_EQ(end(), Refusal::none);
    EXPECT_EQ(standing().lastDocument, now);
    EXPECT_EQ(begin(), Refusal::dayTooLong);
}

} // namespace
} // namespace virtual_printer
