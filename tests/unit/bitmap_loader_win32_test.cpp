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
        const Bitmap bitmap = loadBlank(file.bytes());
        EXPECT_EQ(bitmap.width, static_cast<std::size_t>(file.width));
        EXPECT_EQ(bitmap.height, static_cast<std::size_t>(std::abs(file.height)));
    }

    Bitmap loadBlank(const std::vector<std::uint8_t>& bytes)
    {
        write(bytes);
        Bitmap bitmap = loadMonochrome(name);
        EXPECT_FALSE(bitmap.pixels.empty());
        EXPECT_EQ(std::count(bitmap.pixels.begin(), bitmap.pixels.end(), 1), 0);
        return bitmap;
    }

    static std::vector<std::uint8_t> fileWith(std::size_t position, std::uint32_t value)
    {
        auto bytes = BitmapFile{}.bytes();
        BitmapFile::overwrite(bytes, position, value);
        return bytes;
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
    expectBlank({.width = 1, .height = -65536});
}

TEST_F(BitmapsUnderWine, WithoutASizeOrWithAWidthBelowZeroAreBlank)
{
    loadBlank(fileWith(BitmapFile::widthAt, 0));
    loadBlank(fileWith(BitmapFile::heightAt, 0));
    loadBlank(fileWith(BitmapFile::widthAt, 0xFFFFFFF4U)); // -12
}

// Wine counts from behind the file header of 14 bytes: there the offset is 0 to it, and less is far away.
TEST_F(BitmapsUnderWine, WhosePixelsWouldBeInTheFileHeaderAreBlankOrReadBehindThePalette)
{
    loadBlank(fileWith(BitmapFile::pixelOffsetAt, 1));
    loadBlank(fileWith(BitmapFile::pixelOffsetAt, 13));
    expectPattern(fileWith(BitmapFile::pixelOffsetAt, 14), BitmapFile{});
}

TEST_F(BitmapsUnderWine, WhosePixelsWouldBeInTheDescriptionAreTheBytesThere)
{
    const BitmapFile file;
    for (const std::uint32_t offset : {15U, 53U}) {
        const auto bytes = fileWith(BitmapFile::pixelOffsetAt, offset);
        write(bytes);
        const Bitmap bitmap = loadMonochrome(name);
        ASSERT_EQ(bitmap.width, 12U);
        ASSERT_EQ(bitmap.height, 10U);
        for (std::size_t y = 0; y < bitmap.height; ++y) {
            for (std::size_t x = 0; x < bitmap.width; ++x) {
                const std::size_t row = bitmap.height - 1 - y; // the lowest comes first
                const unsigned byte = bytes[offset + row * file.stride() + x / 8];
                ASSERT_EQ(bitmap.pixels[y * bitmap.width + x], byte >> (7 - x % 8) & 1U)
                    << x << ", " << y << " of the pixels at " << offset;
            }
        }
    }
}

TEST_F(BitmapsUnderWine, WhosePixelsWouldBeBehindTheEndAreBlank)
{
    // The file has 102 bytes, and nothing else lies in the 64 KB where the system has it. Gigabytes behind
    // may lie whatever the process holds: Wine reads that, once in a hundred starts.
    for (const std::uint32_t offset : {102U, 10000U}) {
        SCOPED_TRACE(offset);
        loadBlank(fileWith(BitmapFile::pixelOffsetAt, offset));
    }
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
