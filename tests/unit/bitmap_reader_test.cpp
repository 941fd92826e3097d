#include "graphics/bitmap_reader.h"

#include "tests/unit/bitmap_file.h"

#include <gtest/gtest.h>

namespace telvofm::graphics {
namespace {

// `ones`: what the bits of the file are whose pixels are 1.
void expectItsPattern(const BitmapFile& file, bool ones = true)
{
    const auto bytes = file.bytes();
    const auto bitmap = readBitmap(bytes);
    ASSERT_TRUE(bitmap.has_value());
    ASSERT_EQ(bitmap->width, static_cast<std::size_t>(file.width));
    ASSERT_EQ(bitmap->height, static_cast<std::size_t>(std::abs(file.height)));
    ASSERT_EQ(bitmap->bitsPerPixel, 1);
    ASSERT_EQ(bitmap->bits.size(), bitmap->stride * bitmap->height);
    for (std::size_t y = 0; y < bitmap->height; ++y) {
        for (std::size_t x = 0; x < bitmap->width; ++x) {
            const unsigned byte = bitmap->bits[y * bitmap->stride + x / 8];
            ASSERT_EQ((byte >> (7 - x % 8) & 1U) != 0, BitmapFile::isSet(x, y) == ones) << x << ", " << y;
        }
    }
}

TEST(BitmapReader, ReadsRowsFromTheBottomAndFromTheTop)
{
    for (std::int32_t width = 1; width <= 70; ++width) {
        for (const std::int32_t height : {1, -1, 2, -2, 10, -10}) {
            expectItsPattern({.width = width, .height = height});
        }
    }
}

TEST(BitmapReader, ReadsEveryVersionOfTheHeader)
{
    for (const std::uint32_t size : {12U, 40U, 108U, 124U}) {
        expectItsPattern({.descriptionSize = size});
    }
    expectItsPattern({.height = -10, .descriptionSize = 108});
    expectItsPattern({.height = -10, .descriptionSize = 124});
}

TEST(BitmapReader, FindsThePixelsBehindAGap)
{
    expectItsPattern({.gap = 13});
    expectItsPattern({.descriptionSize = 12, .gap = 1});
}

TEST(BitmapReader, GivesOneForWhiteWhicheverColourIsTheFirst)
{
    const std::vector<std::uint32_t> whiteFirst = {BitmapFile::white, BitmapFile::black};
    expectItsPattern({.palette = whiteFirst}, false);
    expectItsPattern({.descriptionSize = 12, .palette = whiteFirst}, false);
    expectItsPattern({.height = -10, .descriptionSize = 124, .palette = whiteFirst}, false);
}

TEST(BitmapReader, TakesMemoryForThePixelsOnceAndNoMore)
{
    for (const auto& [width, height] :
         std::initializer_list<std::pair<std::int32_t, std::int32_t>>{{8, 1000}, {1000, 8}}) {
        const auto bytes = BitmapFile{.width = width, .height = height}.bytes();
        const auto bitmap = readBitmap(bytes);
        ASSERT_TRUE(bitmap.has_value());
        EXPECT_EQ(bitmap->bits.capacity(), bitmap->stride * bitmap->height) << width << " x " << height;
    }
}

TEST(BitmapReader, TakesOtherColoursForNotMonochrome)
{
    const auto bytes = BitmapFile{.palette = {0xFF0000, BitmapFile::white}}.bytes();
    const auto bitmap = readBitmap(bytes);
    ASSERT_TRUE(bitmap.has_value());
    EXPECT_GT(bitmap->bitsPerPixel, 1);
    EXPECT_TRUE(bitmap->bits.empty());
}

TEST(BitmapReader, ReadsAHeightOfTheOldestHeaderAsUnsigned)
{
    expectItsPattern({.width = 1, .height = 40000, .descriptionSize = 12});
}

TEST(BitmapReader, TellsFromTheHeadHowLongTheFileHasToBe)
{
    for (const std::uint32_t size : {12U, 40U, 124U}) {
        const auto bytes = BitmapFile{.width = 33, .descriptionSize = size, .gap = 5}.bytes();
        EXPECT_EQ(endOfBitmap(std::span(bytes).first(bitmapHeadSize)), bytes.size());
    }
    const auto colours = BitmapFile{.bitsPerPixel = 24}.bytes();
    EXPECT_EQ(endOfBitmap(std::span(colours).first(bitmapHeadSize)), 14U + 40);
    EXPECT_EQ(endOfBitmap({}), std::nullopt);
}

// The number of colours ends the head; where the offset of the pixels is left out, they stand behind the
// palette.
TEST(BitmapReader, ReadsTheHeadToItsLastByte)
{
    constexpr std::uint64_t colours = 0x01000000;
    const BitmapFile file;
    auto bytes = file.bytes();
    BitmapFile::overwrite(bytes, BitmapFile::pixelOffsetAt, 0);
    BitmapFile::overwrite(bytes, BitmapFile::coloursUsedAt, colours);
    const auto head = std::span(bytes).first(BitmapFile::coloursUsedAt + 4);
    EXPECT_EQ(endOfBitmap(head), 14 + 40 + colours * 4 + file.stride() * 10);
}

TEST(BitmapReader, TruncatedAnywhereItIsNoBitmap)
{
    for (const std::uint32_t size : {12U, 40U, 124U}) {
        const auto whole = BitmapFile{.descriptionSize = size}.bytes();
        for (std::size_t length = 0; length < whole.size(); ++length) {
            EXPECT_FALSE(readBitmap(std::span(whole).first(length)).has_value()) << length;
        }
    }
}

TEST(BitmapReader, RefusesAbsurdSizesWithoutReservingMemoryForThem)
{
    constexpr std::int32_t largest = 2147483647;
    constexpr std::int32_t smallest = -largest - 1;
    const auto bytes = BitmapFile{}.bytes();
    for (const auto& [width, height] :
         std::initializer_list<std::pair<std::int32_t, std::int32_t>>{{0, 10},
                                                                      {12, 0},
                                                                      {-12, 10},
                                                                      {smallest, 10},
                                                                      {largest, 10},
                                                                      {12, largest},
                                                                      {12, smallest},
                                                                      {largest, largest},
                                                                      {largest, smallest},
                                                                      {65536, 65536},
                                                                      {65535, 65535}}) {
        auto file = bytes;
        BitmapFile::overwrite(file, BitmapFile::widthAt, static_cast<std::uint32_t>(width));
        BitmapFile::overwrite(file, BitmapFile::heightAt, static_cast<std::uint32_t>(height));
        EXPECT_FALSE(readBitmap(file).has_value()) << width << " x " << height;
    }
}

TEST(BitmapReader, TellsOtherDepths)
{
    for (const std::uint16_t depth : std::initializer_list<std::uint16_t>{0, 4, 8, 16, 24, 32, 0x0101}) {
        const auto bytes = BitmapFile{.bitsPerPixel = depth}.bytes();
        const auto bitmap = readBitmap(bytes);
        ASSERT_TRUE(bitmap.has_value());
        EXPECT_EQ(bitmap->bitsPerPixel, 32); // as many as a screen has
        EXPECT_TRUE(bitmap->bits.empty());
    }
}

TEST(BitmapReader, RefusesCompressedPixels)
{
    for (const std::uint32_t compression : {1U, 2U, 3U, 4U}) {
        const auto bytes = BitmapFile{.compression = compression}.bytes();
        EXPECT_FALSE(readBitmap(bytes).has_value());
    }
}

TEST(BitmapReader, RefusesWhatIsNoBitmap)
{
    auto other = BitmapFile{}.bytes();
    other[0] = 'P';
    EXPECT_FALSE(readBitmap(other).has_value());
    auto pixelsInHeader = BitmapFile{}.bytes();
    pixelsInHeader[10] = 14 + 40 - 1;
    EXPECT_FALSE(readBitmap(pixelsInHeader).has_value());
    auto pixelsBehindEnd = BitmapFile{}.bytes();
    pixelsBehindEnd[13] = 0xFF;
    EXPECT_FALSE(readBitmap(pixelsBehindEnd).has_value());
    auto headerOfAnotherSize = BitmapFile{}.bytes();
    BitmapFile::overwrite(headerOfAnotherSize, BitmapFile::descriptionSizeAt, (1U << 24U) + 40);
    EXPECT_FALSE(readBitmap(headerOfAnotherSize).has_value());
    EXPECT_FALSE(readBitmap({}).has_value());
}

} // namespace
} // namespace telvofm::graphics
