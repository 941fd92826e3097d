// Discounts, surcharges, vouchers and down payments: what they are on, and how much they may take.
#include "tests/unit/printer/deciding_printer.h"
#include "virtual_printer/fiscal/subtotal_shares.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cmath>

namespace virtual_printer {
namespace {

class PrinterDiscounts : public testing::Test, protected DecidingPrinter
{
protected:
    void SetUp() override { ASSERT_EQ(begin(), Refusal::none); }

    Refusal onItem(const std::string& operation, const std::string& value, const std::string& vat = "")
    {
        return send(Command::itemDiscount, {"0", "akcia", operation, value, vat});
    }
    Refusal onItemWithTotal(const std::string& operation, const std::string& value, const std::string& total)
    {
        return send(Command::itemDiscount2, {"0", "akcia", operation, value, "", total});
    }
    Refusal onSubtotal(const std::string& operation, const std::string& value, const std::string& vat = " ")
    {
        return send(Command::subTotalDiscount, {"0", "vernost", operation, value, vat});
    }
    Refusal onSubtotalWithTotal(const std::string& operation, const std::string& value,
                                const std::string& total, const std::string& vat = " ")
    {
        return send(Command::subTotalDiscount2, {"0", "vernost", operation, value, total, vat});
    }
    Refusal voucher(const std::string& amount, const std::string& vat, const std::string& price)
    {
        return send(Command::redeemVoucher, {"Poukazka", amount, vat, price, "P-77"});
    }
    Refusal downPayment(const std::string& amount, const std::string& vat, const std::string& price)
    {
        return send(Command::deductDownPayment, {"Zaloha", amount, vat, price});
    }
    [[nodiscard]] Cents under(char vat) const { return receipt().byVat.at(vat); }
};

TEST_F(PrinterDiscounts, AreSumsOrPercentsOrSurcharges)
{
    ASSERT_EQ(sell("Syr", "10.00"), Refusal::none);
    ASSERT_EQ(onItem("0", "1.50"), Refusal::none);
    EXPECT_EQ(total(), 850);
    EXPECT_EQ(lastLine().kind, Line::Kind::discount);
    EXPECT_EQ(lastLine().text, "akcia");
    EXPECT_EQ(lastLine().vat, 'A');
    EXPECT_EQ(lastLine().sum, -150);
    ASSERT_EQ(onItem("1", "10"), Refusal::none); // of what is left
    EXPECT_EQ(total(), 765);
    ASSERT_EQ(onItem("2", "0.35"), Refusal::none);
    EXPECT_EQ(total(), 800);
    ASSERT_EQ(onItem("3", "12.50"), Refusal::none);
    EXPECT_EQ(total(), 900);
    EXPECT_EQ(lastLine().sum, 100);
}

TEST_F(PrinterDiscounts, AreRoundedHalfUp)
{
    ASSERT_EQ(sell("Syr", "0.25"), Refusal::none);
    ASSERT_EQ(onItem("1", "10"), Refusal::none); // 2.5 cents
    EXPECT_EQ(total(), 22);
}

TEST_F(PrinterDiscounts, AreOfAKnownTypeAndAPositiveValue)
{
    ASSERT_EQ(sell("Syr", "10.00"), Refusal::none);
    for (const char* operation : {"4", "-1", "99"}) {
        EXPECT_EQ(onItem(operation, "1.00"), Refusal::unknownOperation);
        EXPECT_EQ(onSubtotal(operation, "1.00"), Refusal::unknownOperation);
    }
    for (const char* operation : {"0", "1", "2", "3"}) {
        EXPECT_EQ(onItem(operation, "-1.00"), Refusal::wrongSign);
        EXPECT_EQ(onItem(operation, "0.00"), Refusal::valueOutOfRange);
        EXPECT_EQ(onSubtotal(operation, "-1.00"), Refusal::wrongSign);
        EXPECT_EQ(onSubtotal(operation, "0"), Refusal::valueOutOfRange);
    }
    EXPECT_EQ(onItem("1", "100.01"), Refusal::valueOutOfRange);
    EXPECT_EQ(onItem("3", "100.01"), Refusal::valueOutOfRange);
    EXPECT_EQ(onItem("1", "100"), Refusal::none);
    EXPECT_EQ(total(), 0);
}

TEST_F(PrinterDiscounts, OnAnItemStandDirectlyBehindIt)
{
    EXPECT_EQ(onItem("0", "1.00"), Refusal::nothingToDiscount);
    ASSERT_EQ(sell("Syr", "10.00"), Refusal::none);
    ASSERT_EQ(onItem("0", "1.00"), Refusal::none);
    ASSERT_EQ(onItem("0", "1.00"), Refusal::none);
    ASSERT_EQ(send(Command::subTotal, {"0", "", "0"}), Refusal::none);
    EXPECT_EQ(onItem("0", "1.00"), Refusal::nothingToDiscount);
    ASSERT_EQ(sell("Chlieb", "3.00"), Refusal::none);
    ASSERT_EQ(item(Command::itemNegative, "Obal", "1.00"), Refusal::none);
    EXPECT_EQ(onItem("0", "1.00"), Refusal::nothingToDiscount);
    ASSERT_EQ(sell("Maslo", "3.00"), Refusal::none);
    ASSERT_EQ(item(Command::itemVoid, "Maslo", "3.00"), Refusal::none);
    EXPECT_EQ(onItem("0", "1.00"), Refusal::nothingToDiscount);
    ASSERT_EQ(sell("Mlieko", "3.00"), Refusal::none);
    ASSERT_EQ(send(Command::setInvoiceNumber, {"F1"}), Refusal::none);
    EXPECT_EQ(onItem("0", "1.00"), Refusal::nothingToDiscount);
}

TEST_F(PrinterDiscounts, OnAnItemAreUnderItsLetter)
{
    ASSERT_EQ(sell("Syr", "10.00", "B"), Refusal::none);
    EXPECT_EQ(onItem("0", "1.00", "A"), Refusal::nothingToDiscount);
    EXPECT_EQ(onItem("0", "1.00", "E"), Refusal::vatNotSet);
    EXPECT_EQ(onItem("0", "1.00", "X"), Refusal::unknownVat);
    EXPECT_EQ(onItem("0", "1.00", "B"), Refusal::none);
    EXPECT_EQ(onItem("0", "1.00", " "), Refusal::none);
    EXPECT_EQ(under('B'), 800);
}

TEST_F(PrinterDiscounts, OnAnItemTakeNoMoreThanIsLeftOfIt)
{
    ASSERT_EQ(sell("Chlieb", "50.00"), Refusal::none);
    ASSERT_EQ(sell("Syr", "10.00"), Refusal::none);
    EXPECT_EQ(onItem("0", "10.01"), Refusal::discountTooLarge);
    ASSERT_EQ(onItem("0", "9.00"), Refusal::none);
    EXPECT_EQ(onItem("0", "1.01"), Refusal::discountTooLarge);
    ASSERT_EQ(onItem("0", "1.00"), Refusal::none);
    EXPECT_EQ(onItem("0", "0.01"), Refusal::nothingToDiscount);
    EXPECT_EQ(total(), 5000);
}

TEST_F(PrinterDiscounts, OnAnItemOfWhichNothingIsLeftAreOnNothing)
{
    const auto expectNothing = [this] {
        for (const char* const operation : {"0", "1", "2", "3"}) {
            EXPECT_EQ(onItem(operation, "10"), Refusal::nothingToDiscount) << operation;
            EXPECT_EQ(onItemWithTotal(operation, "10", "0"), Refusal::nothingToDiscount) << operation;
        }
    };
    ASSERT_EQ(sell("Chlieb", "50.00"), Refusal::none);
    ASSERT_EQ(sell("Vzorka", "0.00"), Refusal::none);
    expectNothing();
    ASSERT_EQ(sell("Syr", "10.00"), Refusal::none);
    ASSERT_EQ(onItem("1", "100"), Refusal::none);
    expectNothing();
    EXPECT_EQ(total(), 5000);
}

TEST_F(PrinterDiscounts, OnAnItemMayStandBesideAReturn)
{
    ASSERT_EQ(item(Command::itemReturn, "Zla vec", "20.00"), Refusal::none);
    ASSERT_EQ(sell("Syr", "10.00"), Refusal::none);
    ASSERT_EQ(onItem("0", "1.00"), Refusal::none);
    EXPECT_EQ(total(), -1100);
}

// By no more than what is returned: without the item the receipt would stand there as well.
TEST_F(PrinterDiscounts, OnAnItemAndItsVoidMayBringAReceiptWithReturnsBelowZero)
{
    ASSERT_EQ(item(Command::itemReturn, "Zla vec", "8.00"), Refusal::none);
    ASSERT_EQ(sell("Syr", "10.00"), Refusal::none);
    ASSERT_EQ(total(), 200);
    EXPECT_EQ(onSubtotal("0", "2.01", "A"), Refusal::discountTooLarge);
    EXPECT_EQ(voucher("1.00", "A", "2.01"), Refusal::discountTooLarge);
    EXPECT_EQ(item(Command::itemNegative, "Obal", "2.01"), Refusal::vatBelowZero);
    ASSERT_EQ(onItem("0", "3.00"), Refusal::none);
    EXPECT_EQ(total(), -100);
    EXPECT_EQ(onItem("0", "7.01"), Refusal::discountTooLarge);
    ASSERT_EQ(onItem("0", "7.00"), Refusal::none);
    EXPECT_EQ(total(), -800);
    ASSERT_EQ(sell("Caj", "9.00"), Refusal::none);
    ASSERT_EQ(item(Command::itemVoid, "Caj", "9.00"), Refusal::none);
    EXPECT_EQ(under('A'), -800);
}

TEST_F(PrinterDiscounts, OnAnItemComeToWhatTheTillSaysWithinACent)
{
    ASSERT_EQ(sell("Syr", "10.00"), Refusal::none);
    EXPECT_EQ(onItemWithTotal("0", "1.50", "1.50"), Refusal::wrongTotal);
    EXPECT_EQ(onItemWithTotal("0", "1.50", "8.48"), Refusal::wrongTotal);
    EXPECT_EQ(onItemWithTotal("0", "1.50", "8.52"), Refusal::wrongTotal);
    EXPECT_EQ(onItemWithTotal("0", "1.50", "8.51"), Refusal::none);
    EXPECT_EQ(total(), 850);
    EXPECT_EQ(onItemWithTotal("0", "1.50", "0"), Refusal::none);
    EXPECT_EQ(onItemWithTotal("2", "1.00", "8.00"), Refusal::none);
    EXPECT_EQ(total(), 800);
}

// 10.00 over 20.00, 10.00 and 3.33: 6.0006, 3.0003 and 0.9991 are 6.00, 3.00 and 0.99; the cent left goes to
// A.
TEST_F(PrinterDiscounts, OnTheSubtotalAreSharedInProportion)
{
    ASSERT_EQ(sell("Syr", "20.00", "A"), Refusal::none);
    ASSERT_EQ(sell("Caj", "10.00", "B"), Refusal::none);
    ASSERT_EQ(sell("Med", "3.33", "C"), Refusal::none);
    ASSERT_EQ(onSubtotal("0", "10.00"), Refusal::none);
    EXPECT_EQ(under('A'), 1399);
    EXPECT_EQ(under('B'), 700);
    EXPECT_EQ(under('C'), 234);
    EXPECT_EQ(total(), 2333);
    ASSERT_EQ(onSubtotal("0", "23.33"), Refusal::none); // all that there is
    EXPECT_EQ(receipt().byVat, (ByVat{{'A', 0}, {'B', 0}, {'C', 0}}));
    EXPECT_EQ(onSubtotal("0", "0.01"), Refusal::nothingToDiscount);
}

TEST_F(PrinterDiscounts, OnTheSubtotalMayBeUnderOneLetter)
{
    ASSERT_EQ(sell("Syr", "20.00", "A"), Refusal::none);
    ASSERT_EQ(sell("Caj", "10.00", "B"), Refusal::none);
    ASSERT_EQ(onSubtotal("1", "50", "B"), Refusal::none);
    EXPECT_EQ(under('A'), 2000);
    EXPECT_EQ(under('B'), 500);
    EXPECT_EQ(onSubtotal("0", "5.01", "B"), Refusal::discountTooLarge);
    EXPECT_EQ(onSubtotal("0", "1.00", "C"), Refusal::nothingToDiscount);
    EXPECT_EQ(onSubtotal("0", "1.00", "E"), Refusal::vatNotSet);
    EXPECT_EQ(onSubtotal("0", "1.00", "I"), Refusal::unknownVat);
    ASSERT_EQ(onSubtotal("2", "1.00", "B"), Refusal::none);
    EXPECT_EQ(under('B'), 600);
}

TEST_F(PrinterDiscounts, OnTheSubtotalTakeNoMoreThanThereIs)
{
    EXPECT_EQ(onSubtotal("0", "0.01"), Refusal::nothingToDiscount);
    ASSERT_EQ(sell("Syr", "20.00", "A"), Refusal::none);
    EXPECT_EQ(onSubtotal("0", "20.01"), Refusal::discountTooLarge);
    ASSERT_EQ(item(Command::itemReturn, "Zla vec", "15.00", "B"), Refusal::none);
    EXPECT_EQ(onSubtotal("0", "5.01"), Refusal::discountTooLarge);
    EXPECT_EQ(onSubtotal("0", "5.01", "A"), Refusal::totalWouldBeNegative);
    ASSERT_EQ(onSubtotal("0", "2.00"), Refusal::none);
    EXPECT_EQ(under('A'), 1800); // B, which is below zero, has no share
    EXPECT_EQ(under('B'), -1500);
}

TEST_F(PrinterDiscounts, OnTheSubtotalComeToWhatTheTillSaysWithinACent)
{
    ASSERT_EQ(sell("Syr", "20.00", "A"), Refusal::none);
    ASSERT_EQ(sell("Caj", "10.00", "B"), Refusal::none);
    EXPECT_EQ(onSubtotalWithTotal("0", "1.50", "28.48"), Refusal::wrongTotal);
    EXPECT_EQ(onSubtotalWithTotal("0", "1.50", "1.50"), Refusal::wrongTotal);
    EXPECT_EQ(onSubtotalWithTotal("0", "1.50", "28.49"), Refusal::none);
    EXPECT_EQ(onSubtotalWithTotal("0", "1.50", "0"), Refusal::none);
    EXPECT_EQ(total(), 2700);
    EXPECT_EQ(onSubtotalWithTotal("0", "1.00", "26.00", "B"), Refusal::wrongTotal); // B has 9.00
    EXPECT_EQ(onSubtotalWithTotal("0", "1.00", "8.00", "B"), Refusal::none);
}

TEST_F(PrinterDiscounts, AreTitledWhenTheTillSaysNothing)
{
    ASSERT_EQ(sell("Syr", "20.00"), Refusal::none);
    ASSERT_EQ(send(Command::itemDiscount, {"0", "", "0", "1.00", ""}), Refusal::none);
    EXPECT_EQ(lastLine().text, "Discount");
    ASSERT_EQ(send(Command::itemDiscount, {"0", "", "2", "1.00", ""}), Refusal::none);
    EXPECT_EQ(lastLine().text, "Surcharge");
}

TEST_F(PrinterDiscounts, AreSummedForTheDay)
{
    ASSERT_EQ(sell("Syr", "20.00"), Refusal::none);
    ASSERT_EQ(onItem("0", "3.00"), Refusal::none);
    ASSERT_EQ(onItem("2", "1.00"), Refusal::none);
    ASSERT_EQ(onSubtotal("0", "2.00"), Refusal::none);
    ASSERT_EQ(sell("Caj", "5.00"), Refusal::none);
    ASSERT_EQ(onItem("0", "2.50"), Refusal::none);
    ASSERT_EQ(item(Command::itemVoid, "Caj", "5.00"), Refusal::none); // and its discount
    ASSERT_EQ(item(Command::itemReturn, "Zla vec", "6.00"), Refusal::none);
    ASSERT_EQ(pay("1", "10.00", "0"), Refusal::none);
    ASSERT_EQ(end(), Refusal::none);
    EXPECT_EQ(standing().day.discounts, 400);
    EXPECT_EQ(standing().day.returns, 600);
}

TEST_F(PrinterDiscounts, SubtotalsAreOfTypeZero)
{
    ASSERT_EQ(sell("Syr", "20.00"), Refusal::none);
    EXPECT_EQ(send(Command::subTotal, {"0", "spolu", "1"}), Refusal::unknownOperation);
    ASSERT_EQ(send(Command::subTotal, {"0", "spolu", "0"}), Refusal::none);
    EXPECT_EQ(lastLine().kind, Line::Kind::subtotal);
    EXPECT_EQ(lastLine().text, "spolu");
    EXPECT_EQ(lastLine().sum, 2000);
    EXPECT_EQ(total(), 2000);
}

TEST_F(PrinterDiscounts, VouchersTakeOffAmountTimesPrice)
{
    ASSERT_EQ(sell("Syr", "20.00", "B"), Refusal::none);
    ASSERT_EQ(voucher("2.00", "B", "5.50"), Refusal::none);
    EXPECT_EQ(under('B'), 900);
    EXPECT_EQ(lastLine().kind, Line::Kind::voucher);
    EXPECT_EQ(lastLine().sum, -1100);
    EXPECT_EQ(lastLine().right, "P-77");
    ASSERT_EQ(downPayment("1.50", "B", "0.33"), Refusal::none); // 49.5 cents
    EXPECT_EQ(under('B'), 850);
    EXPECT_EQ(lastLine().kind, Line::Kind::downPayment);
}

TEST_F(PrinterDiscounts, VouchersAndDownPaymentsTakeNoMoreThanTheirLetterHas)
{
    ASSERT_EQ(sell("Syr", "20.00", "B"), Refusal::none);
    ASSERT_EQ(sell("Caj", "20.00", "A"), Refusal::none);
    EXPECT_EQ(voucher("1.00", "B", "20.01"), Refusal::discountTooLarge);
    EXPECT_EQ(downPayment("1.00", "B", "20.01"), Refusal::discountTooLarge);
    EXPECT_EQ(voucher("1.00", "C", "0.01"), Refusal::discountTooLarge);
    EXPECT_EQ(voucher("1.00", "E", "0.01"), Refusal::vatNotSet);
    EXPECT_EQ(downPayment("1.00", "Z", "0.01"), Refusal::unknownVat);
    EXPECT_EQ(voucher("-1.00", "B", "-1.00"), Refusal::wrongSign);
    EXPECT_EQ(voucher("1.00", "B", "-1.00"), Refusal::wrongSign);
    EXPECT_EQ(voucher("0", "B", "1.00"), Refusal::valueOutOfRange);
    EXPECT_EQ(downPayment("0.01", "B", "0.01"), Refusal::valueOutOfRange); // nothing of a cent
    EXPECT_EQ(send(Command::redeemVoucher, {" ", "1.00", "B", "1.00", "P-77"}), Refusal::badText);
    EXPECT_EQ(voucher("1.00", "B", "20.00"), Refusal::none);
    ASSERT_EQ(item(Command::itemReturn, "Zla vec", "15.00", "C"), Refusal::none);
    EXPECT_EQ(downPayment("1.00", "A", "5.01"), Refusal::totalWouldBeNegative);
    EXPECT_EQ(downPayment("1.00", "A", "5.00"), Refusal::none);
}

TEST(PrinterSubtotalShares, GoOnToTheNextLetterWhereTheLargestHasNoRoom)
{
    EXPECT_EQ(shareOut(-2, {{'A', 1}, {'B', 1}, {'C', 1}}), (ByVat{{'A', -1}, {'B', -1}}));
    EXPECT_EQ(shareOut(-3, {{'A', 1}, {'B', 1}, {'C', 1}}), (ByVat{{'A', -1}, {'B', -1}, {'C', -1}}));
    EXPECT_EQ(shareOut(2, {{'A', 1}, {'B', 1}, {'C', 1}}), (ByVat{{'A', 2}}));
    EXPECT_EQ(shareOut(-1, {{'A', 1}, {'B', 7}, {'C', -9}}), (ByVat{{'B', -1}}));
    EXPECT_EQ(shareOut(0, {{'A', 1}, {'B', 7}}), (ByVat{{'B', 0}}));
}

RC_GTEST_PROP(PrinterSubtotalShares, AreTheWholeAndEachInProportionAndNoMoreThanThereIs, ())
{
    ByVat sums;
    for (char letter = 'A'; letter <= 'H'; ++letter) {
        sums[letter] = *rc::gen::oneOf(rc::gen::inRange<Cents>(-1000, 1000), rc::gen::just<Cents>(1),
                                       rc::gen::inRange<Cents>(1, 100'000'000));
    }
    Cents whole = 0;
    for (const auto& [letter, sum] : sums) {
        whole += std::max<Cents>(sum, 0);
    }
    RC_PRE(whole > 0);
    const Cents size = *rc::gen::inRange<Cents>(0, whole + 1);
    for (const Cents amount : {size, -size}) {
        Cents shared = 0;
        for (const auto& [letter, share] : shareOut(amount, sums)) {
            const Cents sum = sums.at(letter);
            RC_ASSERT(sum > 0);
            RC_ASSERT(sum + share >= 0);
            RC_ASSERT(share * amount >= 0);
            // Away from the exact share by the rest at most, which is less than a cent a letter.
            RC_ASSERT(
                std::abs(static_cast<double>(share) - static_cast<double>(amount) * static_cast<double>(sum) /
                                                          static_cast<double>(whole)) < 8.0);
            shared += share;
        }
        RC_ASSERT(shared == amount);
    }
}

} // namespace
} // namespace virtual_printer
