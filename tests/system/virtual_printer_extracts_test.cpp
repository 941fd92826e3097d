// Extracts of the virtual printer's journal and fiscal memory: what lies within the bounds, and nothing else.
#include "tests/system/virtual_printer_fixture.h"

namespace virtual_printer {
namespace {

using Lines = std::vector<std::string>;

std::string closureText(const std::string& number, const std::string& moment, const std::string& sum)
{
    return line("Closure " + number, moment) + "\r\n" + line("VAT A", sum) + "\r\n" + line("Receipts", "1") +
           "\r\n" + line("Cancelled receipts", "0") + "\r\n" + line("Drawer EUR", "0.00") + "\r\n" +
           line("Turnover EUR", sum) + "\r\n";
}

// Three days of one receipt each, sold at noon and closed at ten.
class VirtualPrinterExtracts : public VirtualPrinter
{
protected:
    void SetUp() override
    {
        for (const std::string day : {"30", "31"}) {
            sellOn("2025-12-" + day, day + ".00");
        }
        sellOn("2026-01-01", "1.00");
    }

    void sellOn(const std::string& date, const std::string& sum)
    {
        time = date + " 12:00";
        sell("Chlieb", sum);
        time = date + " 22:00";
        closeDay();
    }

    // The numbers of the receipts ("Receipt 2" is R2) and of the daily closures in a text.
    static std::string documentsIn(const std::string& text)
    {
        std::string found;
        for (std::size_t i = 0; i < text.size(); ++i) {
            const std::string_view rest = std::string_view(text).substr(i);
            for (const std::string_view head : {"\nReceipt ", "DAILY CLOSURE "}) {
                if (rest.starts_with(head)) {
                    found += head[0] == '\n' ? "R" : "Z";
                    found += rest[head.size()];
                }
            }
        }
        return found;
    }

    // The extract of the command and what its printing twin prints are about the same documents.
    std::string extract(unsigned char command, unsigned char printing, const std::vector<std::string>& fields)
    {
        std::string documents = documentsIn(dataOf(request(command, fields)));
        std::string printed;
        for (const std::string& text : paperOf(request(printing, fields))) {
            printed += text + "\n";
        }
        EXPECT_EQ(documentsIn(printed), documents);
        EXPECT_EQ(printed.find("Nothing within these bounds") != std::string::npos, documents.empty());
        return documents;
    }

    std::string byDates(const std::string& letter, const std::string& from, const std::string& to)
    {
        std::string documents = extract(0x97, 0x57, {letter, from, to});
        EXPECT_EQ(extract(0x9A, 0x5A, {letter, from, to}), documents);
        return documents;
    }

    std::string closuresByDates(const std::string& from, const std::string& to)
    {
        return dataOf(request(0x9C, {"0", from, to}));
    }

    std::string closuresByNumbers(const std::string& from, const std::string& to)
    {
        return dataOf(request(0x9D, {"0", from, to}));
    }

