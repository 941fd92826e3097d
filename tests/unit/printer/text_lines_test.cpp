// Texts on lines of a fixed number of columns.
#include "virtual_printer/paper/text_lines.h"

#include <gmock/gmock.h>

namespace virtual_printer {
namespace {

using ::testing::ElementsAre;

TEST(TextLines, CountCharactersAndNotBytes)
{
    EXPECT_EQ(widthOf("čaj"), 3U);
    EXPECT_THAT(broken("čajčaj", 4), ElementsAre("čajč", "aj"));
    EXPECT_THAT(spread("čaj", "1.00", 10), ElementsAre("čaj   1.00"));
    EXPECT_THAT(centred("čaj", 7), ElementsAre("  čaj"));
}

TEST(TextLines, KeepAnEmptyTextAsALine)
{
    EXPECT_THAT(broken("", 4), ElementsAre(""));
    EXPECT_THAT(spread("", "1", 4), ElementsAre("   1"));
}

TEST(TextLines, GiveALongLeftPartLinesOfItsOwn)
{
    EXPECT_THAT(spread("abcdefghijkl", "1.00", 8), ElementsAre("abcdefgh", "ijkl1.00"));
}

TEST(TextLines, LoseTheirControlCharacters)
{
    EXPECT_EQ(withoutControls("a\x1B[2Jb\x7F\xC2\x9B"), "a [2Jb  ");
    EXPECT_EQ(withoutControls("\xC2\xA0"), "\xC2\xA0");
}

} // namespace
} // namespace virtual_printer
