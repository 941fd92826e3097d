// The same files give the same pixels on every platform: what each platform's loader makes of bottom-up files
// with a black and a white palette entry, and what it refuses.
#include "graphics/bitmap.h"

#include "link/telvo06fm_exception.h"
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

    void expectPattern(const BitmapFile& file)
    {
        write(file.bytes());
        const Bitmap bitmap = loadMonochrome(name);
        ASSERT_EQ(bitmap.width, static_cast<std::size_t>(file.width));
        ASSERT_EQ(bitmap.height, static_cast<std::size_t>(file.height));
        ASSERT_EQ(bitmap.pixels.size(), bitmap.width * bitmap.height);
        for (std::size_t y = 0; y < bitmap.height; ++y) {
            for (std::size_t x = 0; x < bitmap.width; ++x) {
                ASSERT_EQ(bitmap.pixels[y * bitmap.width + x], BitmapFile::isSet(x, y) ? 1 : 0)
                    << x << ", " << y << " of " << bitmap.width << " x " << bitmap.height;
            }
        }
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

TEST_F(BitmapLoader, GivesOneForSetBitsInRowsFromTheTop)
{
    for (std::int32_t width = 1; width <= 70; ++width) {
        expectPattern({.width = width, .height = 1 + width * 7 % 23});
    }
    expectPattern({.width = 576, .height = 1200});
}

TEST_F(BitmapLoader, FindsThePixelsBehindAGap)
{
    expectPattern({.gap = 20});
}

TEST_F(BitmapLoader, RefusesColours)
{
    write(BitmapFile{.width = 4, .height = 4, .bitsPerPixel = 24}.bytes());
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
    write(BitmapFile{}.bytes());
    testing::internal::CaptureStdout();
    loadMonochrome(name);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "Path: " + name + "\nOK\n");

    testing::internal::CaptureStdout();
    EXPECT_THROW(loadMonochrome("missing.bmp"), Telvo06FMException);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "Path: missing.bmp\n");

    write(BitmapFile{.width = 4, .height = 4, .bitsPerPixel = 24}.bytes());
    testing::internal::CaptureStdout();
    EXPECT_THROW(loadMonochrome(name),
                 Telvo06FMException); // loaded, and only then found to be no monochrome one
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "Path: " + name + "\nOK\n");
}

} // namespace
} // namespace telvofm::graphics
