// Items: what is sold, voided, returned and negative, and what of it is refused.
#include "tests/unit/printer/deciding_printer.h"

#include <gtest/gtest.h>

namespace virtual_printer {
namespace {

class PrinterItems : public testing::Test, protected DecidingPrinter
{
protected:
    void SetUp() override { ASSERT_EQ(begin(), Refusal::none); }

    Refusal negative(const std::string& total, const std::string& vat = "A")
    {
        return item(Command::itemNegative, "Zlava", total, vat);
    }
    Refusal returned(const std::string& total, const std::string& vat = "A")
    {
        return item(Command::itemReturn, "Zla vec", total, vat);
    }
    Refusal voided(const std::string& name, const std::string& total, const std::string& vat = "A",
                   const std::string& amount = "1.000", const std::string& price = "")
    {
        return item(Command::itemVoid, name, total, vat, amount, price);
    }
    Refusal discounted(const std::string& value)
    {
        return send(Command::itemDiscount, {"0", "", "0", value, ""});
    }
    [[nodiscard]] Cents under(char vat) const { return receipt().byVat.at(vat); }
};

TEST_F(PrinterItems, AreSold)
{
    // The name as tills pad it to two lines, the unit as they pad it to three characters.
    ASSERT_EQ(sell("Chlieb" + std::string(34, ' '), "12.50", "B", "1.500", "8.33"), Refusal::none);
    const Line& line = lastLine();
    EXPECT_EQ(line.kind, Line::Kind::item);
    EXPECT_EQ(line.text, "Chlieb");
    EXPECT_EQ(line.unit, "ks");
    EXPECT_EQ(line.vat, 'B');
    EXPECT_EQ(line.quantity, 1500);
    EXPECT_EQ(line.unitPrice, 833);
    EXPECT_EQ(line.sum, 1250);
    EXPECT_EQ(total(), 1250);
    EXPECT_EQ(under('B'), 1250);
    const auto* printed = std::get_if<Printed>(&shown.back());
    ASSERT_NE(printed, nullptr);
    EXPECT_EQ(printed->line, line);
}

// 1.5 x 8.33 is 12.495: totals from 12.485 to 12.505 are within a cent of it.
TEST_F(PrinterItems, HaveTheTotalThatQuantityAndPriceGiveWithinACent)
{
    EXPECT_EQ(sell("Chlieb", "12.48", "A", "1.500", "8.33"), Refusal::wrongTotal);
    EXPECT_EQ(sell("Chlieb", "12.49", "A", "1.500", "8.33"), Refusal::none);
    EXPECT_EQ(sell("Chlieb", "12.50", "A", "1.500", "8.33"), Refusal::none);
    EXPECT_EQ(sell("Chlieb", "12.51", "A", "1.500", "8.33"), Refusal::wrongTotal);
    EXPECT_EQ(sell("Chlieb", "3.01", "A", "3", "1.00"), Refusal::none); // exactly one cent away
    EXPECT_EQ(sell("Chlieb", "3.02", "A", "3", "1.00"), Refusal::wrongTotal);
}

TEST_F(PrinterItems, HaveANameAndAValidVatLetter)
{
    EXPECT_EQ(sell("", "1.00"), Refusal::badText);
    EXPECT_EQ(sell("   ", "1.00"), Refusal::badText);
    EXPECT_EQ(sell("Chlieb", "1.00", "I"), Refusal::unknownVat);
    EXPECT_EQ(sell("Chlieb", "1.00", "a"), Refusal::unknownVat);
    EXPECT_EQ(sell("Chlieb", "1.00", "@"), Refusal::unknownVat);
    EXPECT_EQ(sell("Chlieb", "1.00", " "), Refusal::unknownVat);
    EXPECT_EQ(sell("Chlieb", "1.00", ""), Refusal::badText);
    EXPECT_EQ(sell("Chlieb", "1.00", "E"), Refusal::vatNotSet);
    EXPECT_EQ(sell("Chlieb", "1.00", "H"), Refusal::vatNotSet);
    EXPECT_EQ(sell("Chlieb", "1.00", "D"), Refusal::none);
}

TEST_F(PrinterItems, AreOfAQuantityAndNoNegativePrice)
{
    EXPECT_EQ(sell("Chlieb", "0.00", "A", "0", "1.00"), Refusal::valueOutOfRange);
    EXPECT_EQ(sell("Chlieb", "-1.00", "A", "-1", "1.00"), Refusal::valueOutOfRange);
    EXPECT_EQ(sell("Chlieb", "-1.00", "A", "1", "-1.00"), Refusal::wrongSign);
    EXPECT_EQ(sell("Chlieb", "0.00", "A", "1", "-0.01"), Refusal::wrongSign);
    EXPECT_EQ(sell("Taska", "0.00", "A", "1", "0.00"), Refusal::none);
}

TEST_F(PrinterItems, AreNotSoldWithMoreDigitsThanTheirFieldsHave)
{
    EXPECT_EQ(sell("Chlieb", "1.001", "A", "1", "1.00"), Refusal::tooManyDecimals);
    EXPECT_EQ(sell("Chlieb", "1.00", "A", "1", "1.0001"), Refusal::tooManyDecimals);
    EXPECT_EQ(sell("Chlieb", "1.00", "A", "1.0001", "1.00"), Refusal::tooManyDecimals);
    EXPECT_EQ(sell("Chlieb", "1,00", "A", "1", "1.00"), Refusal::badNumber);
    EXPECT_EQ(sell("Chlieb", "10000000.00"), Refusal::valueOutOfRange);
}

TEST_F(PrinterItems, DoNotMakeAReceiptThatNoPaymentHasRoomFor)
{
    ASSERT_EQ(sell("Dom", "9999999.99"), Refusal::none);
    EXPECT_EQ(sell("Chlieb", "0.01", "A"), Refusal::valueOutOfRange);
    EXPECT_EQ(sell("Chlieb", "0.01", "B"), Refusal::valueOutOfRange);
    EXPECT_EQ(total(), 999'999'999);
    ASSERT_EQ(returned("9999999.99", "B"), Refusal::none);
    EXPECT_EQ(sell("Chlieb", "0.01", "A"),
              Refusal::valueOutOfRange); // the total has room, the letter has none
    EXPECT_EQ(returned("0.01", "B"), Refusal::valueOutOfRange);
}

TEST_F(PrinterItems, AreVoidedWhenAllOfTheLineFits)
{
    ASSERT_EQ(sell("Rozok", "3.20", "A", "8.000", "0.40"), Refusal::none);
    ASSERT_EQ(sell("Chlieb", "2.00", "B"), Refusal::none);
    EXPECT_EQ(voided("Rozky", "3.20", "A", "8.000", "0.40"), Refusal::nothingToVoid);
    EXPECT_EQ(voided("Rozok", "3.21", "A", "8.000", "0.40"), Refusal::nothingToVoid);
    EXPECT_EQ(voided("Rozok", "3.20", "B", "8.000", "0.40"), Refusal::nothingToVoid);
    EXPECT_EQ(voided("Rozok", "3.20", "A", "8.001", "0.40"), Refusal::nothingToVoid);
    EXPECT_EQ(voided("Rozok", "3.20", "A", "8.000", "0.41"), Refusal::nothingToVoid);
    ASSERT_EQ(voided("Rozok", "3.20", "A", "8.000", "0.40"), Refusal::none);
    EXPECT_EQ(total(), 200);
    EXPECT_EQ(under('A'), 0);
    EXPECT_EQ(lastLine().kind, Line::Kind::itemVoid);
    EXPECT_EQ(lastLine().sum, -320);
    EXPECT_EQ(voided("Rozok", "3.20", "A", "8.000", "0.40"), Refusal::nothingToVoid); // only once
}

TEST_F(PrinterItems, ThatAreEqualAreVoidedOneByOne)
{
    ASSERT_EQ(sell("Chlieb", "2.00"), Refusal::none);
    ASSERT_EQ(sell("Chlieb", "2.00"), Refusal::none);
    ASSERT_EQ(voided("Chlieb", "2.00"), Refusal::none);
    EXPECT_TRUE(receipt().lines[4].isVoided); // behind heading, number, rule and the first one
    EXPECT_FALSE(receipt().lines[3].isVoided);
    ASSERT_EQ(voided("Chlieb", "2.00"), Refusal::none);
    EXPECT_EQ(voided("Chlieb", "2.00"), Refusal::nothingToVoid);
    EXPECT_EQ(total(), 0);
}

TEST_F(PrinterItems, TakeTheirDiscountsWithThem)
{
    ASSERT_EQ(sell("Chlieb", "5.00"), Refusal::none);
    ASSERT_EQ(sell("Syr", "10.00"), Refusal::none);
    ASSERT_EQ(discounted("1.00"), Refusal::none);
    ASSERT_EQ(discounted("0.50"), Refusal::none);
    ASSERT_EQ(send(Command::subTotalDiscount, {"0", "", "0", "2.00", "A"}), Refusal::none);
    ASSERT_EQ(total(), 1150);
    ASSERT_EQ(voided("Syr", "10.00"), Refusal::none);
    EXPECT_EQ(total(), 300); // 5.00 less the discount on the subtotal, which stays
}

TEST_F(PrinterItems, TakeTheirDiscountsWithThemAlsoWhenPowerWasLostBetween)
{
    ASSERT_EQ(sell("Chlieb", "5.00"), Refusal::none);
    Draft restart(state, now);
    restart.printInReceipt({.kind = Line::Kind::powerLost});
    state = restart.next;
    ASSERT_EQ(discounted("1.00"), Refusal::none);
    EXPECT_EQ(total(), 400);
    ASSERT_EQ(voided("Chlieb", "5.00"), Refusal::none);
    EXPECT_EQ(total(), 0);
}

TEST_F(PrinterItems, AreNotVoidedWhenTheirSumIsUsedUp)
{
    ASSERT_EQ(sell("Chlieb", "5.00"), Refusal::none);
    ASSERT_EQ(sell("Syr", "5.00"), Refusal::none);
    ASSERT_EQ(negative("6.00"), Refusal::none);
    EXPECT_EQ(voided("Syr", "5.00"), Refusal::vatBelowZero);
    EXPECT_EQ(total(), 400);
}

// A return does not count against the void: without the bread the receipt would be legal as well.
TEST_F(PrinterItems, AreVoidedBesideAReturn)
{
    ASSERT_EQ(sell("Chlieb", "5.00"), Refusal::none);
    ASSERT_EQ(returned("20.00"), Refusal::none);
    ASSERT_EQ(voided("Chlieb", "5.00"), Refusal::none);
    EXPECT_EQ(total(), -2000);
}

TEST_F(PrinterItems, AreReturnedWithTheNumberOfTheirReceipt)
{
    ASSERT_EQ(send(Command::itemReturn, {"0", "Fazula", "2.00", "A", "2", "1.00", "ks ", "17"}),
              Refusal::none);
    EXPECT_EQ(total(), -200);
    EXPECT_EQ(under('A'), -200);
    EXPECT_EQ(lastLine().sum, -200);
    EXPECT_EQ(lastLine().right, "17");
    EXPECT_EQ(send(Command::itemReturn, {"0", "Fazula", "2.00", "A", "2", "1.00", "ks ", ""}),
              Refusal::badText);
    EXPECT_EQ(send(Command::itemReturn, {"0", "Fazula", "-2.00", "A", "2", "1.00", "ks ", "17"}),
              Refusal::wrongSign);
    EXPECT_EQ(send(Command::itemReturn, {"0", "Fazula", "2.00", "E", "2", "1.00", "ks ", "17"}),
              Refusal::vatNotSet);
    EXPECT_EQ(send(Command::itemReturn, {"0", "Fazula", "2.02", "A", "2", "1.00", "ks ", "17"}),
              Refusal::wrongTotal);
}

TEST_F(PrinterItems, ThatAreNegativeTakeNoMoreThanTheirLetterHas)
{
    EXPECT_EQ(negative("0.01"), Refusal::vatBelowZero);
    ASSERT_EQ(sell("Chlieb", "5.00", "A"), Refusal::none);
    ASSERT_EQ(sell("Chlieb", "5.00", "B"), Refusal::none);
    EXPECT_EQ(negative("5.01", "A"), Refusal::vatBelowZero);
    EXPECT_EQ(negative("-1.00", "A"), Refusal::wrongSign);
    ASSERT_EQ(negative("5.00", "A"), Refusal::none);
    EXPECT_EQ(total(), 500);
    EXPECT_EQ(under('A'), 0);
    EXPECT_EQ(lastLine().sum, -500);
}

// 10.00 under A, 12.00 come back under B: the letter A would have room, the total has none.
TEST_F(PrinterItems, ThatAreNegativeDoNotMakeTheTotalNegative)
{
    ASSERT_EQ(sell("Chlieb", "10.00", "A"), Refusal::none);
    ASSERT_EQ(returned("9.00", "B"), Refusal::none);
    EXPECT_EQ(negative("1.01", "A"), Refusal::totalWouldBeNegative);
    ASSERT_EQ(negative("1.00", "A"), Refusal::none);
    EXPECT_EQ(total(), 0);
    ASSERT_EQ(returned("3.00", "B"), Refusal::none); // only a return may do that
    EXPECT_EQ(total(), -300);
}

TEST_F(PrinterItems, ThatAreReturnedOrNegativeAreNotVoided)
{
    ASSERT_EQ(sell("Chlieb", "5.00"), Refusal::none);
    ASSERT_EQ(negative("1.00"), Refusal::none);
    ASSERT_EQ(returned("1.00"), Refusal::none);
    EXPECT_EQ(voided("Zlava", "1.00"), Refusal::nothingToVoid);
    EXPECT_EQ(voided("Zla vec", "1.00"), Refusal::nothingToVoid);
}

TEST_F(PrinterItems, NeedAnOpenReceipt)
{
    ASSERT_EQ(send(Command::destroyParagon, {"0", ""}), Refusal::none);
    for (const Command command :
         {Command::itemSale, Command::itemVoid, Command::itemReturn, Command::itemNegative}) {
        EXPECT_EQ(item(command, "Chlieb", "1.00"), Refusal::noReceipt);
    }
}

} // namespace
} // namespace virtual_printer
