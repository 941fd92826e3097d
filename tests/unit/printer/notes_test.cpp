// What a receipt carries beside its lines.
#include "tests/unit/printer/deciding_printer.h"

#include <gtest/gtest.h>

namespace virtual_printer {
namespace {

class PrinterNotes : public testing::Test, protected DecidingPrinter
{
protected:
    void expectNote(const std::string& title, const std::string& value)
    {
        EXPECT_EQ(lastLine().kind, Line::Kind::note);
        EXPECT_EQ(lastLine().text, title);
        EXPECT_EQ(lastLine().right, value);
    }
};

TEST_F(PrinterNotes, AreLinesOfTheReceipt)
{
    ASSERT_EQ(begin(), Refusal::none);
    ASSERT_EQ(send(Command::setClientID, {"SK2020", "2"}), Refusal::none);
    expectNote("Client", "SK2020");
    ASSERT_EQ(send(Command::setSellerID, {"77", "B"}), Refusal::none);
    expectNote("Seller", "77");
    ASSERT_EQ(send(Command::setInvoiceNumber, {"F-1"}), Refusal::none);
    expectNote("Invoice", "F-1");
    ASSERT_EQ(send(Command::setTransactionID, {"T-1"}), Refusal::none);
    expectNote("Transaction", "T-1");
    ASSERT_EQ(send(Command::popis0DPH, {"3"}), Refusal::none);
    expectNote("Without VAT, reason", "3");
    ASSERT_EQ(send(Command::opravaDokladu, {"-10"}), Refusal::none);
    expectNote("Correction of error", "-10");
    EXPECT_EQ(receipt().invoice, "F-1");
    EXPECT_EQ(receipt().transaction, "T-1");
    EXPECT_EQ(total(), 0);
}

TEST_F(PrinterNotes, ThatAreSetTwiceArePrintedTwiceAndTheLastOneIsLookedUp)
{
    ASSERT_EQ(begin(), Refusal::none);
    const std::size_t lines = receipt().lines.size();
    for (const std::string number : {"1", "2"}) {
        ASSERT_EQ(send(Command::setInvoiceNumber, {"F-" + number}), Refusal::none);
        ASSERT_EQ(send(Command::setTransactionID, {"T-" + number}), Refusal::none);
    }
    EXPECT_EQ(receipt().lines.size(), lines + 4);
    EXPECT_EQ(receipt().invoice, "F-2");
    EXPECT_EQ(receipt().transaction, "T-2");
}

TEST_F(PrinterNotes, AreNotEmptyAndOfAKnownType)
{
    ASSERT_EQ(begin(), Refusal::none);
    EXPECT_EQ(send(Command::setClientID, {"", "2"}), Refusal::badText);
    EXPECT_EQ(send(Command::setClientID, {"SK2020", "10"}), Refusal::valueOutOfRange);
    EXPECT_EQ(send(Command::setClientID, {"SK2020", "-1"}), Refusal::valueOutOfRange);
    EXPECT_EQ(send(Command::setSellerID, {"", "B"}), Refusal::badText);
    EXPECT_EQ(send(Command::setSellerID, {"77", "b"}), Refusal::valueOutOfRange);
    EXPECT_EQ(send(Command::setInvoiceNumber, {" "}), Refusal::badText);
    EXPECT_EQ(send(Command::setTransactionID, {""}), Refusal::badText);
    EXPECT_EQ(send(Command::popis0DPH, {" "}), Refusal::valueOutOfRange);
    EXPECT_EQ(send(Command::opravaDokladu, {""}), Refusal::badText);
    EXPECT_EQ(receipt().lines.size(), 3U); // heading, number and rule
}

TEST_F(PrinterNotes, NeedAReceipt)
{
    EXPECT_EQ(send(Command::setClientID, {"SK2020", "2"}), Refusal::noReceipt);
    EXPECT_EQ(send(Command::setInvoiceNumber, {"F-1"}), Refusal::noReceipt);
}

TEST_F(PrinterNotes, TheV48ValueIsSetBetweenDaysWithThePassword)
{
    EXPECT_EQ(send(Command::setV48, {"0000", "A"}), Refusal::onlyBetweenDays);
    Standing closed = standing();
    closed.dayIsOpen = false;
    state.standing = std::make_shared<const Standing>(closed);
    EXPECT_EQ(send(Command::setV48, {"9999", "A"}), Refusal::wrongPassword);
    EXPECT_EQ(send(Command::setV48, {"0000", "?"}), Refusal::valueOutOfRange);
    ASSERT_EQ(send(Command::setV48, {"0000", "A"}), Refusal::none);
    EXPECT_EQ(state.settings->others.at("V48"), "A");
}

TEST_F(PrinterNotes, TheFreeIdentifierIsKeptAndPrintedWhenWanted)
{
    EXPECT_EQ(send(Command::freeID, {"2", "X"}), Refusal::valueOutOfRange);
    ASSERT_EQ(send(Command::freeID, {"0", "X"}), Refusal::none);
    EXPECT_TRUE(shown.empty());
    EXPECT_EQ(state.settings->others.at("Free ID"), "X");
    ASSERT_EQ(send(Command::freeID, {"0", ""}), Refusal::none);
    EXPECT_EQ(state.settings->others.at("Free ID"), "");
    EXPECT_EQ(send(Command::freeID, {"1", ""}), Refusal::badText);
    ASSERT_EQ(send(Command::freeID, {"1", "Y"}), Refusal::none);
    EXPECT_EQ(shown.size(), 1U);
    setHardware(true, false);
    EXPECT_EQ(send(Command::freeID, {"1", "Z"}), Refusal::outOfPaper);
    EXPECT_EQ(state.settings->others.at("Free ID"), "Y");
    setHardware(false, false);
    ASSERT_EQ(begin(), Refusal::none);
    ASSERT_EQ(send(Command::freeID, {"1", "Z"}), Refusal::none);
    expectNote("ID", "Z");
}

TEST_F(PrinterNotes, BarCodesAreOnTheReceiptOrOnThePaper)
{
    EXPECT_EQ(send(Command::printBC, {"-7", "4006381333931"}), Refusal::badCode);
    EXPECT_EQ(send(Command::printBC, {"0", "4006381333930"}), Refusal::badCode); // its check digit is 1
    setHardware(false, true);
    EXPECT_EQ(send(Command::printBC, {"0", "4006381333931"}), Refusal::coverIsOpen);
    setHardware(false, false);
    ASSERT_EQ(send(Command::printBC, {"0", "4006381333931"}), Refusal::none);
    ASSERT_EQ(shown.size(), 1U);
    ASSERT_EQ(begin(), Refusal::none);
    ASSERT_EQ(send(Command::printBC, {"0", "4006381333931"}), Refusal::none);
    EXPECT_EQ(lastLine().kind, Line::Kind::barCode);
    EXPECT_EQ(lastLine().text, "4006381333931");
    EXPECT_EQ(lastLine().number, 0);
}

} // namespace
} // namespace virtual_printer
