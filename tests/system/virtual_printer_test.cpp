// The virtual printer from the till's end of the wire: what it answers, what it prints, and what it survives.
#include "virtual_printer/money.h"
#include "virtual_printer/protocol_server.h"

#include <gtest/gtest.h>

namespace virtual_printer {
namespace {

using namespace std::string_literals;

// A till that has said everything beforehand and then hangs up.
class ScriptedTill : public ByteStream
{
public:
    std::optional<unsigned char> read() override
    {
        if (next == said.size()) {
            return std::nullopt;
        }
        return static_cast<unsigned char>(said[next++]);
    }

    void write(std::string_view bytes) override { heard += bytes; }

    std::string said;
    std::string heard;

private:
    std::size_t next = 0;
};

std::string withChecksum(const std::string& unit)
{
    char sum = 0;
    for (const char byte : unit) {
        sum = static_cast<char>(sum ^ byte);
    }
    return unit + sum;
}

std::string request(unsigned char command, const std::vector<std::string>& fields = {})
{
    std::string unit = {'\x1C', '\x01', static_cast<char>(command)};
    for (const std::string& field : fields) {
        unit += field + '\0';
    }
    return withChecksum(unit + '\x04');
}

const std::string accepted = "\x06";

std::string refused(Refusal refusal)
{
    return {'\x15', static_cast<char>(refusal)};
}

class VirtualPrinter : public testing::Test
{
protected:
    // What the printer answers to these bytes; the connection ends behind them.
    std::string answerTo(const std::string& bytes)
    {
        ScriptedTill till;
        till.said = bytes;
        ProtocolServer(till, printer).serve();
        return till.heard;
    }

    std::string item(unsigned char command, const std::string& name, const std::string& total)
    {
        return request(command, {"0", name, total, "A", "1.000", total, "ks "});
    }

    void openReceipt()
    {
        ASSERT_EQ(answerTo(request(0x29, {"0"}) + request(0x20, {"0", "1", "0", "0", "1", "0"})),
                  accepted + accepted);
    }

    std::vector<std::string> paper;
    Printer printer{CodePage::windows1250, [this](std::string_view line) { paper.emplace_back(line); },
                    [] { return "2026-01-01 12:00"s; }};
};

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

// A corner of 12 x 10 dots, blank at the top and the left, in the three layouts.
TEST_F(VirtualPrinter, PrintsUploadedPicturesInEveryLayout)
{
    const auto repeated = [](const std::string& bytes, int times) {
        std::string all;
        for (int i = 0; i < times; ++i) {
            all += bytes;
        }
        return all;
    };
    const std::string raster = "\x02\0\x11\0"s + "\0\0"s + repeated("\x7F\xF0", 9) + repeated("\0\0"s, 6);
    const std::string bands = "\x0C\0\x02\0"s + "\0"s + repeated("\x7F", 11) + "\0"s + repeated("\xC0", 11);
    const std::string columns = "\x02\0\x02\0"s + "\0\0"s + repeated("\x7F\xC0", 11) + repeated("\0\0"s, 4);
    const auto upload = [&](unsigned char command, const std::string& data) {
        paper.clear();
        const std::string block = {'\x3A', static_cast<char>(data.size() - 1)};
        EXPECT_EQ(answerTo(request(command, {"1", "0"}) + withChecksum(block + data + "\x03")),
                  accepted + accepted);
    };
    // Two rows of dots a line: the first row is blank, ten are left.
    const std::vector<std::string> corner = {" " + repeated("\u2584", 11),
                                             " " + repeated("\u2588", 11),
                                             " " + repeated("\u2588", 11),
                                             " " + repeated("\u2588", 11),
                                             " " + repeated("\u2588", 11),
                                             "",
                                             "",
                                             ""};
    upload(0xD0, raster);
    EXPECT_EQ(paper, corner);
    upload(0xD2, bands);
    EXPECT_EQ(paper, corner);
    upload(0xD1, columns);
    EXPECT_EQ(paper, corner);
    upload(0xD1, columns.substr(1));
    EXPECT_EQ(paper, std::vector<std::string>{"[a picture that does not fit its header]"});
}

std::string blockOf(const std::string& data, char terminator)
{
    return withChecksum(":"s + static_cast<char>(data.size() - 1) + data + terminator);
}

// Eight columns of eight dots: the upper or the lower half is black.
const std::string upperHalf = "\x01\0\x01\0\xF0\xF0\xF0\xF0\xF0\xF0\xF0\xF0"s;
const std::string lowerHalf = "\x01\0\x01\0\x0F\x0F\x0F\x0F\x0F\x0F\x0F\x0F"s;
const std::string blackLine = "\u2588\u2588\u2588\u2588\u2588\u2588\u2588\u2588";

TEST_F(VirtualPrinter, TakesSeveralLogosInOneUpload)
{
    EXPECT_EQ(answerTo(request(0xD1, {"2", "000000000000", "0"}) + blockOf(upperHalf, '\x17') +
                       blockOf(lowerHalf, '\x03')),
              accepted + accepted + accepted);
    EXPECT_EQ(paper, (std::vector<std::string>{blackLine, blackLine, "", "", "", "", blackLine, blackLine}));
}

TEST_F(VirtualPrinter, PrintsAKeptLogoByItsNumberWhenNoPictureComesWithTheCommand)
{
    const std::string end = blockOf("\0\0\0\0"s, '\x03');
    answerTo(request(0xD1, {"2", "000000000000", "0"}) + blockOf(upperHalf, '\x17') +
             blockOf(lowerHalf, '\x03'));
    answerTo(request(0xD1, {"", "9", "0", "0"}) + blockOf(upperHalf, '\x03'));
    const auto printed = [&](const std::string& number) {
        paper.clear();
        EXPECT_EQ(answerTo(request(0xDE, {"0", number}) + end), accepted + accepted);
        return paper;
    };
    const std::vector<std::string> upper = {blackLine, blackLine, "", ""};
    EXPECT_EQ(printed("1"), upper);
    EXPECT_EQ(printed("2"), (std::vector<std::string>{"", "", blackLine, blackLine}));
    EXPECT_EQ(printed("9"), upper);
    EXPECT_EQ(printed("3"), std::vector<std::string>{});
    paper.clear();
    EXPECT_EQ(answerTo(request(0xDE, {"0", "1"}) + blockOf("own picture", '\x03') + end),
              accepted + accepted + accepted);
    EXPECT_EQ(paper, std::vector<std::string>{"[picture data of 11 bytes]"});
}

TEST_F(VirtualPrinter, TakesNoPictureWhoseHeaderTellsAnotherHeight)
{
    // 16 rows of one byte: heights of 9 to 16 fit, which the header tells as 16 to 23.
    const auto paperFor = [&](char height) {
        paper.clear();
        answerTo(request(0xD0, {"1", "0"}) +
                 blockOf("\x01\0"s + height + "\0"s + std::string(16, '\0'), '\x03'));
        return paper;
    };
    const std::vector<std::string> blank(8);
    const std::vector<std::string> complaint = {"[a picture that does not fit its header]"};
    EXPECT_EQ(paperFor(15), complaint);
    EXPECT_EQ(paperFor(16), blank);
    EXPECT_EQ(paperFor(23), blank);
    EXPECT_EQ(paperFor(24), complaint);
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