    const std::string first = closureText("1", "2025-12-30 22:00", "30.00");
    const std::string second = closureText("2", "2025-12-31 22:00", "31.00");
    const std::string third = closureText("3", "2026-01-01 22:00", "1.00");
};

TEST_F(VirtualPrinterExtracts, GiveTheReceiptsOfTheDatesInBothForms)
{
    EXPECT_EQ(byDates("P", "2025-12-31", "2026-01-01"), "R2R3");
    EXPECT_EQ(byDates("P", "31.12.2025", "31.12.2025"), "R2");
    EXPECT_EQ(byDates("P", "01.01.2026", "31.12.2026"), "R3");
    EXPECT_EQ(byDates("P", "2025-12-29", "2025-12-29"), "");
    EXPECT_EQ(byDates("P", "2026-01-02", "2099-12-31"), "");
    EXPECT_EQ(byDates("P", "2026-01-01", "2025-12-30"), "");
}

TEST_F(VirtualPrinterExtracts, HeedATimeBehindTheDate)
{
    EXPECT_EQ(byDates("P", "2025-12-30 12:00", "2025-12-31 11:59"), "R1");
    EXPECT_EQ(byDates("P", "30.12.2025 12:01", "31.12.2025 12:00"), "R2");
}

TEST_F(VirtualPrinterExtracts, AreOpenAtAnEmptyBound)
{
    EXPECT_EQ(byDates("P", "", "2025-12-31"), "R1R2");
    EXPECT_EQ(byDates("P", "2025-12-31", ""), "R2R3");
    EXPECT_EQ(byDates("P", "", ""), "R1R2R3");
}

TEST_F(VirtualPrinterExtracts, GiveTheClosuresUnderTheirLetter)
{
    EXPECT_EQ(byDates("Z", "2025-12-31", "2026-01-01"), "Z2Z3");
    EXPECT_EQ(byDates("Z", "2025-12-31 00:00", "2025-12-31 21:59"), "");
}

TEST_F(VirtualPrinterExtracts, GiveDocumentsByTheirNumbers)
{
    EXPECT_EQ(extract(0x98, 0x58, {"2", "3"}), "R2R3");
    EXPECT_EQ(extract(0x98, 0x58, {"4", "9"}), "");
    EXPECT_EQ(extract(0x98, 0x58, {"-1", "0"}), "");
    EXPECT_EQ(extract(0x9B, 0x5B, {"P", "1", "1"}), "R1");
    EXPECT_EQ(extract(0x9B, 0x5B, {"Z", "1", "2"}), "Z1Z2");
    EXPECT_EQ(extract(0x99, 0x59, {"2"}), "R2");
    EXPECT_EQ(extract(0x99, 0x59, {"7"}), "");
    EXPECT_EQ(extract(0x99, 0x59, {"no number"}), "");
}

TEST_F(VirtualPrinterExtracts, OfTheFiscalMemoryGiveTheClosuresByNumber)
{
    EXPECT_EQ(closuresByNumbers("1", "2"), first + second);
    EXPECT_EQ(closuresByNumbers("3", "99"), third);
    EXPECT_EQ(closuresByNumbers("4", "99"), "");
    EXPECT_EQ(closuresByNumbers("2", "1"), "");
}

TEST_F(VirtualPrinterExtracts, OfTheFiscalMemoryGiveTheClosuresByDate)
{
    EXPECT_EQ(closuresByDates("31.12.2025", "01.01.2026"), second + third);
    EXPECT_EQ(closuresByDates("2025-12-30", "2025-12-30"), first);
    EXPECT_EQ(closuresByDates("2020-01-01", "2025-12-29"), "");
    EXPECT_EQ(closuresByDates("", ""), first + second + third);
}

TEST_F(VirtualPrinterExtracts, OfTheFiscalMemoryArePrintedWithinTheirBounds)
{
    const std::string rule(Paper::columns, '=');
    const Lines printed = {rule,
                           std::string(13, ' ') + "FISCAL MEMORY",
                           line("Closure 2", "2025-12-31 22:00"),
                           line("VAT A", "31.00"),
                           line("Receipts", "1"),
                           line("Cancelled receipts", "0"),
                           line("Drawer EUR", "0.00"),
                           line("Turnover EUR", "31.00"),
                           rule};
    EXPECT_EQ(paperOf(request(0x53, {"0", "2", "2"})), printed);
    EXPECT_EQ(paperOf(request(0x52, {"0", "2025-12-31", "2025-12-31"})), printed);
    EXPECT_EQ(paperOf(request(0x81, {"0", "2025-12-31", "2025-12-31", "archive"})), printed);
    EXPECT_EQ(paperOf(request(0x53, {"0", "4", "5"})),
              (Lines{rule, std::string(13, ' ') + "FISCAL MEMORY", "Nothing within these bounds", rule}));
}

TEST_F(VirtualPrinterExtracts, FromAnArchiveAreThoseOfTheJournal)
{
    EXPECT_EQ(paperOf(request(0x83, {"P", "31.12.2025", "31.12.2025", "archive"})),
              paperOf(request(0x57, {"P", "31.12.2025", "31.12.2025"})));
    EXPECT_EQ(paperOf(request(0x82, {"3", "archive"})), paperOf(request(0x59, {"3"})));
}

TEST_F(VirtualPrinterExtracts, AreRefusedForBoundsThatAreNone)
{
    const Refusal noDate = Refusal::badDate;
    for (const std::string date : {"yesterday", "2026-13-01", "2026-02-30", "31.02.2026", "29.02.2025",
                                   "2026-1-1", "2026-01-01 24:00", "2026-01-01x", "21112026"}) {
        EXPECT_EQ(answerTo(request(0x97, {"P", date, ""})), refused(noDate)) << date;
        EXPECT_EQ(answerTo(request(0x52, {"0", "", date})), refused(noDate)) << date;
    }
    EXPECT_EQ(answerTo(request(0x9D, {"0", "one", "2"})), refused(Refusal::badNumber));
    EXPECT_EQ(answerTo(request(0x9B, {"P", "1", ""})), refused(Refusal::badNumber));
    EXPECT_EQ(answerTo(request(0x97, {"P", ""})), refused(Refusal::wrongFields));
    EXPECT_EQ(answerTo(request(0x53, {"0", "1"})), refused(Refusal::wrongFields));
    EXPECT_EQ(dataOf(request(0x9C, {"0", "29.02.2024", ""})), first + second + third); // a leap year
}

} // namespace
} // namespace virtual_printer
