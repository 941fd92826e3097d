// What a refusal says beyond its sentence: which field is wrong and what it takes, or the sums that do not
// fit.
#include "tests/unit/printer/situations.h"

#include "virtual_printer/printers/output_lines.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace virtual_printer {
namespace {

// What is said of a request that is refused for this reason.
std::string detailOf(const DecidingPrinter& printer, Command command, std::vector<std::string> fields,
                     Refusal refusal)
{
    const Decision decision =
        decide(printer.state, {1, static_cast<unsigned char>(command), std::move(fields)}, printer.now);
    EXPECT_EQ(decision.refusal, refusal);
    return decision.detail;
}

TEST(PrinterRefusalDetails, NameTheFieldAndWhatItTakes)
{
    const DecidingPrinter open = printerIn(Situation::open);
    const DecidingPrinter idle = printerIn(Situation::idle);
    EXPECT_EQ(
        detailOf(open, Command::itemSale, {"0", "Chlieb", "1,50", "A", "1", "1.50", ""}, Refusal::badNumber),
        "totalPrice takes a number with at most two decimals, at most 9999999.99 to either side.");
    EXPECT_EQ(detailOf(open, Command::itemSale, {"0", "Chlieb", "1.50", "A", "0.3333", "4.50", ""},
                       Refusal::tooManyDecimals),
              "amount takes a number with at most three decimals, at most 999999.999 to either side.");
    EXPECT_EQ(detailOf(open, Command::itemSale, {"0", " ", "1.50", "A", "1", "1.50", ""}, Refusal::badText),
              "commodityName takes at least one character.");
    EXPECT_EQ(detailOf(open, Command::itemSale, {"0", "Chlieb", "0", "A", "0", "1.50", ""},
                       Refusal::valueOutOfRange),
              "amount takes at least 0.001.");
    EXPECT_EQ(
        detailOf(open, Command::itemSale, {"0", "Chlieb", "1.00", "A", "3", "0.50", ""}, Refusal::wrongTotal),
        "totalPrice takes 3 x 0.50.");
    EXPECT_EQ(detailOf(idle, Command::setHeader, {"0000", "11", "x"}, Refusal::valueOutOfRange),
              "rowNumber takes 1 to 10.");
    EXPECT_EQ(detailOf(idle, Command::setPaymentType2, {"Stravovacia poukazka", "3", "0", "2"},
                       Refusal::valueOutOfRange),
              "overPay takes 0 or 1.");
    EXPECT_EQ(detailOf(idle, Command::setPaymentType2, {"Stravovacie poukazky", "21", "0", "0"},
                       Refusal::valueOutOfRange),
              "paymentTypeNumber takes 1 to 20.");
    EXPECT_EQ(
        detailOf(idle, Command::setPaymentType2, {"Stravovacie poukazky!", "3", "0", "0"}, Refusal::badText),
        "paymentTypeName takes 1 to 20 characters.");
    EXPECT_EQ(detailOf(idle, Command::setPassword, {"0000", "123"}, Refusal::badText),
              "newPassword takes 4 to 16 characters.");
    EXPECT_EQ(detailOf(idle, Command::setParameter, {"0000", "100", "0"}, Refusal::unknownSetting),
              "paramNumber takes 0 to 99.");
    EXPECT_EQ(
        detailOf(idle, Command::depositeInDrawer, {"0", "", "2", "1.00", "1"}, Refusal::unknownOperation),
        "operationType takes 0 or 1.");
    EXPECT_EQ(detailOf(idle, Command::printReport, {"z", "0"}, Refusal::unknownOperation),
              "reportType takes A to Z.");
    EXPECT_EQ(detailOf(idle, Command::getJournalStructD, {"Z", "31.02.2026", ""}, Refusal::badDate),
              "dateFrom takes a date as 2026-01-31 or 31.01.2026, with or without 12:00, or nothing.");
    for (const char* const none : {"nonsense", ""}) {
        EXPECT_EQ(detailOf(printerIn(Situation::noDay), Command::setDateTime, {none}, Refusal::badDate),
                  "date takes a date as 2026-01-31 or 31.01.2026, with or without 12:00.");
    }
}

// The drawer has 20.00 of cash and no vouchers: two receipts of 10.00 were paid in cash.
TEST(PrinterRefusalDetails, SayWhichMoneyIsMissing)
{
    const DecidingPrinter open = printerIn(Situation::open);
    const auto payment = [](const std::string& type, const std::string& paid) {
        return std::vector<std::string>{"0", type, "10.00", paid, "0", ""};
    };
    EXPECT_EQ(detailOf(open, Command::payment, payment("5", "40.00"), Refusal::drawerTooEmpty),
              "The change of 30.00 is given in cash, of which 20.00 is there.");
    EXPECT_EQ(detailOf(printerIn(Situation::idle), Command::depositeInDrawer, {"0", "", "1", "20.01", "1"},
                       Refusal::drawerTooEmpty),
              "Of Hotovost 20.01 is to go out, and 20.00 is there.");
    DecidingPrinter paidOut = printerIn(Situation::idle);
    ASSERT_EQ(paidOut.begin(), Refusal::none);
    ASSERT_EQ(paidOut.item(Command::itemReturn, "Chlieb", "3.00"), Refusal::none);
    EXPECT_EQ(
        detailOf(paidOut, Command::payment, {"0", "2", "-3.00", "-3.00", "0", ""}, Refusal::drawerTooEmpty),
        "Of Karta 3.00 is to go out, and 0.00 is there.");
    EXPECT_EQ(
        detailOf(open, Command::payment, {"0", "1", "9.00", "9.00", "0", ""}, Refusal::paymentWrongTotal),
        "The receipt's total is 10.00, and 10.00 is due.");
    EXPECT_EQ(detailOf(open, Command::payment, payment("3", "4.99"), Refusal::paymentTooSmall),
              "It is at least 5.00.");
    EXPECT_EQ(detailOf(printerIn(Situation::paying), Command::paragonEnd, {"0", "0"}, Refusal::paidTooLittle),
              "6.00 is due.");
}

TEST(PrinterRefusalDetails, SayWhichLetterAnItemIsUnder)
{
    DecidingPrinter printer = printerIn(Situation::open);
    ASSERT_EQ(printer.sell("Syr", "10.00", "A"), Refusal::none);
    EXPECT_EQ(
        detailOf(printer, Command::itemDiscount, {"0", "", "0", "1.00", "B"}, Refusal::nothingToDiscount),
        "The item is under A.");
    EXPECT_EQ(detailOf(printer, Command::itemDiscount2, {"0", "", "0", "1.00", "B", "0"},
                       Refusal::nothingToDiscount),
              "The item is under A.");
}

bool namesAField(Refusal refusal)
{
    switch (refusal) {
    case Refusal::badNumber:
    case Refusal::badDate:
    case Refusal::badText:
    case Refusal::valueOutOfRange:
    case Refusal::tooManyDecimals:
    case Refusal::unknownOperation:
    case Refusal::unknownSetting:
        return true;
    default:
        return false;
    }
}

// A value that most fields of the kind take.
std::string usualValue(const Field& field)
{
    switch (field.kind) {
    case FieldKind::secret:
        return field.name == "servicePassword" ? "9999" : "0000";
    case FieldKind::letter:
        return "A";
    case FieldKind::text:
        return "1";
    case FieldKind::date:
        return "2026-02-01";
    case FieldKind::dateOrEmpty:
    case FieldKind::any:
        return "";
    default:
        return "1";
    }
}

// Each field of each command, filled with what hardly any takes.
TEST(PrinterRefusalDetails, AreNeverMissingWhereAFieldIsWrong)
{
    constexpr std::array known = {Situation::noDay, Situation::idle, Situation::open};
    const std::vector<std::string> wrong = {
        "", "x", "-1", "0", "77777", "-77777", "0.00001", "99999999999", "31.02.2026", std::string(300, 'x')};
    int refused = 0;
    for (const Situation situation : known) {
        const DecidingPrinter printer = printerIn(situation);
        for (const CommandRule& rule : commandRules()) {
            std::vector<std::string> usual;
            std::transform(rule.fields.begin(), rule.fields.end(), std::back_inserter(usual), usualValue);
            for (std::size_t index = 0; index < usual.size(); ++index) {
                for (const std::string& value : wrong) {
                    std::vector<std::string> fields = usual;
                    fields[index] = value;
                    const Decision decision = decide(
                        printer.state, {1, static_cast<unsigned char>(rule.command), fields}, printer.now);
                    if (namesAField(decision.refusal)) {
                        ++refused;
                        EXPECT_NE(decision.detail, "")
                            << rule.name << ", field " << rule.fields[index].name << ": \"" << value << '"';
                    }
                }
            }
        }
    }
    EXPECT_GT(refused, 1000);
}

TEST(PrinterRefusalDetails, StandBehindTheSentenceOnThePaper)
{
    const Happened event = {.refusal = Refusal::valueOutOfRange,
                            .command = "setHeader",
                            .shown = {},
                            .detail = "rowNumber takes 1 to 10."};
    EXPECT_EQ(linesFor(event, 40, Codes()),
              (std::vector<std::string>{
                  "! setHeader refused with 9 valueOutOfRange: A number is outside its range; "
                  "send one that is within it. rowNumber takes 1 to 10."}));
}

// 1B moves a terminal, and what stands behind 0D 0A would be a line of its own.
TEST(PrinterRefusalDetails, CannotMoveTheTerminalNorForgeALine)
{
    const Happened event = {
        .refusal = Refusal::noSuchPicture, .command = "printGraphic", .shown = {}, .detail = "a\r\n\x1B[2Jb"};
    EXPECT_EQ(linesFor(event, 40, Codes()),
              (std::vector<std::string>{
                  "! printGraphic refused with 55 noSuchPicture: No picture is kept under this number; "
                  "upload it first. a   [2Jb"}));
}

TEST(PrinterOutputLines, OfADisplayHaveNoControlCharacters)
{
    const Happened event = {.command = "printDisplay",
                            .shown = {DisplayShows{"Spolu\r\n! 1.00\x1B[2J\xC2\x9B"}}};
    EXPECT_EQ(linesFor(event, 40, Codes()), (std::vector<std::string>{"[display] Spolu  ! 1.00 [2J "}));
}

} // namespace
} // namespace virtual_printer
