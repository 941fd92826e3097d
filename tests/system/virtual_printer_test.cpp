// The virtual printer from the till's end of the wire: what it answers, what it prints, and what it survives.
#include "tests/system/virtual_printer_fixture.h"
#include "virtual_printer/paper/text_lines.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace virtual_printer {
namespace {

using namespace std::string_literals;

std::string voiding(const std::string& name, const std::string& total)
{
    return request(0x25, {"0", name, total, "A", "1.000", total, "ks ", ""});
}

TEST_F(VirtualPrinter, SellsAReceiptAndPrintsItsTotal)
{
    openReceipt();
    EXPECT_EQ(answerTo(item(0x24, "Chlieb", "12.50") + item(0x24, "Ro\x9Eok", "3.20") +
                       voiding("Ro\x9Eok", "3.20") +
                       request(0x28, {"0", "F\xE1\x9A", "0.50", "A", "1.000", "0.50", "ks ", "17"})),
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
    EXPECT_EQ(answerTo(item(0x24, std::string(95, 'x'), "9999999.99") +
                       request(0x31, {"0", std::string(80, 'y')}) +
                       request(0x2B, {"0", std::string(77, 'z')})),
              accepted + accepted + accepted);
    for (const std::string& line : paper) {
        EXPECT_LE(widthOf(line), columnsOfPaper) << line;
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
    EXPECT_EQ(answerTo(voiding("never sold", "1.00")), refused(Refusal::nothingToVoid));
    EXPECT_EQ(answerTo(item(0x24, "x", "12,50")), refused(Refusal::badNumber));
    EXPECT_EQ(answerTo(request(0x24, {"0", "x"})), refused(Refusal::wrongFields));
    EXPECT_EQ(answerTo(item(0x24, "x", "2.00")), accepted);
    EXPECT_EQ(answerTo(request(0x30, {"0", "1", "2.00", "1.00", "0", "          "})), accepted);
    EXPECT_EQ(answerTo(item(0x24, "x", "2.00")), refused(Refusal::receiptIsBeingPaid));
    EXPECT_EQ(answerTo(request(0x22, {"0", "0"})), refused(Refusal::paidTooLittle));
}

TEST_F(VirtualPrinter, SurvivesNoiseWrongChecksumsAndBrokenOffRequests)
{
    EXPECT_EQ(answerTo("\x01\x02noise\xFF"s + request(0xE0)), accepted);
    std::string damaged = request(0x29, {"0"});
    damaged.back() ^= 1;
    EXPECT_EQ(answerTo(damaged), refused(Refusal::wrongChecksum));
    const std::string whole = request(0x29, {"0"});
    for (std::size_t length = 0; length < whole.size(); ++length) {
        EXPECT_EQ(answerTo(whole.substr(0, length)), "") << length;
    }
    EXPECT_EQ(answerTo(whole), accepted);
}

// On a serial line, where nothing tells that the till before has ended.
TEST_F(VirtualPrinter, ForgetsWhatATillHasBegunAndNotGoneOnWith)
{
    using std::chrono::seconds;
    const std::string upload = request(0xED) + blockOf("text", '\x17');
    const std::string begun[] = {request(0x29, {"0"}), upload};
    for (const std::string& whole : begun) {
        for (std::size_t length = 1; length < whole.size(); ++length) {
            TillSession line(station, CodePage::cp852, codes);
            TillSession::Time now{seconds(100)};
            line.take(whole.substr(0, length), now);
            EXPECT_EQ(bytesOf(line.take(request(0xE0), now + seconds(6))), accepted) << length;
        }
    }
}

TEST_F(VirtualPrinter, WaitsForATillThatIsSlow)
{
    TillSession line(station, CodePage::cp852, codes);
    TillSession::Time now{};
    std::string answer;
    for (const char byte : request(0x29, {"0"})) {
        EXPECT_EQ(answer, "");
        answer = bytesOf(line.take(std::string(1, byte), now));
        now += std::chrono::seconds(5);
    }
    EXPECT_EQ(answer, accepted);
}

TEST_F(VirtualPrinter, KeepsAReplyForATillThatIsSlow)
{
    TillSession line(station, CodePage::cp852, codes);
    const std::string reply = bytesOf(line.take(request(0x92, {"DAY"}), {}));
    EXPECT_EQ(bytesOf(line.take("\x15", TillSession::Time(std::chrono::seconds(60)))), reply);
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
    EXPECT_EQ(answerTo(request(0xED) + blockOf("ab", '\x17') + blockOf("c", '\x03')),
              accepted + accepted + accepted);
    // 21 modules and a margin of four on each side, two rows a line.
    EXPECT_GE(paper.size(), 14U);
    std::string damaged = blockOf("c", '\x03');
    damaged.back() ^= 1;
    EXPECT_EQ(answerTo(request(0xED) + damaged), accepted + refused(Refusal::wrongChecksum));
}

TEST_F(VirtualPrinter, PassesOverBlocksThatNoRequestHasAnnounced)
{
    EXPECT_EQ(answerTo(blockOf("stray", '\x03') + request(0x29, {"0"})), accepted);
    EXPECT_EQ(answerTo(request(0xE0) + blockOf("stray", '\x03') + request(0xE1)), accepted + accepted);
}

TEST_F(VirtualPrinter, TellsOnThePaperWhyItRefuses)
{
    EXPECT_EQ(answerTo(item(0x24, "x", "1.00")), refused(Refusal::noReceipt));
    EXPECT_EQ(paper,
              std::vector<std::string>{"! itemSale refused with 12 noReceipt: No receipt is open; begin one "
                                       "with paragonBegin first."});
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

} // namespace
} // namespace virtual_printer
