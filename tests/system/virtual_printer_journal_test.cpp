// What the virtual printer remembers of its receipts: the journal by days, copies, and their identifiers.
#include "tests/system/virtual_printer_fixture.h"

namespace virtual_printer {
namespace {

using VirtualPrinterJournal = VirtualPrinter;

std::string joined(const std::vector<std::string>& lines)
{
    std::string text;
    for (const std::string& each : lines) {
        text += each + "\r\n";
    }
    return text;
}

TEST_F(VirtualPrinterJournal, HasReceiptsAndClosuresByTheirDays)
{
    paper.clear();
    sell("Chlieb", "12.50");
    closeDay();
    const std::string firstDay = joined(paper);
    paper.clear();
    sell("Caj", "4.99");
    const std::string today = joined(paper);
    EXPECT_EQ(dataOf(request(0x9F)), firstDay + today);
    EXPECT_EQ(dataOf(request(0x9F, {"J", "0"})), firstDay + today);
    EXPECT_EQ(dataOf(request(0x9F, {"J", "1"})), firstDay);
    EXPECT_EQ(dataOf(request(0x9F, {"J", "2"})), today);
    EXPECT_EQ(dataOf(request(0x9F, {"J", "3"})), "");
    EXPECT_EQ(dataOf(request(0x93)), today);
}

TEST_F(VirtualPrinterJournal, IsPrintedByDaysToo)
{
    sell("Chlieb", "12.50");
    closeDay();
    paper.clear();
    sell("Caj", "4.99");
    std::vector<std::string> expected = {std::string(40, '='), std::string(16, ' ') + "JOURNAL"};
    expected.insert(expected.end(), paper.begin(), paper.end());
    expected.emplace_back(40, '=');
    EXPECT_EQ(paperOf(request(0x51, {"J", "2"})), expected);
    EXPECT_EQ(answerTo(request(0x51, {"J", "today"})), refused(Refusal::badNumber));
}

TEST_F(VirtualPrinterJournal, RepeatsTheWholeLastReceiptUnderItsHead)
{
    sell("Chlieb", "12.50");
    paper.clear();
    sell("\x9A\xE1lka", "4.99"); // in the code page of the link
    std::vector<std::string> copy = {std::string(18, ' ') + "COPY"};
    copy.insert(copy.end(), paper.begin(), paper.end());
    EXPECT_EQ(copy[4], "šálka");
    EXPECT_EQ(paperOf(request(0x2A)), copy);
    EXPECT_EQ(paperOf(request(0x2A)), copy);
    closeDay();
    EXPECT_EQ(paperOf(request(0x2A)), copy);
}

TEST_F(VirtualPrinterJournal, KeepsACopyOutOfTheReceiptThatIsOpen)
{
    sell("Chlieb", "12.50");
    openReceipt();
    EXPECT_EQ(answerTo(request(0x2A)), refused(Refusal::receiptIsOpen));
}

TEST_F(VirtualPrinterJournal, FindsReceiptsByWhatIdentifiesThem)
{
    openReceipt();
    ASSERT_EQ(answerTo(item(0x24, "x", "1.00") + request(0xC9, {"F-7"}) + request(0xAE, {"T1"})),
              accepted + accepted + accepted);
    closeReceipt();
    closeDay();
    time = "2026-01-02 08:00";
    openReceipt();
    ASSERT_EQ(answerTo(item(0x24, "x", "1.00") + request(0xC9, {"F-8"}) + request(0xAE, {"T1"})),
              accepted + accepted + accepted);
    closeReceipt();
    sell("x", "1.00");
    const auto found = [&](const std::string& type, const std::string& input) {
        return dataOf(request(0xAF, {type, input}));
    };
    EXPECT_EQ(found("N", "2"), "2\r\n");
    EXPECT_EQ(found("N", "4"), "");
    EXPECT_EQ(found("D", "02.01.2026"), "2\r\n3\r\n");
    EXPECT_EQ(found("D", "2026-01-03"), "");
    EXPECT_EQ(found("Z", "1"), "1\r\n");
    EXPECT_EQ(found("Z", "2"), "2\r\n3\r\n");
    EXPECT_EQ(found("I", "F-8"), "2\r\n");
    EXPECT_EQ(found("I", "F-9"), "");
    EXPECT_EQ(found("T", "T1"), "1\r\n2\r\n");
    EXPECT_EQ(found("T", ""), "1\r\n2\r\n3\r\n"); // an empty input selects all
    EXPECT_EQ(answerTo(request(0xAF, {"A", "123"})), refused(Refusal::unknownIdentifier));
    EXPECT_EQ(answerTo(request(0xAF, {"", "1"})), refused(Refusal::unknownIdentifier));
    EXPECT_EQ(answerTo(request(0xAF, {"D", "soon"})), refused(Refusal::badDate));
    EXPECT_EQ(answerTo(request(0xAF, {"N", "one"})), refused(Refusal::badNumber));
    EXPECT_EQ(answerTo(request(0xAF, {"N"})), refused(Refusal::wrongFields));
}

TEST_F(VirtualPrinterJournal, FindsNothingOfAReceiptThatWasCancelled)
{
    openReceipt();
    EXPECT_EQ(answerTo(request(0xC9, {"F-7"}) + request(0x2B, {"0", "omyl"})), accepted + accepted);
    sell("x", "1.00");
    EXPECT_EQ(dataOf(request(0xAF, {"I", "F-7"})), "");
    EXPECT_EQ(dataOf(request(0xAF, {"N", ""})), "1\r\n");
}

} // namespace
} // namespace virtual_printer
