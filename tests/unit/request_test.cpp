#include "device/request.h"

#include "device/character_map.h"
#include "tests/unit/bytes.h"

#include <gtest/gtest.h>

#include <climits>

namespace telvofm::test {
namespace {

class RequestTest : public ::testing::Test
{
protected:
    Request begin(const CharacterMap* conversion = nullptr, int address = 1)
    {
        return {storage, address, Command::itemSale, conversion};
    }

    // What stands between the command code and the closing 0x04.
    static std::string fieldsOf(const Request& request)
    {
        const std::string_view all = request.bytes();
        EXPECT_EQ(all.substr(0, 3), bytes({0x1C, 0x01, 0x24}));
        EXPECT_EQ(all.back(), 0x04);
        return std::string(all.substr(3, all.size() - 4));
    }

    static std::string field(const std::string& text) { return text + '\0'; }

    std::string storage;
};

TEST_F(RequestTest, WithoutFieldsIsFourBytes)
{
    EXPECT_EQ(Request(storage, 1, Command::printJobCancel, nullptr).bytes(), bytes({0x1C, 0x01, 0xE0, 0x04}));
}

TEST_F(RequestTest, SellingDayBeginWithNumberZero)
{
    EXPECT_EQ(Request(storage, 1, Command::sellingDayBegin, nullptr).number(0).bytes(),
              bytes({0x1C, 0x01, 0x29, 0x30, 0x00, 0x04}));
}

TEST_F(RequestTest, CarriesTheLowByteOfTheAddress)
{
    EXPECT_EQ(begin(nullptr, 257).bytes()[1], '\x01');
    EXPECT_EQ(begin(nullptr, -1).bytes()[1], '\xFF');
    EXPECT_EQ(begin(nullptr, 0x1C).bytes()[1], '\x1C');
}

TEST_F(RequestTest, BeginsAnewInTheSameStorage)
{
    begin().raw("something long that must not stay");
    EXPECT_EQ(begin().bytes(), bytes({0x1C, 0x01, 0x24, 0x04}));
}

TEST_F(RequestTest, NumbersArePlainDecimal)
{
    EXPECT_EQ(fieldsOf(begin().number(-5)), field("-5"));
    EXPECT_EQ(fieldsOf(begin().number(INT_MIN)), field("-2147483648"));
}

TEST_F(RequestTest, AmountsHaveTheirDecimalsAndTextsStayAsTheyAre)
{
    EXPECT_EQ(fieldsOf(begin().amount(number(1.5), 3)), field("1.500"));
    EXPECT_EQ(fieldsOf(begin().amount(tenThousandths(83333), 2)), field("8.33"));
    EXPECT_EQ(fieldsOf(begin().amount(text("12,5"), 2)), field("12,5"));
    EXPECT_EQ(fieldsOf(begin().amount(text(nullptr), 2)), field(""));
}

TEST_F(RequestTest, IntegerAmountsAreDividedByTheirUnit)
{
    EXPECT_EQ(fieldsOf(begin().amount(hundredths(1250), 2)), field("12.50"));
    EXPECT_EQ(fieldsOf(begin().amount(thousandths(-1), 3)), field("-0.001"));
    EXPECT_EQ(fieldsOf(begin().amount(thousandths(INT_MAX), 3)), field("2147483.647"));
    EXPECT_EQ(fieldsOf(begin().amount(tenThousandths(INT_MAX), 3)), field("214748.365"));
    EXPECT_EQ(fieldsOf(begin().amount(hundredths(INT_MIN), 2)), field("-21474836.48"));
}

TEST_F(RequestTest, ExactlyZeroIsTheSingleCharacter)
{
    EXPECT_EQ(fieldsOf(begin().amountOrZero(number(0.0), 2)), field("0"));
    EXPECT_EQ(fieldsOf(begin().amountOrZero(number(-0.0), 2)), field("0"));
    EXPECT_EQ(fieldsOf(begin().amountOrZero(number(0.001), 2)), field("0.00"));
    EXPECT_EQ(fieldsOf(begin().amountOrZero(text("0.00"), 2)), field("0.00"));
}

TEST_F(RequestTest, TheMarkStandsInFrontOfEveryAmount)
{
    EXPECT_EQ(fieldsOf(begin().number(3).markedAmountOrZero('+', number(0.0), 2)), field("3") + field("+0"));
    EXPECT_EQ(fieldsOf(begin().markedAmountOrZero('-', number(2.5), 2)), field("-2.50"));
    EXPECT_EQ(fieldsOf(begin().markedAmountOrZero('%', text(""), 2)), field("%"));
}

TEST_F(RequestTest, AnEmptyTextIsJustTheFieldsEnd)
{
    EXPECT_EQ(fieldsOf(begin().text("")), bytes({0x00}));
    EXPECT_EQ(fieldsOf(begin().raw("").raw("")), bytes({0x00, 0x00}));
}

TEST_F(RequestTest, ACharacterGoesAsItStandsEvenZero)
{
    EXPECT_EQ(fieldsOf(begin().character('A')), field("A"));
    EXPECT_EQ(fieldsOf(begin().character('\0')), bytes({0x00, 0x00}));
}

TEST_F(RequestTest, NothingIsEscaped)
{
    EXPECT_EQ(fieldsOf(begin().text("\x04\x1C")), field("\x04\x1C"));
}

TEST_F(RequestTest, PaddingFillsShortTextsAndLeavesLongOnesWhole)
{
    const std::string twelve(12, 'x');
    const std::string forty(40, 'x');
    const std::string fortyTwo(42, 'x');
    EXPECT_EQ(fieldsOf(begin().paddedText(twelve, 40)), field(twelve + std::string(28, ' ')));
    EXPECT_EQ(fieldsOf(begin().paddedText(forty, 40)), field(forty));
    EXPECT_EQ(fieldsOf(begin().paddedText(fortyTwo, 40)), field(fortyTwo));
    EXPECT_EQ(fieldsOf(begin().paddedText(twelve, 0)), field(twelve));
    EXPECT_EQ(fieldsOf(begin().paddedText("", 40)), field(std::string(40, ' ')));
}

TEST_F(RequestTest, FixedTextIsFilledOrCut)
{
    EXPECT_EQ(fieldsOf(begin().fixedText("ks", 3)), field("ks "));
    EXPECT_EQ(fieldsOf(begin().fixedText("balenie", 3)), field("bal"));
    EXPECT_EQ(fieldsOf(begin().fixedText("", 3)), field("   "));
}

TEST_F(RequestTest, TextsAreConvertedWhenConversionIsOn)
{
    const std::string library = bytes({0xC8, 0x61, 0x9A});
    const std::string printer = bytes({0xAC, 0x61, 0xE7});
    const auto* map = &CharacterMap::outgoing;
    EXPECT_EQ(fieldsOf(begin(map).text(library)), field(printer));
    EXPECT_EQ(fieldsOf(begin(map).paddedText(library, 4)), field(printer + " "));
    EXPECT_EQ(fieldsOf(begin(map).fixedText(library, 2)), field(printer.substr(0, 2)));
    EXPECT_EQ(fieldsOf(begin(map).text("\x80")), field("\x80"));
}

TEST_F(RequestTest, RawTextsAmountsAndCharactersAreNeverConverted)
{
    const auto* map = &CharacterMap::outgoing;
    EXPECT_EQ(fieldsOf(begin(map).raw("\x8A")), field("\x8A"));
    EXPECT_EQ(fieldsOf(begin(map).amount(text("\x8A"), 2)), field("\x8A"));
    EXPECT_EQ(fieldsOf(begin(map).character('\x8A')), field("\x8A"));
}

TEST_F(RequestTest, WithoutConversionTextsGoAsTheyAre)
{
    EXPECT_EQ(fieldsOf(begin().text("\x8A")), field("\x8A"));
}

} // namespace
} // namespace telvofm::test
