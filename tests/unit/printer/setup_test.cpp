// Payment types, passwords, parameters and the forms of display and paper.
#include "tests/unit/printer/situations.h"

#include <gtest/gtest.h>

namespace virtual_printer {
namespace {

class PrinterSetup : public testing::Test, protected DecidingPrinter
{
protected:
    [[nodiscard]] const Settings& settings() const { return *state.settings; }
    [[nodiscard]] std::string other(const std::string& title) const
    {
        const auto found = settings().others.find(title);
        return found == settings().others.end() ? "(not set)" : found->second;
    }
};

TEST_F(PrinterSetup, MakesNamedPaymentTypes)
{
    const auto set = [&](const std::string& name, const std::string& number, const std::string& minimum,
                         const std::string& overPay) {
        return send(Command::setPaymentType2, {name, number, minimum, overPay});
    };
    EXPECT_EQ(set("Sek", "20", "5.00", "0"), Refusal::none);
    EXPECT_EQ(settings().payments.at(20), (PaymentType{"Sek", 500, true}));
    EXPECT_EQ(set("Sek", "20", "0", "1"), Refusal::none);
    EXPECT_EQ(settings().payments.at(20), (PaymentType{"Sek", 0, false}));
    EXPECT_EQ(set("Sek", "0", "0", "1"), Refusal::valueOutOfRange);
    EXPECT_EQ(set("Sek", "21", "0", "1"), Refusal::valueOutOfRange);
    EXPECT_EQ(set("", "6", "0", "1"), Refusal::badText);
    EXPECT_EQ(set("ááááááááááááááááááááá", "6", "0", "1"), Refusal::badText) << "21 characters";
    EXPECT_EQ(set("áááááááááááááááááááá", "6", "0", "1"), Refusal::none) << "20 characters";
    EXPECT_EQ(set("Sek", "6", "-0.01", "1"), Refusal::wrongSign);
    EXPECT_EQ(set("Sek", "6", "0.001", "1"), Refusal::tooManyDecimals);
    EXPECT_EQ(set("Sek", "6", "0", "2"), Refusal::valueOutOfRange);
}

TEST_F(PrinterSetup, ChangesOnlyPaymentTypesThatThereAre)
{
    EXPECT_EQ(send(Command::setPaymentType, {"2", "1.50", "0"}), Refusal::none);
    EXPECT_EQ(settings().payments.at(2), (PaymentType{"Karta", 150, true}));
    EXPECT_EQ(send(Command::setPaymentType, {"7", "1.50", "0"}), Refusal::unknownPayment);
    EXPECT_EQ(send(Command::setPaymentType, {"21", "1.50", "0"}), Refusal::valueOutOfRange);
    EXPECT_EQ(send(Command::setPaymentType, {"2", "-1", "0"}), Refusal::wrongSign);
}

TEST_F(PrinterSetup, ChangesThePasswordWhoseOldOneIsGiven)
{
    const auto set = [&](const std::string& from, const std::string& to) {
        return send(Command::setPassword, {from, to});
    };
    EXPECT_EQ(set("1234", "5678"), Refusal::wrongPassword);
    EXPECT_EQ(set("", "5678"), Refusal::wrongPassword);
    EXPECT_EQ(set("0000", "567"), Refusal::badText);
    EXPECT_EQ(set("0000", "12345678901234567"), Refusal::badText);
    EXPECT_EQ(set("0000", "5678"), Refusal::none);
    EXPECT_EQ(set("9999", "service"), Refusal::none);
    EXPECT_EQ(settings().password, "5678");
    EXPECT_EQ(settings().servicePassword, "service");
    EXPECT_EQ(set("0000", "1111"), Refusal::wrongPassword);
    EXPECT_EQ(send(Command::setHeader, {"5678", "1", "x"}), Refusal::none);
    EXPECT_EQ(send(Command::setHeader, {"0000", "1", "x"}), Refusal::wrongPassword);
    EXPECT_EQ(send(Command::setDeltaSI, {"service", "1"}), Refusal::none);
}

// Every command that carries a password, by its rule in the table, with the wrong one.
TEST_F(PrinterSetup, ChecksThePasswordOfEveryCommandThatHasOne)
{
    int checked = 0;
    for (const CommandRule& rule : commandRules()) {
        std::vector<std::string> fields;
        bool hasPassword = false;
        for (const Field& field : rule.fields) {
            hasPassword |= field.kind == FieldKind::secret;
            switch (field.kind) {
            case FieldKind::secret:
                fields.emplace_back(field.name == "servicePassword" ? "0000" : "9999 ");
                break;
            case FieldKind::letter:
                fields.emplace_back("A");
                break;
            case FieldKind::dateOrEmpty:
            case FieldKind::text:
            case FieldKind::numberOrEmpty:
                fields.emplace_back();
                break;
            default:
                fields.emplace_back("1");
            }
        }
        if (!hasPassword) {
            continue;
        }
        for (const auto& [situation, name] : situations) {
            if (rule.legal.contain(situation)) {
                DecidingPrinter printer = printerIn(situation);
                EXPECT_EQ(printer.send(rule.command, fields), Refusal::wrongPassword)
                    << rule.name << " in " << name;
            }
        }
        ++checked;
    }
    // setV48, setDispF, setPParameter, setDeltaSI, setVAT, setAllVats, setAllVats2, setPassword,
    // setPrinterType, setParameter, setHeader, setAutKey, initFP, initFM, initELJ, fiscalization,
    // defiscalizationFM, inspectionEnabled, inspectionE1, swReset, testTelvoFM, restoreBCKP, getBCKP,
    // getRAMMP, printYearlyClosure
    EXPECT_EQ(checked, 25);
}

TEST_F(PrinterSetup, KeepsParametersByNumber)
{
    for (const Command command : {Command::setParameter, Command::setPParameter}) {
        EXPECT_EQ(send(command, {"0000", "99", "9999"}), Refusal::none);
        EXPECT_EQ(send(command, {"0000", "0", "0"}), Refusal::none);
        EXPECT_EQ(send(command, {"0000", "100", "0"}), Refusal::unknownSetting);
        EXPECT_EQ(send(command, {"0000", "-1", "0"}), Refusal::unknownSetting);
        EXPECT_EQ(send(command, {"0000", "1", "10000"}), Refusal::valueOutOfRange);
        EXPECT_EQ(send(command, {"0000", "1", "-1"}), Refusal::valueOutOfRange);
    }
    EXPECT_EQ(settings().parameters, (std::map<int, int>{{0, 0}, {99, 9999}}));
    EXPECT_EQ(settings().printerParameters, (std::map<int, int>{{0, 0}, {99, 9999}}));
}

TEST_F(PrinterSetup, KeepsTheRateOfTheEuro)
{
    EXPECT_EQ(send(Command::setEuroExchangeRate, {"30.1260"}), Refusal::none);
    EXPECT_EQ(settings().euroExchangeRate, 301260);
    EXPECT_EQ(send(Command::setEuroExchangeRate, {"+30.1260"}), Refusal::wrongSign);
    EXPECT_EQ(send(Command::setEuroExchangeRate, {"-1"}), Refusal::valueOutOfRange);
    EXPECT_EQ(settings().euroExchangeRate, 301260);
    EXPECT_EQ(send(Command::setEuroExchangeRate, {"0.0000"}), Refusal::none);
    EXPECT_EQ(settings().euroExchangeRate, 0);
}

TEST_F(PrinterSetup, HasFormsForCodes)
{
    const auto barCode = [&](std::vector<std::string> fields) {
        return send(Command::setBCparm, std::move(fields));
    };
    EXPECT_EQ(barCode({"3", "1", "255", "6"}), Refusal::none);
    EXPECT_EQ(settings().barCode, (CodeForm{3, 1, 255, 6}));
    EXPECT_EQ(barCode({"4", "1", "255", "6"}), Refusal::valueOutOfRange);
    EXPECT_EQ(barCode({"0", "2", "255", "6"}), Refusal::valueOutOfRange);
    EXPECT_EQ(barCode({"0", "0", "0", "6"}), Refusal::valueOutOfRange);
    EXPECT_EQ(barCode({"0", "0", "256", "6"}), Refusal::valueOutOfRange);
    EXPECT_EQ(barCode({"0", "0", "1", "0"}), Refusal::valueOutOfRange);
    EXPECT_EQ(barCode({"0", "0", "1", "7"}), Refusal::valueOutOfRange);
    const auto qrCode = [&](std::vector<std::string> fields) {
        return send(Command::setQRparm, std::move(fields));
    };
    EXPECT_EQ(qrCode({"1", "16", "3", "255", "1"}), Refusal::none);
    EXPECT_EQ(settings().qrCode, (QrForm{1, 16, 3, 255, 1}));
    EXPECT_EQ(qrCode({"0", "4", "1", "0", "0"}), Refusal::valueOutOfRange);
    EXPECT_EQ(qrCode({"3", "4", "1", "0", "0"}), Refusal::valueOutOfRange);
    EXPECT_EQ(qrCode({"2", "17", "1", "0", "0"}), Refusal::valueOutOfRange);
    EXPECT_EQ(qrCode({"2", "0", "1", "0", "0"}), Refusal::valueOutOfRange);
    EXPECT_EQ(qrCode({"2", "4", "1", "-1", "0"}), Refusal::valueOutOfRange);
    EXPECT_EQ(qrCode({"2", "4", "4", "0", "0"}), Refusal::valueOutOfRange);
    EXPECT_EQ(qrCode({"2", "4", "1", "256", "0"}), Refusal::valueOutOfRange);
    EXPECT_EQ(qrCode({"2", "4", "1", "0", "2"}), Refusal::valueOutOfRange);
}

TEST_F(PrinterSetup, PrintsInThirtyTwoToFortyEightColumns)
{
    EXPECT_EQ(send(Command::setPRNcolumns, {"31"}), Refusal::valueOutOfRange);
    EXPECT_EQ(send(Command::setPRNcolumns, {"49"}), Refusal::valueOutOfRange);
    EXPECT_EQ(send(Command::setPRNcolumns, {"32"}), Refusal::none);
    EXPECT_EQ(send(Command::setPRNcolumns, {"48"}), Refusal::none);
    EXPECT_EQ(settings().columns, 48);
}

TEST_F(PrinterSetup, HasTheUsualSpeeds)
{
    for (const std::string speed : {"9600", "19200", "38400", "57600", "115200"}) {
        EXPECT_EQ(send(Command::setPRNBd, {speed}), Refusal::none) << speed;
        EXPECT_EQ(other("Printer's speed"), speed);
    }
    EXPECT_EQ(send(Command::setPRNBd, {"57601"}), Refusal::valueOutOfRange);
}

TEST_F(PrinterSetup, KeepsWhatItOnlyKeeps)
{
    EXPECT_EQ(send(Command::setPrinterType, {"9999", "9", "0"}), Refusal::none);
    EXPECT_EQ(other("Printer type"), "9");
    EXPECT_EQ(other("Print format"), "0");
    EXPECT_EQ(send(Command::setPrinterType, {"9999", "10", "0"}), Refusal::valueOutOfRange);
    EXPECT_EQ(send(Command::setPrinterType, {"9999", "0", "-1"}), Refusal::valueOutOfRange);
    EXPECT_EQ(send(Command::setDeltaSI, {"9999", "-9999"}), Refusal::none);
    EXPECT_EQ(other("Delta"), "-9999");
    EXPECT_EQ(send(Command::setDeltaSI, {"9999", "10000"}), Refusal::valueOutOfRange);
    EXPECT_EQ(send(Command::setDeltaSI, {"9999", "-10000"}), Refusal::valueOutOfRange);
    EXPECT_EQ(send(Command::setEscapeSequence, {"\x1B@"}), Refusal::none);
    EXPECT_EQ(other("Escape sequence"), "\x1B@");
    EXPECT_EQ(send(Command::setEscapeSequence, {std::string(81, 'x')}), Refusal::badText);
    EXPECT_EQ(send(Command::setDispF, {"0000", "9", "0", "abc"}), Refusal::none);
    EXPECT_EQ(other("Display format"), "9 0 abc");
    EXPECT_EQ(send(Command::setDispF, {"0000", "10", "0", ""}), Refusal::valueOutOfRange);
    EXPECT_EQ(send(Command::setDispF, {"0000", "0", "-1", ""}), Refusal::valueOutOfRange);
    EXPECT_EQ(send(Command::setDispF, {"0000", "0", "0", std::string(81, 'x')}), Refusal::badText);
}

TEST_F(PrinterSetup, PrintsNoSetting)
{
    ASSERT_EQ(send(Command::setHeader, {"0000", "1", "Potraviny"}), Refusal::none);
    EXPECT_TRUE(shown.empty());
}

TEST(PrinterSettings, AreReadyToSellAtFirst)
{
    const Settings settings = standardSettings();
    EXPECT_EQ(settings.password, "0000");
    EXPECT_EQ(settings.servicePassword, "9999");
    EXPECT_EQ(settings.vat[0], (VatRate{23, std::nullopt}));
    EXPECT_EQ(settings.vat[1], (VatRate{19, std::nullopt}));
    EXPECT_EQ(settings.vat[2], (VatRate{5, std::nullopt}));
    EXPECT_EQ(settings.vat[3], (VatRate{0, std::nullopt}));
    for (std::size_t letter = 4; letter < vatLetters; ++letter) {
        EXPECT_FALSE(settings.vat.at(letter).has_value());
    }
    EXPECT_EQ(settings.payments, (std::map<int, PaymentType>{{1, {"Hotovost", 1, true}},
                                                             {2, {"Karta", 1, false}},
                                                             {3, {"Stravné lístky", 1, false}},
                                                             {4, {"Poukaz", 1, false}},
                                                             {5, {"Cudzia mena", 1, true}}}));
}

TEST(PrinterSettings, AreEmptyFromTheFactory)
{
    const Settings settings = factorySettings();
    for (const auto& rate : settings.vat) {
        EXPECT_FALSE(rate.has_value());
    }
    EXPECT_EQ(settings.payments, (std::map<int, PaymentType>{{1, {"Hotovost", 1, true}}}));
}

} // namespace
} // namespace virtual_printer
