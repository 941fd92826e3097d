// The drawer outside receipts.
#include "tests/unit/printer/deciding_printer.h"

#include <gtest/gtest.h>

namespace virtual_printer {
namespace {

class PrinterDrawer : public testing::Test, protected DecidingPrinter
{
};

TEST_F(PrinterDrawer, IsFilledAndEmptied)
{
    ASSERT_EQ(drawer("0", "50.00"), Refusal::none);
    ASSERT_EQ(drawer("0", "7.00", "2"), Refusal::none);
    ASSERT_EQ(drawer("1", "20.50"), Refusal::none);
    EXPECT_EQ(standing().drawer, (ByPayment{{1, 2950}, {2, 700}}));
    EXPECT_EQ(standing().day.drawerMovements, 3);
    EXPECT_EQ(standing().day.turnover(), 0);
    ASSERT_EQ(documents.size(), 3U);
    EXPECT_EQ(documents.back().kind, Document::Kind::drawer);
    EXPECT_EQ(documents.back().total, -2050);
    EXPECT_EQ(documents.back().byPayment, (ByPayment{{1, -2050}}));
    EXPECT_TRUE(std::holds_alternative<DrawerOpens>(shown.back()));
}

TEST_F(PrinterDrawer, GivesNoMoreThanItHasOfTheType)
{
    EXPECT_EQ(drawer("1", "0.01"), Refusal::drawerTooEmpty);
    ASSERT_EQ(drawer("0", "50.00", "2"), Refusal::none);
    EXPECT_EQ(drawer("1", "0.01", "1"), Refusal::drawerTooEmpty);
    EXPECT_EQ(drawer("1", "50.01", "2"), Refusal::drawerTooEmpty);
    EXPECT_EQ(drawer("1", "50.00", "2"), Refusal::none);
}

TEST_F(PrinterDrawer, MovesPositiveAmountsOfKnownTypesInOrOut)
{
    EXPECT_EQ(drawer("2", "1.00"), Refusal::unknownOperation);
    EXPECT_EQ(drawer("-1", "1.00"), Refusal::unknownOperation);
    EXPECT_EQ(drawer("0", "1.00", "4"), Refusal::unknownPayment);
    EXPECT_EQ(drawer("0", "-1.00"), Refusal::wrongSign);
    EXPECT_EQ(drawer("0", "0.00"), Refusal::valueOutOfRange);
    EXPECT_EQ(drawer("0", "1.001"), Refusal::tooManyDecimals);
}

TEST_F(PrinterDrawer, IsMovedOnlyBetweenReceiptsAndWithPaper)
{
    setHardware(true, false);
    EXPECT_EQ(drawer("0", "1.00"), Refusal::outOfPaper);
    setHardware(false, true);
    EXPECT_EQ(drawer("0", "1.00"), Refusal::coverIsOpen);
    setHardware(false, false);
    ASSERT_EQ(begin(), Refusal::none);
    EXPECT_EQ(drawer("0", "1.00"), Refusal::receiptIsOpen);
}

} // namespace
} // namespace virtual_printer
