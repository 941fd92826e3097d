// The same files give the same pixels on every platform: what each platform's loader makes of bottom-up files
// with a black and a white palette entry, and what it refuses.
#include "graphics/bitmap.h"

#include "device/telvo06fm_exception.h"
#include "tests/unit/bitmap_file.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

namespace telvofm::graphics {
namespace {

class BitmapLoader : public testing::Test
{
protected:
    void TearDown() override { std::filesystem::remove(name); }

    void write(std::vector<std::uint8_t> bytes)
    {
        std::ofstream file(name, std::ios::binary);
        file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    }

    int codeOfLoading()
    {
        try {
            loadMonochrome(name);
        } catch (const Telvo06FMException& failure) {
            return failure.code;
        }
        return 0;
    }

    std::string name = std::string(testing::UnitTest::GetInstance()->current_test_info()->name()) + ".bmp";
};

std::vector<std::uint8_t> whiteSecond(std::vector<std::uint8_t> file)
{
    std::fill_n(file.begin() + 14 + 40 + 4, 3, std::uint8_t{0xFF});
    return file;
}

TEST_F(BitmapLoader, GivesOneForSetBitsInRowsFromTheTop)
{
    for (const std::int32_t width : {1, 7, 8, 9, 12, 16, 17, 33, 40}) {
        write(whiteSecond(BitmapFile{.width = width, .height = 10}.bytes()));
        const Bitmap bitmap = loadMonochrome(name);
        ASSERT_EQ(bitmap.width, static_cast<std::size_t>(width));
        ASSERT_EQ(bitmap.height, 10U);
        ASSERT_EQ(bitmap.pixels.size(), bitmap.width * 10);
        for (std::size_t y = 0; y < 10; ++y) {
            for (std::size_t x = 0; x < bitmap.width; ++x) {
                const unsigned expected = x < 8 ? static_cast<unsigned>(y) >> (7 - x) & 1U : 0;
                EXPECT_EQ(bitmap.pixels[y * bitmap.width + x], expected) << x << ", " << y;
            }
        }
    }
}

TEST_F(BitmapLoader, RefusesColours)
{
    auto file = BitmapFile{.width = 4, .height = 4, .bitsPerPixel = 24}.bytes();
    file.resize(file.size() + 4 * 12);
    write(file);
    EXPECT_EQ(codeOfLoading(), code::bitmapNotMonochrome);
}

TEST_F(BitmapLoader, RefusesWhatIsNoBitmap)
{
    EXPECT_EQ(codeOfLoading(), code::transportFailure);
    write({});
    EXPECT_EQ(codeOfLoading(), code::transportFailure);
    write({'B', 'M', 1, 2, 3});
    EXPECT_EQ(codeOfLoading(), code::transportFailure);
}

TEST_F(BitmapLoader, RefusesAFolder)
{
    std::filesystem::create_directory(name);
    EXPECT_EQ(codeOfLoading(), code::transportFailure);
}

TEST_F(BitmapLoader, SaysOnStandardOutputWhatItLoadsAndThatItCould)
{
    write(whiteSecond(BitmapFile{}.bytes()));
    testing::internal::CaptureStdout();
    loadMonochrome(name);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "Path: " + name + "\nOK\n");

    testing::internal::CaptureStdout();
    EXPECT_THROW(loadMonochrome("missing.bmp"), Telvo06FMException);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "Path: missing.bmp\n");
}

} // namespace
} // namespace telvofm::graphics
