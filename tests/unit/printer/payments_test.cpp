// Payments: which are taken, what they count, their change, and paying out.
#include "tests/unit/printer/deciding_printer.h"

#include <gtest/gtest.h>

namespace virtual_printer {
namespace {

class PrinterPayments : public testing::Test, protected DecidingPrinter
{
protected:
    void open(const std::string& total)
    {
        ASSERT_EQ(begin(), Refusal::none);
        ASSERT_EQ(sell("Chlieb", total), Refusal::none);
    }
    void openReturn(const std::string& total)
    {
        ASSERT_EQ(begin(), Refusal::none);
        ASSERT_EQ(item(Command::itemReturn, "Zla vec", total), Refusal::none);
    }
    Refusal payWithTotal(const std::string& total, const std::string& paid, const std::string& paidSoFar)
    {
        return send(Command::payment2, {"0", "1", total, paid, "0", "", paidSoFar});
    }
};

TEST_F(PrinterPayments, SettleWhatIsDueWithoutASumOfTheirOwn)
{
    open("10.00");
    ASSERT_EQ(pay("2", "10.00", "4.00"), Refusal::none);
    EXPECT_EQ(due(), 600);
    ASSERT_EQ(pay("2", "10.00", "0"), Refusal::none);
    EXPECT_EQ(due(), 0);
    EXPECT_EQ(lastLine().sum, 600);
    EXPECT_EQ(lastLine().text, "Karta"); // the type's name, as the till gave none
    ASSERT_EQ(end(), Refusal::none);
    EXPECT_EQ(standing().drawer, (ByPayment{{2, 1000}}));
    EXPECT_EQ(standing().day.byPayment, (ByPayment{{2, 1000}}));
}

TEST_F(PrinterPayments, AreNotTakenForAnEmptyReceipt)
{
    ASSERT_EQ(begin(), Refusal::none);
    EXPECT_EQ(pay("1", "0.00", "0"), Refusal::nothingSold);
    ASSERT_EQ(send(Command::setInvoiceNumber, {"F1"}), Refusal::none);
    EXPECT_EQ(pay("1", "0.00", "0"), Refusal::nothingSold);
}

TEST_F(PrinterPayments, AreOfAKnownType)
{
    open("10.00");
    EXPECT_EQ(pay("0", "10.00", "10.00"), Refusal::unknownPayment);
    EXPECT_EQ(pay("4", "10.00", "10.00"), Refusal::unknownPayment);
    EXPECT_FALSE(state.receipt->isBeingPaid);
    EXPECT_EQ(sell("Caj", "1.00"), Refusal::none); // a refused payment begins none
}

TEST_F(PrinterPayments, AgreeOnTheTotalOrWhatIsDue)
{
    open("10.00");
    EXPECT_EQ(pay("1", "9.99", "9.99"), Refusal::paymentWrongTotal);
    EXPECT_EQ(pay("1", "0.00", "0"), Refusal::paymentWrongTotal);
    ASSERT_EQ(pay("1", "10.00", "4.00"), Refusal::none);
    EXPECT_EQ(pay("1", "4.00", "4.00"), Refusal::paymentWrongTotal);
    ASSERT_EQ(pay("1", "6.00", "1.00"), Refusal::none);
    ASSERT_EQ(pay("1", "10.00", "5.00"), Refusal::none);
    EXPECT_EQ(due(), 0);
}

TEST_F(PrinterPayments, AreRefusedAfterSettlement)
{
    open("10.00");
    ASSERT_EQ(pay("1", "10.00", "10.00"), Refusal::none);
    EXPECT_EQ(pay("1", "10.00", "0.01"), Refusal::alreadyPaid);
    EXPECT_EQ(pay("1", "0.00", "0"), Refusal::alreadyPaid);
    EXPECT_EQ(payWithTotal("10.00", "10.00", "0"), Refusal::alreadyPaid);
}

TEST_F(PrinterPayments, AreAtLeastTheMinimumOfTheirType)
{
    open("10.00");
    EXPECT_EQ(pay("3", "10.00", "4.99"), Refusal::paymentTooSmall);
    ASSERT_EQ(pay("3", "10.00", "5.00"), Refusal::none);
    EXPECT_EQ(pay("5", "10.00", "0.10", "0.0400"), Refusal::paymentTooSmall); // 0.4 cents
    EXPECT_EQ(pay("6", "10.00", "0.10", "0.0400"), Refusal::paymentTooSmall); // no minimum, and yet nothing
    EXPECT_EQ(pay("6", "10.00", "0.01"), Refusal::none);
}

TEST_F(PrinterPayments, GiveChangeInCashWhereTheTypeAllows)
{
    open("3.20");
    EXPECT_EQ(pay("2", "3.20", "3.21"), Refusal::overPayment);
    EXPECT_EQ(pay("3", "3.20", "5.00"), Refusal::overPayment);
    ASSERT_EQ(pay("1", "3.20", "5.00"), Refusal::none);
    EXPECT_EQ(due(), 0);
    EXPECT_EQ(lastLine().kind, Line::Kind::change);
    EXPECT_EQ(lastLine().sum, 180);
    EXPECT_EQ(receipt().byPayment, (ByPayment{{1, 320}}));
    ASSERT_EQ(end(), Refusal::none);
    EXPECT_EQ(standing().drawer, (ByPayment{{1, 320}}));
}

TEST_F(PrinterPayments, GiveNoChangeThatIsNotInTheDrawer)
{
    open("30.00");
    EXPECT_EQ(pay("5", "30.00", "40.00"), Refusal::drawerTooEmpty); // 10.00 back in cash
    ASSERT_EQ(pay("1", "30.00", "9.99"), Refusal::none);
    EXPECT_EQ(pay("5", "30.00", "30.01"), Refusal::drawerTooEmpty); // 10.00 back, 9.99 there
    ASSERT_EQ(pay("1", "30.00", "0.01"), Refusal::none);
    ASSERT_EQ(pay("5", "30.00", "30.00"), Refusal::none); // 10.00 back, which came in before
    EXPECT_EQ(receipt().byPayment, (ByPayment{{1, 0}, {5, 3000}}));
    ASSERT_EQ(end(), Refusal::none);
    EXPECT_EQ(standing().drawer, (ByPayment{{1, 0}, {5, 3000}}));
}

TEST_F(PrinterPayments, InForeignCurrencyCountThroughTheRate)
{
    open("30.00");
    ASSERT_EQ(pay("2", "30.00", "100.00", "0.0400"), Refusal::none); // 100 x 0.04
    EXPECT_EQ(due(), 2600);
    EXPECT_EQ(lastLine().sum, 400);
    EXPECT_EQ(lastLine().foreign, 10000);
    ASSERT_EQ(pay("2", "30.00", "260.95", "+26.0950"), Refusal::none); // 260.95 / 26.095
    EXPECT_EQ(due(), 1600);
    ASSERT_EQ(pay("2", "30.00", "0", "+25.0000"), Refusal::none); // what is due: 16.00, which are 400.00
    EXPECT_EQ(due(), 0);
    EXPECT_EQ(lastLine().sum, 1600);
    EXPECT_EQ(lastLine().foreign, 40000);
}

TEST_F(PrinterPayments, InForeignCurrencyShowTheirRateInFrontOfThem)
{
    open("30.00");
    const auto rateInFront = [&] {
        const Line& line = receipt().lines.at(receipt().lines.size() - 2);
        return line.text + "|" + line.right;
    };
    ASSERT_EQ(pay("2", "30.00", "100.00", "0.0400"), Refusal::none);
    EXPECT_EQ(rateInFront(), "Exchange rate|1 = 0.0400 EUR");
    ASSERT_EQ(pay("2", "30.00", "260.95", "+26.0950"), Refusal::none);
    EXPECT_EQ(rateInFront(), "Exchange rate|1 EUR = 26.0950");
    ASSERT_EQ(pay("1", "30.00", "1.00", "1.0000"), Refusal::none);
    EXPECT_EQ(receipt().lines.at(receipt().lines.size() - 2).kind, Line::Kind::payment) << "its own currency";
}

TEST_F(PrinterPayments, WithoutARateCountAsTheyAre)
{
    open("30.00");
    ASSERT_EQ(pay("2", "30.00", "10.00", "0"), Refusal::none);
    ASSERT_EQ(pay("2", "30.00", "10.00", "+0"), Refusal::none);
    ASSERT_EQ(pay("5", "30.00", "5.00", "0"), Refusal::none); // no euro exchange rate is set
    EXPECT_EQ(due(), 500);
    EXPECT_EQ(lastLine().foreign, 0);
}

TEST_F(PrinterPayments, OfTheForeignTypeTakeTheEuroExchangeRate)
{
    changeSettings([](Settings& settings) { settings.euroExchangeRate = 301'260; });
    open("100.00");
    ASSERT_EQ(pay("5", "100.00", "1.00"), Refusal::none); // 30.126
    EXPECT_EQ(due(), 6987);
    ASSERT_EQ(pay("5", "100.00", "1.00", "1.0000"), Refusal::none);
    EXPECT_EQ(due(), 6887);
    ASSERT_EQ(pay("2", "100.00", "1.00"), Refusal::none); // of another type as it is
    EXPECT_EQ(due(), 6787);
}

TEST_F(PrinterPayments, ThatAreBeyondAllMoneyAreRefused)
{
    open("100.00");
    EXPECT_EQ(pay("1", "100.00", "9999999.99", "2.0000"), Refusal::valueOutOfRange);
    EXPECT_EQ(pay("1", "100.00", "9999999.99", "+0.0001"), Refusal::valueOutOfRange);
}

TEST_F(PrinterPayments, HaveTheSignOfWhatIsDue)
{
    open("10.00");
    EXPECT_EQ(pay("1", "10.00", "-10.00"), Refusal::wrongSign);
    ASSERT_EQ(send(Command::destroyParagon, {"0", ""}), Refusal::none);
    ASSERT_EQ(drawer("0", "50.00"), Refusal::none);
    openReturn("10.00");
    EXPECT_EQ(pay("1", "-10.00", "10.00"), Refusal::wrongSign);
    EXPECT_EQ(pay("1", "10.00", "-10.00"), Refusal::paymentWrongTotal);
    EXPECT_EQ(pay("1", "-10.00", "-10.00"), Refusal::none);
}

TEST_F(PrinterPayments, PayOutWhatAReturnComesTo)
{
    openReturn("10.00");
    EXPECT_EQ(end(), Refusal::paidTooLittle);
    EXPECT_EQ(pay("1", "-10.00", "0"), Refusal::drawerTooEmpty);
    ASSERT_EQ(send(Command::destroyParagon, {"0", ""}), Refusal::none);
    ASSERT_EQ(drawer("0", "9.99"), Refusal::none);
    openReturn("10.00");
    EXPECT_EQ(pay("1", "-10.00", "0"), Refusal::drawerTooEmpty);
    EXPECT_EQ(pay("2", "-10.00", "-1.00"), Refusal::drawerTooEmpty);
    ASSERT_EQ(pay("1", "-10.00", "-4.00"), Refusal::none);
    EXPECT_EQ(pay("1", "-10.00", "-6.01"), Refusal::overPayment);
    EXPECT_EQ(pay("1", "-6.00", "0"), Refusal::drawerTooEmpty); // 5.99 are left
    ASSERT_EQ(send(Command::destroyParagon, {"0", ""}), Refusal::none);
    ASSERT_EQ(drawer("0", "0.01"), Refusal::none);
    openReturn("10.00");
    ASSERT_EQ(pay("1", "-10.00", "0"), Refusal::none);
    ASSERT_EQ(end(), Refusal::none);
    EXPECT_EQ(documents.back().total, -1000);
    EXPECT_EQ(documents.back().byPayment, (ByPayment{{1, -1000}}));
    EXPECT_EQ(standing().drawer, (ByPayment{{1, 0}}));
    EXPECT_EQ(standing().day.turnover(), -1000);
}

TEST_F(PrinterPayments, MayTellWhatWasGivenSoFar)
{
    open("10.00");
    EXPECT_EQ(payWithTotal("10.00", "4.00", "3.99"), Refusal::paymentWrongTotal);
    ASSERT_EQ(payWithTotal("10.00", "4.00", "4.00"), Refusal::none);
    ASSERT_EQ(payWithTotal("10.00", "2.00", "0"), Refusal::none);
    EXPECT_EQ(payWithTotal("4.00", "5.00", "10.00"), Refusal::paymentWrongTotal);
    ASSERT_EQ(payWithTotal("4.00", "5.00", "11.00"), Refusal::none); // 1.00 of it comes back
    EXPECT_EQ(due(), 0);
}

TEST_F(PrinterPayments, NeedAReceipt)
{
    EXPECT_EQ(pay("1", "1.00", "1.00"), Refusal::noReceipt);
    EXPECT_EQ(payWithTotal("1.00", "1.00", "0"), Refusal::noReceipt);
}

} // namespace
} // namespace virtual_printer
