#include "graphics/logo_layouts.h"
#include "tests/unit/dot_by_dot.h"

#include <algorithm>
#include <functional>
#include <gtest/gtest.h>
#include <random>

namespace telvofm::graphics {
namespace {

Bitmap randomBitmap(std::size_t width, std::size_t height, std::mt19937& random)
{
    Bitmap bitmap{.width = width, .height = height, .pixels = {}};
    for (std::size_t i = 0; i < width * height; ++i) {
        bitmap.pixels.push_back(random() & 1U);
    }
    return bitmap;
}

void expectSameAsDotByDot(const Bitmap& bitmap)
{
    for (const bool inverse : {false, true}) {
        const LogoLayouts layouts = logoLayouts(bitmap, inverse);
        const DotByDot expected(bitmap, inverse);
        ASSERT_EQ(layouts.raster, expected.raster()) << bitmap.width << " x " << bitmap.height;
        ASSERT_EQ(layouts.bands, expected.bands()) << bitmap.width << " x " << bitmap.height;
        ASSERT_EQ(layouts.columns, expected.columns()) << bitmap.width << " x " << bitmap.height;
        for (const std::string& layout : {std::cref(layouts.raster), std::cref(layouts.bands)}) {
            ASSERT_EQ(*(layout.data() + layout.size()), '\0') << "written behind its end";
        }
    }
}

TEST(LogoLayouts, MatchTheDotByDotDefinitionForEverySizeUpToSeventy)
{
    std::mt19937 random(1);
    for (std::size_t width = 1; width <= 70; ++width) {
        for (std::size_t height = 1; height <= 70; ++height) {
            expectSameAsDotByDot(randomBitmap(width, height, random));
        }
    }
}

TEST(LogoLayouts, HeaderBytesAreTheLowBytesOfLargeSizes)
{
    std::mt19937 random(2);
    expectSameAsDotByDot(randomBitmap(2049, 3, random));
    expectSameAsDotByDot(randomBitmap(3, 2049, random));
    expectSameAsDotByDot(randomBitmap(300, 300, random));
}

Bitmap drawn(std::initializer_list<std::string_view> rows)
{
    Bitmap bitmap{.width = rows.begin()->size(), .height = rows.size(), .pixels = {}};
    for (const std::string_view row : rows) {
        for (const char pixel : row) {
            bitmap.pixels.push_back(pixel == '#' ? 1 : 0);
        }
    }
    return bitmap;
}

std::string bytes(std::initializer_list<unsigned> values)
{
    return {values.begin(), values.end()};
}

TEST(LogoLayouts, TwelveByTenByteByByte)
{
    const Bitmap bitmap = drawn({"#...........", //
                                 "##..........", //
                                 "###.........", //
                                 "............", //
                                 "...........#", //
                                 "..........##", //
                                 "............", //
                                 "####........", //
                                 ".#.#.#.#.#.#", //
                                 "........####"});
    const std::string raster = bytes({0x02, 0x00, 0x11, 0x00,             // the third: height and seven
                                      0x7F, 0xF0, 0x3F, 0xF0, 0x1F, 0xF0, // rows 0 to 2
                                      0xFF, 0xF0, 0xFF, 0xE0, 0xFF, 0xC0, // 3 to 5
                                      0xFF, 0xF0, 0x0F, 0xF0,             // 6 and 7
                                      0xAA, 0xA0, 0xFF, 0x00,             // 8 and 9
                                      0x00, 0x00, 0x00, 0x00, 0x00, 0x00, // the padding below
                                      0x00, 0x00, 0x00, 0x00, 0x00, 0x00});
    const std::string bands = bytes({0x0C, 0x00, 0x02, 0x00, //
                                     0x1E, 0x9E, 0xDE, 0xFE, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFB, 0xF3,
                                     0xC0, 0x40, 0xC0, 0x40, 0xC0, 0x40, 0xC0, 0x40, 0x80, 0x00, 0x80, 0x00});
    const std::string columns = bytes({0x02, 0x00, 0x02, 0x00,                         //
                                       0x1E, 0xC0, 0x9E, 0x40, 0xDE, 0xC0, 0xFE, 0x40, // columns 0 to 3
                                       0xFF, 0xC0, 0xFF, 0x40, 0xFF, 0xC0, 0xFF, 0x40, // 4 to 7
                                       0xFF, 0x80, 0xFF, 0x00, 0xFB, 0x80, 0xF3, 0x00, // 8 to 11
                                       0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00});
    const LogoLayouts layouts = logoLayouts(bitmap, false);
    EXPECT_EQ(layouts.raster, raster);
    EXPECT_EQ(layouts.bands, bands);
    EXPECT_EQ(layouts.columns, columns);

    // Inverse, every dot changes, the padding too; the header does not.
    const auto inverted = [](std::string layout) {
        std::transform(layout.begin() + 4, layout.end(), layout.begin() + 4,
                       [](char byte) { return static_cast<char>(~byte); });
        return layout;
    };
    const LogoLayouts inverse = logoLayouts(bitmap, true);
    EXPECT_EQ(inverse.raster, inverted(raster));
    EXPECT_EQ(inverse.bands, inverted(bands));
    EXPECT_EQ(inverse.columns, inverted(columns));
}

TEST(LogoLayouts, TwelveByTenHasTheSizesOfTheExample)
{
    const Bitmap clear{.width = 12, .height = 10, .pixels = std::vector<std::uint8_t>(120, 0)};
    const LogoLayouts layouts = logoLayouts(clear, false);
    EXPECT_EQ(layouts.raster.substr(0, 4), std::string("\x02\x00\x11\x00", 4));
    EXPECT_EQ(layouts.raster.size(), 4U + 16 * 2);
    EXPECT_EQ(layouts.bands.substr(0, 4), std::string("\x0C\x00\x02\x00", 4));
    EXPECT_EQ(layouts.bands.size(), 4U + 24);
    EXPECT_EQ(layouts.columns.substr(0, 4), std::string("\x02\x00\x02\x00", 4));
    EXPECT_EQ(layouts.columns.size(), 4U + 32);
}

TEST(LogoLayouts, WithoutHeightRasterAndBandsHoldTheirHeadersOnly)
{
    const LogoLayouts layouts = logoLayouts(Bitmap{.width = 12, .height = 0, .pixels = {}}, true);
    EXPECT_EQ(layouts.raster, std::string("\x02\x00\x07\x00", 4));
    EXPECT_EQ(layouts.bands, std::string("\x0C\x00\x00\x00", 4));
}

} // namespace
} // namespace telvofm::graphics
