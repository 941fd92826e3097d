// The virtual printer from the till's end of the wire: what it answers, what it prints, and what it survives.
#include "tests/system/virtual_printer_fixture.h"
#include "virtual_printer/money.h"

#include <gtest/gtest.h>

namespace virtual_printer {
namespace {

using namespace std::string_literals;

TEST_F(VirtualPrinter, SellsAReceiptAndPrintsItsTotal)
{
    openReceipt();
    EXPECT_EQ(answerTo(item(0x24, "Chlieb", "12.50") + item(0x24, "Ro\x9Eok", "3.20") +
                       item(0x25, "Ro\x9Eok", "3.20") +
                       item(0x28,
                            "F\x9E"
                            "a\x9A",
                            "0.50")),
              accepted + accepted + accepted + accepted);
    EXPECT_EQ(
        answerTo(request(0x30, {"0", "1", "12.00", "20.00", "0", "Hotovost  "}) + request(0x22, {"0", "0"})),
        accepted + accepted);
    const auto has = [&](const std::string& line) {
        return std::find(paper.begin(), paper.end(), line) != paper.end();
    };
    EXPECT_TRUE(has("Rožok"));
    EXPECT_TRUE(has("TOTAL EUR                          12.00"));
    EXPECT_TRUE(has("Change                              8.00"));
}

TEST_F(VirtualPrinter, PrintsNoLineLongerThanFortyColumns)
{
    openReceipt();
    answerTo(item(0x24, std::string(95, 'x'), "999999999.99") + request(0x31, {"0", std::string(200, 'y')}) +
             request(0x2B, {"0", std::string(77, 'z')}));
    ASSERT_FALSE(paper.empty());
    for (const std::string& line : paper) {
        EXPECT_LE(line.size(), Paper::columns) << line;
    }
}

TEST_F(VirtualPrinter, RefusesWhatDoesNotFitTheStateOfTheReceipt)
{
    EXPECT_EQ(answerTo(request(0x20, {"0", "1", "0", "0", "1", "0"})), refused(Refusal::noSellingDay));
    EXPECT_EQ(answerTo(item(0x24, "x", "1.00")), refused(Refusal::noReceipt));
    EXPECT_EQ(answerTo(request(0x22, {"0", "0"})), refused(Refusal::noReceipt));
    EXPECT_EQ(answerTo(request(0x2A)), refused(Refusal::nothingSold));
    openReceipt();
    EXPECT_EQ(answerTo(request(0x20, {"0", "1", "0", "0", "1", "0"})), refused(Refusal::receiptIsOpen));
    EXPECT_EQ(answerTo(request(0x50, {"Z", "0"})), refused(Refusal::receiptIsOpen));
    EXPECT_EQ(answerTo(item(0x25, "never sold", "1.00")), refused(Refusal::nothingToVoid));
    EXPECT_EQ(answerTo(item(0x24, "x", "12,50")), refused(Refusal::badNumber));
    EXPECT_EQ(answerTo(request(0x24, {"0", "x"})), refused(Refusal::wrongFields));
    EXPECT_EQ(answerTo(item(0x24, "x", "2.00")), accepted);
    EXPECT_EQ(answerTo(request(0x30, {"0", "1", "2.00", "1.00", "0", "          "})), accepted);
    EXPECT_EQ(answerTo(item(0x24, "x", "2.00")), refused(Refusal::receiptIsBeingPaid));
    EXPECT_EQ(answerTo(request(0x22, {"0", "0"})), refused(Refusal::paidTooLittle));
}

TEST_F(VirtualPrinter, SurvivesNoiseWrongChecksumsAndBrokenOffRequests)
{
    EXPECT_EQ(answerTo("\x01\x02noise\xFF"s + request(0x29, {"0"})), accepted);
    std::string damaged = request(0x29, {"0"});
    damaged.back() ^= 1;
    EXPECT_EQ(answerTo(damaged), refused(Refusal::wrongChecksum));
    const std::string whole = request(0x29, {"0"});
    for (std::size_t length = 0; length < whole.size(); ++length) {
        EXPECT_EQ(answerTo(whole.substr(0, length)), "") << length;
    }
    EXPECT_EQ(answerTo(whole), accepted);
}

TEST_F(VirtualPrinter, AnswersTheProbeOfAWaitingTill)
{
    EXPECT_EQ(answerTo("\x11"), "\x11");
}

TEST_F(VirtualPrinter, GivesItsJournalInBlocksAndNothingBeforeASale)
{
    EXPECT_EQ(answerTo(request(0x9F)), "\x04");
    openReceipt();
    answerTo(item(0x24, "Chlieb", "12.50") + request(0x30, {"0", "1", "12.50", "0", "0", "Karta     "}) +
             request(0x22, {"0", "0"}));
    const std::string reply = answerTo(request(0x9F) + "\x06\x06\x06\x03");
    ASSERT_GT(reply.size(), 261U);
    EXPECT_EQ(reply.substr(0, 2), "\x3A\xFF"s);
    EXPECT_EQ(reply[258], '\x17');
    EXPECT_EQ(reply[reply.size() - 2], '\x03');
    EXPECT_NE(reply.find("TOTAL EUR"), std::string::npos);
}

TEST_F(VirtualPrinter, RepeatsADamagedBlockThreeTimes)
{
    const std::string block = withChecksum("\x3A\x02"s + "0\r\n" + "\x03");
    EXPECT_EQ(answerTo(request(0x92, {"RECEIPTS"}) + "\x15\x03"), block + block);
    EXPECT_EQ(answerTo(request(0x92, {"RECEIPTS"}) + "\x15\x15\x15"), block + block + block + "\x04");
    EXPECT_EQ(answerTo(request(0x92, {"no such variable"})), refused(Refusal::unknownVariable));
}

TEST_F(VirtualPrinter, TakesUploadsInBlocks)
{
    EXPECT_EQ(answerTo(request(0xED) + withChecksum("\x3A\x01"s + "ab" + "\x17") +
                       withChecksum("\x3A\x00"s + "c" + "\x03")),
              accepted + accepted + accepted);
    EXPECT_EQ(paper.back(), "[QR] abc");
    std::string damaged = withChecksum("\x3A\x00"s + "c" + "\x03");
    damaged.back() ^= 1;
    EXPECT_EQ(answerTo(damaged), refused(Refusal::wrongChecksum));
}

TEST_F(VirtualPrinter, PassesOverBlocksThatNoRequestHasAnnounced)
{
    EXPECT_EQ(answerTo(blockOf("stray", '\x03') + request(0x29, {"0"})), accepted);
    EXPECT_EQ(answerTo(request(0xE0) + blockOf("stray", '\x03') + request(0x29, {"0"})), accepted + accepted);
}

TEST_F(VirtualPrinter, ShowsAndKeepsSettingsButNoPasswords)
{
    EXPECT_EQ(answerTo(request(0xBC, {"secret", "1", "Potraviny"}) +
                       request(0xBC, {"secret", "2", "Trnava"}) + request(0xB7, {"secret", "newsecret"}) +
                       request(0xA7, {std::string(60, 'm')})),
              accepted + accepted + accepted + accepted);
    EXPECT_EQ(paper, (std::vector<std::string>{"Header line 1                  Potraviny",
                                               "Header line 2                     Trnava",
                                               "Password                                ",
                                               "Mail address                            ",
                                               std::string(40, 'm'), std::string(20, 'm')}));
    const std::string image = answerTo(request(0x7B, {"secret"}) + "\x03");
    EXPECT_NE(image.find("Header line 1=Potraviny\r\nHeader line 2=Trnava\r\n"), std::string::npos);
    EXPECT_EQ(image.find("secret"), std::string::npos);
}

TEST_F(VirtualPrinter, RefusesCommandsThatItDoesNotHave)
{
    EXPECT_EQ(answerTo(request(0x21)), refused(Refusal::unknownCommand));
    EXPECT_EQ(answerTo(request(0xFF)), refused(Refusal::unknownCommand));
}

// Only the commands of the printer's language are not unknown.
TEST_F(VirtualPrinter, KnowsEveryCommandOfItsLanguage)
{
    int known = 0;
    for (int code = 0; code <= 0xFF; ++code) {
        if (answerTo(request(static_cast<unsigned char>(code))) != refused(Refusal::unknownCommand)) {
            ++known;
        }
    }
    EXPECT_EQ(known, 112);
}

TEST(Money, IsParsedWithoutRounding)
{
    EXPECT_EQ(parseDecimal("12.5", 2), 1250);
    EXPECT_EQ(parseDecimal("-0.01", 2), -1);
    EXPECT_EQ(parseDecimal("+26.0950", 4), 260950);
    EXPECT_EQ(parseDecimal("7", 0), 7);
    EXPECT_EQ(parseDecimal("", 2), std::nullopt);
    EXPECT_EQ(parseDecimal("12,5", 2), std::nullopt);
    EXPECT_EQ(parseDecimal("1e3", 2), std::nullopt);
    EXPECT_EQ(parseDecimal("999999999999.99", 2), 99999999999999);
    EXPECT_EQ(parseDecimal("1000000000000", 2), std::nullopt);
    EXPECT_EQ(formatCents(-5), "-0.05");
    EXPECT_EQ(formatCents(123456), "1234.56");
}

} // namespace
} // namespace virtual_printer
