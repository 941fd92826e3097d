// restoreBCKP brings back the settings and pictures of the last daily closure, and nothing else.
#include "tests/unit/printer/asked_printer.h"

namespace virtual_printer {
namespace {

class PrinterRestore : public AskedPrinter
{
};

TEST_F(PrinterRestore, BringsSettingsAndPicturesBackAndLeavesTheRest)
{
    settings.columns = 48;
    pictures[1] = {.width = 1, .height = 1, .dots = {true}};
    standing.closures = 1;
    standing.receipts = 7;
    keepDay(1, "2026-01-01", 1250);
    ASSERT_EQ(refusalOf("setPRNcolumns", {"32"}), Refusal::none);
    ASSERT_EQ(asked().state().settings->columns, 32);

    EXPECT_EQ(refusalOf("restoreBCKP", {"0000"}), Refusal::none);
    EXPECT_EQ(*asked().state().settings, settings);
    EXPECT_EQ(*asked().state().pictures, pictures);
    EXPECT_EQ(*asked().state().standing, standing);
    EXPECT_EQ(*asked().memory().load()->settings, settings) << "also after a restart";
}

// A password that was changed because somebody knew it stays changed.
TEST_F(PrinterRestore, LeavesThePasswordsAsTheyAre)
{
    standing.closures = 1;
    keepDay(1, "2026-01-01", 1250);
    ASSERT_EQ(refusalOf("setPassword", {"0000", "1234"}), Refusal::none);
    ASSERT_EQ(refusalOf("setPassword", {"9999", "56789"}), Refusal::none);
    EXPECT_EQ(refusalOf("restoreBCKP", {"0000"}), Refusal::wrongPassword);
    ASSERT_EQ(refusalOf("restoreBCKP", {"1234"}), Refusal::none);
    EXPECT_EQ(asked().state().settings->password, "1234");
    EXPECT_EQ(asked().state().settings->servicePassword, "56789");
    EXPECT_EQ(asked().memory().backup()->settings->password, "") << "it is not in the backup at all";
    EXPECT_EQ(asked().memory().backup()->settings->servicePassword, "");
}

TEST_F(PrinterRestore, IsRefusedBeforeTheFirstClosure)
{
    EXPECT_EQ(refusalOf("restoreBCKP", {"0000"}), Refusal::nothingToRestore);
}

} // namespace
} // namespace virtual_printer
