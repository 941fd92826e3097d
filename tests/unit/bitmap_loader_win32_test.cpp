// What is Wine's own doing: the rows of the table in docs/graphics.md where its loader is not Windows'.
// These tests say nothing of Windows and are left out there; a newer Wine that makes one fail wants a look at
// the table.
#include "tests/unit/bitmap_loader_fixture.h"

#include <algorithm>
#include <windows.h>

namespace telvofm::graphics {
namespace {

class BitmapsUnderWine : public BitmapLoaderFixture
{
protected:
    void SetUp() override
    {
        if (::GetProcAddress(::GetModuleHandleA("ntdll.dll"), "wine_get_version") == nullptr) {
            GTEST_SKIP() << "this is not Wine";
        }
    }

    void expectBlank(const BitmapFile& file)
    {
        write(file.bytes());
        const Bitmap bitmap = loadMonochrome(name);
        EXPECT_EQ(bitmap.width, static_cast<std::size_t>(file.width));
        EXPECT_EQ(bitmap.height, static_cast<std::size_t>(std::abs(file.height)));
        EXPECT_EQ(std::count(bitmap.pixels.begin(), bitmap.pixels.end(), 1), 0);
    }
};

TEST_F(BitmapsUnderWine, WithWhiteFirstAreTakenForColoured)
{
    const std::vector<std::uint32_t> whiteFirst = {BitmapFile::white, BitmapFile::black};
    for (const std::uint32_t size : {12U, 40U}) {
        EXPECT_EQ(codeOf(BitmapFile{.descriptionSize = size, .palette = whiteFirst}.bytes()),
                  code::bitmapNotMonochrome);
    }
}

TEST_F(BitmapsUnderWine, OfTheNewerHeadersAreTakenForColoured)
{
    for (const std::uint32_t size : {108U, 124U}) {
        EXPECT_EQ(codeOf(BitmapFile{.descriptionSize = size}.bytes()), code::bitmapNotMonochrome);
    }
}

TEST_F(BitmapsUnderWine, WithRowsFromTheTopAreBlank)
{
    expectBlank({.height = -10});
}

TEST_F(BitmapsUnderWine, OfOneBitThatSayTheyAreCompressedAreBlank)
{
    expectBlank({.compression = 1});
}

TEST_F(BitmapsUnderWine, LackRowsWhereTheFileIsTruncated)
{
    const auto bytes = BitmapFile{}.bytes();
    write(bytes, bytes.size() - 20); // five rows of four bytes, the upper ones of the picture
    const Bitmap bitmap = loadMonochrome(name);
    ASSERT_EQ(bitmap.pixels.size(), 120U);
    EXPECT_EQ(std::count(bitmap.pixels.begin(), bitmap.pixels.begin() + 60, 1), 0);
    EXPECT_GT(std::count(bitmap.pixels.begin() + 60, bitmap.pixels.end(), 1), 0);
    write(bytes, bytes.size() - 1);
    EXPECT_EQ(codeOfLoading(), 0);
}

} // namespace
} // namespace telvofm::graphics
