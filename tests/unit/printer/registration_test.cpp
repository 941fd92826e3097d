// Data of the online registration: kept, and sent to nobody.
#include "tests/unit/printer/deciding_printer.h"

#include <gtest/gtest.h>

namespace virtual_printer {
namespace {

class PrinterRegistration : public testing::Test, protected DecidingPrinter
{
protected:
    [[nodiscard]] std::string other(const std::string& title) const
    {
        const auto found = state.settings->others.find(title);
        return found == state.settings->others.end() ? "(not set)" : found->second;
    }
};

TEST_F(PrinterRegistration, TakesThreeKindsOfLocationUnderOneCode)
{
    EXPECT_EQ(send(Command::setLocation, {"0", "48.1500000000", "-17.1100000000"}), Refusal::none);
    EXPECT_EQ(other("Location"), "48.1500000000 -17.1100000000");
    EXPECT_EQ(send(Command::setLocation, {"0", "180.0000000001", "0"}), Refusal::valueOutOfRange);
    EXPECT_EQ(send(Command::setLocation, {"1", "Trnava", "Hlavna", "1", "", "91701"}), Refusal::none);
    EXPECT_EQ(other("Location"), "Trnava, Hlavna, 1, 91701");
    EXPECT_EQ(send(Command::setLocation, {"1", "", "Hlavna", "1", "", "91701"}), Refusal::badText);
    EXPECT_EQ(send(Command::setLocation, {"1", "Trnava", std::string(81, 'x'), "", "", ""}),
              Refusal::badText);
    EXPECT_EQ(send(Command::setLocation, {"2", "stanok"}), Refusal::none);
    EXPECT_EQ(other("Location"), "stanok");
    EXPECT_EQ(send(Command::setLocation, {"2", ""}), Refusal::badText);
}

TEST_F(PrinterRegistration, TellsTheLocationsApartByTheirFirstField)
{
    EXPECT_EQ(send(Command::setLocation, {"1", "48.15", "17.11"}), Refusal::unknownOperation);
    EXPECT_EQ(send(Command::setLocation, {"0", "Trnava", "", "", "", ""}), Refusal::unknownOperation);
    EXPECT_EQ(send(Command::setLocation, {"3", "stanok"}), Refusal::unknownOperation);
    EXPECT_EQ(send(Command::setLocation, {"2", "stanok", "x", "y"}), Refusal::wrongFields);
}

TEST_F(PrinterRegistration, TakesMailAddresses)
{
    EXPECT_EQ(send(Command::setEmail, {"till@example.com"}), Refusal::none);
    EXPECT_EQ(other("Mail address"), "till@example.com");
    for (const std::string wrong : {"", "till", "@example.com", "till@", "a@b@c", "a b@c"}) {
        EXPECT_EQ(send(Command::setEmail, {wrong}), Refusal::badText) << wrong;
    }
    EXPECT_EQ(send(Command::setEmail, {std::string(79, 'x') + "@y"}), Refusal::badText);
}

// Ports from 32768 on come as numbers below zero, 65536 less.
TEST_F(PrinterRegistration, ReadsThePortOfTheMailServerAsTheLibraryWritesIt)
{
    const auto set = [&](const std::string& port) {
        return send(Command::setSMTP, {"S", "mail.example.com", port, "/mail"});
    };
    EXPECT_EQ(set("587"), Refusal::none);
    EXPECT_EQ(other("Mail server"), "S mail.example.com:587 /mail");
    EXPECT_EQ(set("-1"), Refusal::none);
    EXPECT_EQ(other("Mail server"), "S mail.example.com:65535 /mail");
    EXPECT_EQ(set("-32768"), Refusal::none);
    EXPECT_EQ(other("Mail server"), "S mail.example.com:32768 /mail");
    EXPECT_EQ(set("0"), Refusal::valueOutOfRange);
    EXPECT_EQ(set("65536"), Refusal::valueOutOfRange);
    EXPECT_EQ(send(Command::setSMTP, {"?", "mail.example.com", "25", ""}), Refusal::badText);
    EXPECT_EQ(send(Command::setSMTP, {"S", "", "25", ""}), Refusal::badText);
    EXPECT_EQ(send(Command::setSMTP, {"S", "x", "25", std::string(81, 'x')}), Refusal::badText);
}

TEST_F(PrinterRegistration, TakesPathsAndInterfaces)
{
    EXPECT_EQ(send(Command::setAutKey, {"0000", "/keys/key.pem"}), Refusal::none);
    EXPECT_EQ(other("Authentication key"), "/keys/key.pem");
    EXPECT_EQ(send(Command::setAutKey, {"0000", ""}), Refusal::badText);
    EXPECT_EQ(send(Command::setAutKey, {"9999", "/keys/key.pem"}), Refusal::wrongPassword);
    EXPECT_EQ(send(Command::setSubjectIDData, {"/data/subject.xml"}), Refusal::none);
    EXPECT_EQ(other("Subject's data"), "/data/subject.xml");
    EXPECT_EQ(send(Command::setSubjectIDData, {""}), Refusal::badText);
    EXPECT_EQ(send(Command::setPCHDU, {"U", "port"}), Refusal::none);
    EXPECT_EQ(other("Interface"), "U port");
    EXPECT_EQ(send(Command::setPCHDU, {"!", "port"}), Refusal::badText);
    EXPECT_EQ(send(Command::setPCHDU, {"U", std::string(81, 'x')}), Refusal::badText);
}

TEST_F(PrinterRegistration, HasNothingUnsent)
{
    EXPECT_EQ(send(Command::sendUnsentSFSpacket, {}), Refusal::none);
    EXPECT_TRUE(shown.empty());
    ASSERT_EQ(send(Command::printUnsentSFSpackets, {}), Refusal::none);
    ASSERT_EQ(shown.size(), 2U);
    EXPECT_EQ(std::get<Printed>(shown.back()).line.text, "None");
    EXPECT_EQ(send(Command::synchronizationToPPEKK, {}), Refusal::none);
}

TEST_F(PrinterRegistration, PrintsTheLastTransactions)
{
    for (int i = 0; i < 3; ++i) {
        ASSERT_EQ(begin(), Refusal::none);
        ASSERT_EQ(sell("Chlieb", "1.00"), Refusal::none);
        ASSERT_EQ(pay("1", "1.00", "1.00"), Refusal::none);
        ASSERT_EQ(end(), Refusal::none);
    }
    ASSERT_EQ(send(Command::getLastTransactionPackets, {"2"}), Refusal::none);
    ASSERT_EQ(shown.size(), 3U);
    EXPECT_EQ(std::get<Printed>(shown[1]).line.text, "Receipt 2");
    EXPECT_EQ(std::get<Printed>(shown[2]).line.text, "Receipt 3");
    ASSERT_EQ(send(Command::getLastTransactionPackets, {"100"}), Refusal::none);
    EXPECT_EQ(shown.size(), 4U);
    EXPECT_EQ(send(Command::getLastTransactionPackets, {"101"}), Refusal::valueOutOfRange);
    EXPECT_EQ(send(Command::getLastTransactionPackets, {"0"}), Refusal::valueOutOfRange);
}

} // namespace
} // namespace virtual_printer
