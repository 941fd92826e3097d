#include "graphics/logo_layouts.h"

#include <gtest/gtest.h>
#include <random>

namespace telvofm::graphics {
namespace {

// The layouts dot by dot, as they are defined.
class DotByDot
{
public:
    DotByDot(const Bitmap& source, bool isInverse) : bitmap(source), inverse(isInverse) {}

    [[nodiscard]] std::string raster() const
    {
        std::string layout = header(tiles(bitmap.width), bitmap.height + 7);
        for (std::size_t y = 0; y < tiles(bitmap.height) * 8; ++y) {
            for (std::size_t k = 0; k < tiles(bitmap.width); ++k) {
                layout += byteOf([&](std::size_t i) { return dot(8 * k + i, y); });
            }
        }
        return layout;
    }

    [[nodiscard]] std::string bands() const
    {
        std::string layout = header(bitmap.width, tiles(bitmap.height));
        for (std::size_t b = 0; b < tiles(bitmap.height); ++b) {
            for (std::size_t x = 0; x < bitmap.width; ++x) {
                layout += byteOf([&](std::size_t i) { return dot(x, 8 * b + i); });
            }
        }
        return layout;
    }

    [[nodiscard]] std::string columns() const
    {
        std::string layout = header(tiles(bitmap.width), tiles(bitmap.height));
        for (std::size_t x = 0; x < 8 * tiles(bitmap.width); ++x) {
            for (std::size_t b = 0; b < tiles(bitmap.height); ++b) {
                layout += byteOf([&](std::size_t i) { return dot(x, 8 * b + i); });
            }
        }
        return layout;
    }

private:
    static std::size_t tiles(std::size_t dots) { return (dots + 7) / 8; }

    static std::string header(std::size_t first, std::size_t second)
    {
        return {static_cast<char>(first), 0, static_cast<char>(second), 0};
    }

    [[nodiscard]] bool dot(std::size_t x, std::size_t y) const
    {
        if (x >= bitmap.width || y >= bitmap.height || bitmap.pixels[y * bitmap.width + x] == 1) {
            return inverse;
        }
        return !inverse;
    }

    template <typename Dot>
    static char byteOf(Dot dotAt)
    {
        unsigned byte = 0;
        for (std::size_t i = 0; i < 8; ++i) {
            byte = byte << 1U | (dotAt(i) ? 1U : 0U);
        }
        return static_cast<char>(byte);
    }

    const Bitmap& bitmap;
    bool inverse;
};

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
