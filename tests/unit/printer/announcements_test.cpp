// Texts on paper and display that belong to no sale.
#include "tests/unit/printer/situations.h"

#include <gtest/gtest.h>

namespace virtual_printer {
namespace {

class PrinterAnnouncements : public testing::Test, protected DecidingPrinter
{
protected:
    [[nodiscard]] const Line& printed(std::size_t index) const
    {
        return std::get<Printed>(shown.at(index)).line;
    }
};

TEST_F(PrinterAnnouncements, ArePrintedAndBelongToNoDocument)
{
    ASSERT_EQ(send(Command::printAnnouncement, {"0", "Akcia"}), Refusal::none);
    ASSERT_EQ(shown.size(), 1U);
    EXPECT_EQ(printed(0).text, "Akcia");
    EXPECT_TRUE(documents.empty());
    EXPECT_EQ(standing().documents, 0);
}

TEST_F(PrinterAnnouncements, BelongToTheReceiptThatIsOpen)
{
    ASSERT_EQ(begin(), Refusal::none);
    ASSERT_EQ(sell("Chlieb", "1.00"), Refusal::none);
    ASSERT_EQ(send(Command::printAnnouncement, {"0", "Akcia"}), Refusal::none);
    EXPECT_EQ(lastLine().text, "Akcia");
    EXPECT_EQ(total(), 100);
    EXPECT_EQ(send(Command::itemDiscount, {"0", "", "0", "0.10", "A"}), Refusal::nothingToDiscount);
    ASSERT_EQ(pay("1", "1.00", "0.50"), Refusal::none);
    EXPECT_EQ(send(Command::printAnnouncement, {"0", "Este"}), Refusal::none);
    EXPECT_EQ(lastLine().text, "Este");
}

TEST_F(PrinterAnnouncements, FillTheReceiptOnlyUpToItsLastLine)
{
    ASSERT_EQ(begin(), Refusal::none);
    Refusal refusal = Refusal::none;
    for (int i = 0; i < 501 && refusal == Refusal::none; ++i) {
        refusal = send(Command::printAnnouncement, {"0", "x"});
    }
    EXPECT_EQ(refusal, Refusal::receiptTooLong);
    EXPECT_EQ(receipt().lines.size(), 500U);
}

TEST_F(PrinterAnnouncements, SayThatTheyAreNoFiscalDocument)
{
    ASSERT_EQ(send(Command::printAnnouncementNF, {"0", "Akcia"}), Refusal::none);
    ASSERT_EQ(shown.size(), 2U);
    EXPECT_EQ(printed(0).kind, Line::Kind::notFiscal);
    EXPECT_EQ(printed(1).text, "Akcia");
    ASSERT_EQ(begin(), Refusal::none);
    EXPECT_EQ(send(Command::printAnnouncementNF, {"0", "Akcia"}), Refusal::receiptIsOpen);
}

TEST_F(PrinterAnnouncements, HaveRowsUpTo999)
{
    for (const Command command : {Command::printAnnouncement, Command::printAnnouncementNF}) {
        EXPECT_EQ(send(command, {"999", ""}), Refusal::none);
        EXPECT_EQ(send(command, {"1000", ""}), Refusal::valueOutOfRange);
        EXPECT_EQ(send(command, {"-1", ""}), Refusal::valueOutOfRange);
        EXPECT_EQ(send(command, {"0", std::string(256, 'x')}), Refusal::badText);
    }
}

TEST_F(PrinterAnnouncements, AreShownOnTheCustomersDisplay)
{
    const std::string full = "Chlieb          1.00Spolu           1.00";
    ASSERT_EQ(full.size(), 40U);
    ASSERT_EQ(send(Command::printDisplay, {"0", "\x1B@", full}), Refusal::none);
    EXPECT_EQ(state.hardware->display, full);
    EXPECT_EQ(std::get<DisplayShows>(shown.at(0)).text, full);
    EXPECT_EQ(send(Command::printDisplay, {"0", "", full + "x"}), Refusal::badText);
    EXPECT_EQ(send(Command::printDisplay, {"2", "", "x"}), Refusal::valueOutOfRange);
    EXPECT_EQ(state.hardware->display, full);
    ASSERT_EQ(send(Command::clearDisplay, {"0", ""}), Refusal::none);
    EXPECT_EQ(state.hardware->display, "");
    EXPECT_EQ(send(Command::clearDisplay, {"2", ""}), Refusal::valueOutOfRange);
}

TEST_F(PrinterAnnouncements, AreOnlyKeptForTheOperator)
{
    ASSERT_EQ(send(Command::printDisplay, {"1", "", "Vydat 4.00"}), Refusal::none);
    EXPECT_EQ(state.hardware->operatorDisplay, "Vydat 4.00");
    EXPECT_EQ(state.hardware->display, "");
    EXPECT_TRUE(shown.empty());
    ASSERT_EQ(send(Command::clearDisplay, {"1", ""}), Refusal::none);
    EXPECT_EQ(state.hardware->operatorDisplay, "");
}

TEST_F(PrinterAnnouncements, OnTheDisplayAreInNoJournal)
{
    ASSERT_EQ(begin(), Refusal::none);
    ASSERT_EQ(sell("Chlieb", "1.00"), Refusal::none);
    const Document before = receipt();
    ASSERT_EQ(send(Command::printDisplay, {"0", "", "Chlieb 1.00"}), Refusal::none);
    EXPECT_EQ(receipt(), before);
}

} // namespace
} // namespace virtual_printer
