// The table of VAT rates.
#include "tests/unit/printer/situations.h"

#include <gtest/gtest.h>

namespace virtual_printer {
namespace {

class PrinterVat : public testing::Test, protected DecidingPrinter
{
protected:
    PrinterVat() : DecidingPrinter(printerIn(Situation::noDay)) {}

    Refusal setOne(const std::string& letter, const std::string& percent, const std::string& constant = "",
                   const std::string& password = "0000")
    {
        return send(Command::setVAT, {password, letter, percent, constant});
    }
    [[nodiscard]] const std::optional<VatRate>& rate(char letter) const
    {
        return state.settings->vat.at(static_cast<std::size_t>(letter - 'A'));
    }
};

TEST_F(PrinterVat, IsSetLetterByLetter)
{
    ASSERT_FALSE(rate('H').has_value());
    EXPECT_EQ(setOne("H", "99", "16.6667"), Refusal::none);
    EXPECT_EQ(rate('H'), (VatRate{99, 16.6667}));
    EXPECT_EQ(setOne("A", "0"), Refusal::none);
    EXPECT_EQ(rate('A'), (VatRate{0, std::nullopt}));
    EXPECT_EQ(setOne("A", "1", "1e+03"), Refusal::badNumber) << "the field's kind has no exponent";
}

TEST_F(PrinterVat, HasLettersFromAToHAndWholePercentsBelowAHundred)
{
    EXPECT_EQ(setOne("I", "10"), Refusal::unknownVat);
    EXPECT_EQ(setOne("a", "10"), Refusal::unknownVat);
    EXPECT_EQ(setOne("@", "10"), Refusal::unknownVat);
    EXPECT_EQ(setOne("A", "100"), Refusal::valueOutOfRange);
    EXPECT_EQ(setOne("A", "-1"), Refusal::valueOutOfRange);
    EXPECT_EQ(setOne("A", "19.5"), Refusal::tooManyDecimals);
    EXPECT_EQ(setOne("A", "10", "-0.1"), Refusal::valueOutOfRange);
    EXPECT_EQ(setOne("A", "10", "10000"), Refusal::valueOutOfRange);
    EXPECT_EQ(setOne("A", "10", "9999"), Refusal::none);
    EXPECT_EQ(setOne("A", "10", "", "1111"), Refusal::wrongPassword);
}

TEST_F(PrinterVat, IsReplacedWholeByFiveRates)
{
    ASSERT_EQ(setOne("H", "7"), Refusal::none);
    ASSERT_EQ(send(Command::setAllVats, {"0000", "20", "1667", "10", "-1", "0", "0", "-1", "0", "-5", "0"}),
              Refusal::none);
    EXPECT_EQ(rate('A'), (VatRate{20, 1667.0}));
    EXPECT_EQ(rate('B'), (VatRate{10, std::nullopt}));
    EXPECT_EQ(rate('C'), (VatRate{0, 0.0}));
    EXPECT_FALSE(rate('D').has_value());
    EXPECT_FALSE(rate('E').has_value());
    EXPECT_FALSE(rate('H').has_value());
}

TEST_F(PrinterVat, IsReplacedWholeByEightRatesWhoseDateIsKept)
{
    std::vector<std::string> fields = {"0000"};
    for (int letter = 0; letter < 8; ++letter) {
        fields.push_back(std::to_string(10 + letter));
        fields.emplace_back("0");
    }
    fields.emplace_back("2026-07-01");
    ASSERT_EQ(send(Command::setAllVats, fields), Refusal::none);
    EXPECT_EQ(rate('A')->percent, 10);
    EXPECT_EQ(rate('H')->percent, 17) << "at once, whatever the date";
    EXPECT_EQ(state.settings->others.at("VAT rates from"), "2026-07-01");
    fields.back() = "1.7.";
    EXPECT_EQ(send(Command::setAllVats, fields), Refusal::badDate);
    fields.back() = "";
    EXPECT_EQ(send(Command::setAllVats, fields), Refusal::none);
    fields[1] = "100";
    EXPECT_EQ(send(Command::setAllVats, fields), Refusal::valueOutOfRange);
    fields[1] = "20";
    fields[2] = "10000";
    EXPECT_EQ(send(Command::setAllVats, fields), Refusal::valueOutOfRange);
    fields[0] = "9999";
    EXPECT_EQ(send(Command::setAllVats, fields), Refusal::wrongPassword);
    EXPECT_EQ(rate('A')->percent, 10) << "a refused table changes nothing";
}

TEST_F(PrinterVat, StaysAsItIsWhileADayIsOpen)
{
    ASSERT_EQ(send(Command::sellingDayBegin, {"0"}), Refusal::none);
    EXPECT_EQ(setOne("A", "20"), Refusal::onlyBetweenDays);
}

TEST_F(PrinterVat, LetsALetterBeSoldUnderOnceItIsSet)
{
    ASSERT_EQ(setOne("E", "10"), Refusal::none);
    ASSERT_EQ(send(Command::sellingDayBegin, {"0"}), Refusal::none);
    ASSERT_EQ(begin(), Refusal::none);
    EXPECT_EQ(sell("Kniha", "1.00", "E"), Refusal::none);
    EXPECT_EQ(sell("Kniha", "1.00", "F"), Refusal::vatNotSet);
}

} // namespace
} // namespace virtual_printer
