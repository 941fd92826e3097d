// The code pages of the links and UTF-8.
#include "virtual_printer/language/code_page.h"

#include <gtest/gtest.h>

namespace virtual_printer {
namespace {

TEST(PrinterCodePages, KnowTheLettersOfBothLinks)
{
    EXPECT_EQ(toUtf8("\x8A\xE1\x9D", CodePage::windows1250), "Šáť");
    EXPECT_EQ(toUtf8("\xE6\xA0\x9C", CodePage::cp852), "Šáť");
    EXPECT_EQ(fromUtf8("Šáť", CodePage::windows1250), "\x8A\xE1\x9D");
    EXPECT_EQ(fromUtf8("Šáť", CodePage::cp852), "\xE6\xA0\x9C");
}

TEST(PrinterCodePages, GiveBackEveryByte)
{
    for (const CodePage page : {CodePage::windows1250, CodePage::cp852}) {
        for (int value = 0; value < 256; ++value) {
            const std::string byte(1, static_cast<char>(value));
            EXPECT_EQ(fromUtf8(toUtf8(byte, page), page), byte) << value;
        }
    }
}

TEST(PrinterCodePages, PutAQuestionMarkForWhatTheyDoNotHave)
{
    EXPECT_EQ(fromUtf8("a\u2192b", CodePage::cp852), "a?b");
    EXPECT_EQ(fromUtf8("\u20AC", CodePage::cp852), "?");
    EXPECT_EQ(fromUtf8("\u20AC", CodePage::windows1250), "\x80");
}

} // namespace
} // namespace virtual_printer
