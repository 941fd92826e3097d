// Bar codes and QR codes: what can be one, and what it looks like.
#include "virtual_printer/paper/codes.h"

#include <gtest/gtest.h>

namespace virtual_printer {
namespace {

constexpr CodeForm oneDot = {.textPosition = 0, .textFont = 0, .height = 1, .width = 1};

// The dark and light modules of the first row, without the margin of ten.
std::string modulesOf(const Picture& picture)
{
    std::string modules;
    for (int x = 10; x < picture.width - 10; ++x) {
        modules.push_back(picture.at(x, 0) ? '1' : '0');
    }
    return modules;
}

// EAN-8 has 67 modules: 101, four digits of seven, 01010, four digits of seven, 101. The left digits are
// odd, the right ones their complements: 5 is 0110001 and 1001110.
TEST(BarCodes, DrawTheModulesOfAnEan8)
{
    const auto code = drawBarCode(0, "5555555", oneDot);
    ASSERT_TRUE(code.has_value());
    const std::string modules = modulesOf(*code);
    ASSERT_EQ(modules.size(), 67U);
    EXPECT_EQ(modules.substr(0, 3 + 4 * 7), "101"
                                            "0110001"
                                            "0110001"
                                            "0110001"
                                            "0110001");
    EXPECT_EQ(modules.substr(31, 5 + 3 * 7), "01010"
                                             "1001110"
                                             "1001110"
                                             "1001110");
}

TEST(BarCodes, WantTheRightCheckDigit)
{
    // 3*(4+0+8+0+0+7) of the odd places from the right and so on: the published example 40170725.
    EXPECT_TRUE(drawBarCode(0, "40170725", oneDot).has_value());
    EXPECT_FALSE(drawBarCode(0, "40170726", oneDot).has_value());
    EXPECT_TRUE(drawBarCode(0, "4006381333931", oneDot).has_value());
    EXPECT_FALSE(drawBarCode(0, "4006381333932", oneDot).has_value());
}

TEST(BarCodes, WantTheirLengthAndTheirCharacters)
{
    EXPECT_FALSE(drawBarCode(0, "123", oneDot).has_value());
    EXPECT_FALSE(drawBarCode(0, "", oneDot).has_value());
    EXPECT_FALSE(drawBarCode(1, "abc", oneDot).has_value());
    EXPECT_FALSE(drawBarCode(4, "12a4", oneDot).has_value());
    EXPECT_TRUE(drawBarCode(2, "CODE 39", oneDot).has_value());
    EXPECT_TRUE(drawBarCode(3, "Code 128", oneDot).has_value());
    EXPECT_FALSE(drawBarCode(7, "1", oneDot).has_value());
    EXPECT_FALSE(drawBarCode(-1, "1", oneDot).has_value());
}

TEST(BarCodes, AreAsWideAndHighAsTheirForm)
{
    const auto code = drawBarCode(0, "5555555", {.textPosition = 0, .textFont = 0, .height = 50, .width = 3});
    ASSERT_TRUE(code.has_value());
    EXPECT_EQ(code->width, 3 * (67 + 20));
    EXPECT_EQ(code->height, 50);
}

TEST(QrCodes, HaveTheirFinderPatternsInsideAMarginOfFour)
{
    QrForm form;
    form.moduleWidth = 1;
    const auto code = drawQrCode("TELVOFM", form);
    ASSERT_TRUE(code.has_value());
    EXPECT_EQ(code->width, 21 + 8) << "the smallest size";
    EXPECT_EQ(code->height, 21 + 8);
    for (const auto& [left, top] : {std::pair{4, 4}, std::pair{18, 4}, std::pair{4, 18}}) {
        for (int i = 0; i < 7; ++i) {
            EXPECT_TRUE(code->at(left + i, top));
            EXPECT_TRUE(code->at(left, top + i));
        }
        EXPECT_FALSE(code->at(left + 1, top + 1));
        EXPECT_TRUE(code->at(left + 3, top + 3));
    }
    EXPECT_FALSE(code->at(3, 3));
}

TEST(QrCodes, AreRefusedWhenTheTextIsTooLong)
{
    EXPECT_FALSE(drawQrCode(std::string(5000, 'x'), QrForm{}).has_value());
    EXPECT_FALSE(drawQrCode("", QrForm{}).has_value());
}

} // namespace
} // namespace virtual_printer
