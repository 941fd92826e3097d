// What each kind of field takes.
#include "virtual_printer/language/fields.h"

#include <gtest/gtest.h>

namespace virtual_printer {
namespace {

Refusal check(FieldKind kind, const std::string& text)
{
    const std::vector<Field> kinds = {{kind, "field"}};
    const std::vector<std::string> fields = {text};
    return Fields::check(kinds, fields).refusal;
}

TEST(PrinterFields, WholeNumbersHaveNoDecimals)
{
    EXPECT_EQ(check(FieldKind::whole, "-1"), Refusal::none);
    EXPECT_EQ(check(FieldKind::whole, "7.0"), Refusal::none);
    EXPECT_EQ(check(FieldKind::whole, "7.5"), Refusal::tooManyDecimals);
    EXPECT_EQ(check(FieldKind::whole, ""), Refusal::badNumber);
    EXPECT_EQ(check(FieldKind::whole, "+1"), Refusal::badNumber);
    EXPECT_EQ(check(FieldKind::whole, "2147483647"), Refusal::none);
    EXPECT_EQ(check(FieldKind::whole, "2147483648"), Refusal::valueOutOfRange);
    EXPECT_EQ(check(FieldKind::whole, "99999999999999999999999"), Refusal::valueOutOfRange);
}

TEST(PrinterFields, MoneyIsNeverCut)
{
    EXPECT_EQ(check(FieldKind::money, "9999999.99"), Refusal::none);
    EXPECT_EQ(check(FieldKind::money, "-9999999.99"), Refusal::none);
    EXPECT_EQ(check(FieldKind::money, "10000000.00"), Refusal::valueOutOfRange);
    EXPECT_EQ(check(FieldKind::money, "-10000000"), Refusal::valueOutOfRange);
    EXPECT_EQ(check(FieldKind::money, "12.505"), Refusal::tooManyDecimals);
    EXPECT_EQ(check(FieldKind::money, "12.500"), Refusal::none);
    EXPECT_EQ(check(FieldKind::money, "12,50"), Refusal::badNumber);
    EXPECT_EQ(check(FieldKind::money, "+12.50"), Refusal::badNumber);
}

TEST(PrinterFields, QuantitiesHaveThreeDecimals)
{
    EXPECT_EQ(check(FieldKind::quantity, "0.333"), Refusal::none);
    EXPECT_EQ(check(FieldKind::quantity, "0.3333"), Refusal::tooManyDecimals);
    EXPECT_EQ(check(FieldKind::quantity, "999999.999"), Refusal::none);
    EXPECT_EQ(check(FieldKind::quantity, "1000000"), Refusal::valueOutOfRange);
}

TEST(PrinterFields, RatesHaveFourDecimalsAndMayStandBehindAPlus)
{
    EXPECT_EQ(check(FieldKind::rate, "26.0950"), Refusal::none);
    EXPECT_EQ(check(FieldKind::rate, "+26.0950"), Refusal::none);
    EXPECT_EQ(check(FieldKind::rate, "+0"), Refusal::none);
    EXPECT_EQ(check(FieldKind::rate, "++1"), Refusal::badNumber);
    EXPECT_EQ(check(FieldKind::rate, "1.00001"), Refusal::tooManyDecimals);
    EXPECT_EQ(check(FieldKind::rate, "-1"), Refusal::valueOutOfRange);
    EXPECT_EQ(check(FieldKind::rate, "100000"), Refusal::valueOutOfRange);
}

TEST(PrinterFields, DegreesHaveTenDecimalsAndReverseConstantsAny)
{
    EXPECT_EQ(check(FieldKind::degrees, "-48.1234567891"), Refusal::none);
    EXPECT_EQ(check(FieldKind::degrees, "48.12345678912"), Refusal::tooManyDecimals);
    EXPECT_EQ(check(FieldKind::degrees, "180.1"), Refusal::valueOutOfRange);
    EXPECT_EQ(check(FieldKind::numberOrEmpty, "0.1234567890123"), Refusal::none);
    EXPECT_EQ(check(FieldKind::numberOrEmpty, "x"), Refusal::badNumber);
    EXPECT_EQ(check(FieldKind::numberOrEmpty, ""), Refusal::none);
}

TEST(PrinterFields, LettersAreOneCharacter)
{
    EXPECT_EQ(check(FieldKind::letter, "A"), Refusal::none);
    EXPECT_EQ(check(FieldKind::letter, ""), Refusal::badText);
    EXPECT_EQ(check(FieldKind::letter, "AB"), Refusal::badText);
    EXPECT_EQ(check(FieldKind::letter, "\xC5\xA0"), Refusal::badText);
    EXPECT_EQ(check(FieldKind::letter, "\x07"), Refusal::badText);
    EXPECT_EQ(check(FieldKind::letterOrEmpty, ""), Refusal::none);
    EXPECT_EQ(check(FieldKind::letterOrEmpty, " "), Refusal::none);
    EXPECT_EQ(check(FieldKind::letterOrEmpty, "AB"), Refusal::badText);
}

TEST(PrinterFields, TextsAreCountedInCharacters)
{
    std::string longest;
    for (int i = 0; i < 255; ++i) {
        longest += "\xC5\xBE";
    }
    EXPECT_EQ(check(FieldKind::text, ""), Refusal::none);
    EXPECT_EQ(check(FieldKind::text, longest), Refusal::none);
    EXPECT_EQ(check(FieldKind::text, longest + "x"), Refusal::badText);
}

TEST(PrinterFields, TextsAreUtf8)
{
    EXPECT_EQ(check(FieldKind::text, "\xE2\x82\xAC \xF0\x9F\x8D\x9E"), Refusal::none);
    for (const char* text : {"\x80", "\xC5", "\xC5 ", "\xC0\xAF", "\xE0\x80\xAF", "\xED\xA0\x80",
                             "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xFF"}) {
        EXPECT_EQ(check(FieldKind::text, text), Refusal::badText);
        EXPECT_EQ(check(FieldKind::any, text), Refusal::none);
        EXPECT_EQ(check(FieldKind::secret, text), Refusal::none);
    }
}

TEST(PrinterFields, DatesAreDates)
{
    for (const FieldKind kind : {FieldKind::date, FieldKind::dateOrEmpty}) {
        EXPECT_EQ(check(kind, "31.01.2026"), Refusal::none);
        EXPECT_EQ(check(kind, "31.02.2026"), Refusal::badDate);
        EXPECT_EQ(check(kind, " "), Refusal::badDate);
    }
    EXPECT_EQ(check(FieldKind::date, ""), Refusal::badDate);
    EXPECT_EQ(check(FieldKind::dateOrEmpty, ""), Refusal::none);
}

TEST(PrinterFields, TheFirstWrongOneIsTold)
{
    const std::vector<Field> kinds = {
        {FieldKind::text, "a"}, {FieldKind::money, "b"}, {FieldKind::date, "c"}};
    const Verdict verdict = Fields::check(kinds, std::vector<std::string>{"ok", "1.001", "never"});
    EXPECT_EQ(verdict.refusal, Refusal::tooManyDecimals);
    EXPECT_EQ(verdict.detail,
              "b takes a number with at most two decimals, at most 9999999.99 to either side.");
}

TEST(PrinterFields, AreGivenAsValues)
{
    const std::vector<std::string> all = {"-7", "12.5", "1.5", "+26.0950", "0",
                                          "A",  " ",    "",    " a b  ",   "31.01.2026"};
    const Fields fields({}, all);
    EXPECT_EQ(fields.count(), 10U);
    EXPECT_EQ(fields.whole(0), -7);
    EXPECT_EQ(fields.money(1), 1250);
    EXPECT_EQ(fields.quantity(2), 1500);
    EXPECT_EQ(fields.rate(3).tenThousandths, 260950);
    EXPECT_TRUE(fields.rate(3).divides);
    EXPECT_EQ(fields.rate(4).tenThousandths, 0);
    EXPECT_FALSE(fields.rate(4).divides);
    EXPECT_EQ(fields.letter(5), 'A');
    EXPECT_EQ(fields.letter(6), 0);
    EXPECT_EQ(fields.letter(7), 0);
    EXPECT_EQ(fields.text(8), " a b");
    EXPECT_EQ(fields.raw(8), " a b  ");
    EXPECT_EQ(toText(fields.moment(9, Edge::last)), "2026-01-31 23:59:59");
}

} // namespace
} // namespace virtual_printer
