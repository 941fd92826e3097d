// The texts in front of a receipt's lines and behind them.
#include "tests/unit/printer/deciding_printer.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace virtual_printer {
namespace {

class PrinterReceiptTexts : public testing::Test, protected DecidingPrinter
{
protected:
    Refusal header(const std::string& row, const std::string& text)
    {
        return send(Command::setHeader, {"0000", row, text});
    }
};

TEST_F(PrinterReceiptTexts, HaveTenRowsOfHeader)
{
    EXPECT_EQ(header("1", "Potraviny  "), Refusal::none);
    EXPECT_EQ(header("10", std::string(80, 'x')), Refusal::none);
    EXPECT_EQ(header("0", "x"), Refusal::valueOutOfRange);
    EXPECT_EQ(header("11", "x"), Refusal::valueOutOfRange);
    EXPECT_EQ(header("2", std::string(81, 'x')), Refusal::badText);
    EXPECT_EQ(state.settings->header,
              (std::map<int, std::string>{{1, "Potraviny"}, {10, std::string(80, 'x')}}));
    EXPECT_EQ(header("10", ""), Refusal::none);
    EXPECT_EQ(state.settings->header, (std::map<int, std::string>{{1, "Potraviny"}}));
}

TEST_F(PrinterReceiptTexts, AreOfEightyCharacters)
{
    const std::string eighty = [] {
        std::string text;
        for (int i = 0; i < 80; ++i) {
            text += "ž";
        }
        return text;
    }();
    for (const Command command :
         {Command::setAdditionalHeader, Command::setAdditionalFooter, Command::setSuperFooter}) {
        EXPECT_EQ(send(command, {eighty + "x"}), Refusal::badText);
        EXPECT_EQ(send(command, {eighty}), Refusal::none);
    }
    EXPECT_EQ(state.settings->additionalHeader, eighty);
    EXPECT_EQ(state.settings->additionalFooter, eighty);
    EXPECT_EQ(state.settings->superFooter, eighty);
    EXPECT_EQ(send(Command::setSuperFooter, {""}), Refusal::none);
    EXPECT_EQ(state.settings->superFooter, "");
}

TEST_F(PrinterReceiptTexts, AreUpToTenLinesBeforeAndAfter)
{
    for (const Command command : {Command::setPreline, Command::setPostline}) {
        for (int line = 1; line <= 10; ++line) {
            EXPECT_EQ(send(command, {std::to_string(line)}), Refusal::none);
        }
        EXPECT_EQ(send(command, {"11"}), Refusal::valueOutOfRange);
        EXPECT_EQ(send(command, {std::string(81, 'x')}), Refusal::badText);
    }
    EXPECT_EQ(state.settings->prelines.size(), 10U);
    EXPECT_EQ(state.settings->postlines.back(), "10");
    EXPECT_EQ(send(Command::setPreline, {""}), Refusal::none);
    EXPECT_TRUE(state.settings->prelines.empty());
    EXPECT_EQ(state.settings->postlines.size(), 10U);
}

TEST_F(PrinterReceiptTexts, ArePrintedInTheirOrder)
{
    ASSERT_EQ(send(Command::setPreline, {"preline"}), Refusal::none);
    ASSERT_EQ(header("2", "second"), Refusal::none);
    ASSERT_EQ(header("1", "first"), Refusal::none);
    ASSERT_EQ(send(Command::setAdditionalHeader, {"additional header"}), Refusal::none);
    ASSERT_EQ(begin(), Refusal::none);
    ASSERT_EQ(send(Command::setPostline, {"postline"}), Refusal::none);
    ASSERT_EQ(send(Command::setAdditionalFooter, {"additional footer"}), Refusal::none);
    ASSERT_EQ(send(Command::setSuperFooter, {"super footer"}), Refusal::none);
    ASSERT_EQ(sell("Chlieb", "1.00"), Refusal::none);
    ASSERT_EQ(pay("1", "1.00", "1.00"), Refusal::none);
    ASSERT_EQ(end(), Refusal::none);
    const std::vector<std::string> order = {"preline",           "first",       "second",
                                            "additional header", "Chlieb",      "postline",
                                            "additional footer", "super footer"};
    std::vector<std::string> found;
    for (const Line& line : documents.back().lines) {
        if (std::find(order.begin(), order.end(), line.text) != order.end()) {
            found.push_back(line.text);
        }
    }
    EXPECT_EQ(found, order);
}

} // namespace
} // namespace virtual_printer
