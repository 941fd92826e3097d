// What every platform's loader makes of a file alike: the rows of the table in docs/graphics.md where Linux
// and Wine say the same.
#include "tests/unit/bitmap_loader_fixture.h"

namespace telvofm::graphics {
namespace {

constexpr std::uint32_t black = BitmapFile::black;
constexpr std::uint32_t white = BitmapFile::white;

class BitmapLoader : public BitmapLoaderFixture
{
};

TEST_F(BitmapLoader, GivesOneForSetBitsInRowsFromTheTop)
{
    for (std::int32_t width = 1; width <= 70; ++width) {
        expectPattern({.width = width, .height = 1 + width * 7 % 23});
    }
    expectPattern({.width = 576, .height = 1200});
}

TEST_F(BitmapLoader, ReadsTheOldestHeader)
{
    expectPattern({.descriptionSize = 12});
    expectPattern({.width = 1, .height = 40000, .descriptionSize = 12}); // whose sizes have no sign
    expectPattern({.width = 70, .descriptionSize = 12}); // with pixels where the newer ones have their head
}

TEST_F(BitmapLoader, FindsThePixelsBehindAGap)
{
    expectPattern({.gap = 20});
}

TEST_F(BitmapLoader, FindsThePixelsBehindThePaletteWhenTheFileDoesNotSay)
{
    for (const BitmapFile& file : {BitmapFile{}, BitmapFile{.descriptionSize = 12},
                                   BitmapFile{.palette = {black, white, 7}, .coloursUsed = 3}}) {
        auto bytes = file.bytes();
        BitmapFile::overwrite(bytes, BitmapFile::pixelOffsetAt, 0);
        expectPattern(bytes, file);
    }
}

TEST_F(BitmapLoader, LooksAtTheFirstTwoColours)
{
    expectPattern({.coloursUsed = 2});
    expectPattern({.palette = {black, white, 0x123456}, .coloursUsed = 3});
}

TEST_F(BitmapLoader, LeavesAloneWhatStandsBehindThePicture)
{
    auto bytes = BitmapFile{}.bytes();
    bytes.resize(bytes.size() + 1000, 0x5A);
    expectPattern(bytes, {});
}

TEST_F(BitmapLoader, RefusesTwoColoursThatAreNotBlackAndWhite)
{
    constexpr std::uint32_t red = 0xFF0000;
    constexpr std::uint32_t blue = 0x0000FF;
    constexpr std::uint32_t nearlyBlack = 0x000001;
    constexpr std::uint32_t opaqueWhite = 0xFFFFFFFF; // the fourth byte has to be 0
    constexpr std::uint32_t opaqueBlack = 0xFF000000;
    for (const auto& palette : std::initializer_list<std::vector<std::uint32_t>>{{red, blue},
                                                                                 {black, red},
                                                                                 {red, white},
                                                                                 {black, black},
                                                                                 {white, white},
                                                                                 {nearlyBlack, white},
                                                                                 {black, opaqueWhite},
                                                                                 {opaqueBlack, white}}) {
        EXPECT_EQ(codeOf(BitmapFile{.palette = palette}.bytes()), code::bitmapNotMonochrome);
    }
    EXPECT_EQ(codeOf(BitmapFile{.descriptionSize = 12, .palette = {red, white}}.bytes()),
              code::bitmapNotMonochrome);
}

TEST_F(BitmapLoader, RefusesFewerThanTwoColours)
{
    EXPECT_EQ(codeOf(BitmapFile{.palette = {}}.bytes()), code::bitmapNotMonochrome);
    EXPECT_EQ(codeOf(BitmapFile{.palette = {black}, .coloursUsed = 1}.bytes()), code::bitmapNotMonochrome);
    EXPECT_EQ(codeOf(BitmapFile{.coloursUsed = 1}.bytes()), code::bitmapNotMonochrome);
}

TEST_F(BitmapLoader, RefusesEveryOtherDepth)
{
    for (const std::uint16_t depth : std::initializer_list<std::uint16_t>{0, 2, 3, 4, 8, 16, 24, 32}) {
        EXPECT_EQ(codeOf(BitmapFile{.width = 4, .height = 4, .bitsPerPixel = depth}.bytes()),
                  code::bitmapNotMonochrome)
            << depth;
    }
}

TEST_F(BitmapLoader, RefusesCompressedColours)
{
    for (const auto& [depth, compression] : std::initializer_list<std::pair<std::uint16_t, std::uint32_t>>{
             {std::uint16_t{8}, 1U}, {std::uint16_t{4}, 2U}, {std::uint16_t{32}, 3U}}) {
        EXPECT_EQ(codeOf(BitmapFile{.bitsPerPixel = depth, .compression = compression}.bytes()),
                  code::bitmapNotMonochrome);
    }
}

TEST_F(BitmapLoader, RefusesColoursOfWhichTheFileHoldsAPartOnly)
{
    const auto bytes = BitmapFile{.width = 4, .height = 4, .bitsPerPixel = 24}.bytes();
    write(bytes, bytes.size() - 20);
    EXPECT_EQ(codeOfLoading(), code::bitmapNotMonochrome);
}

TEST_F(BitmapLoader, RefusesHeadersOfNoKnownVersion)
{
    for (const std::uint32_t size : {0U, 11U, 13U, 16U, 39U, 41U, 44U, 52U, 56U, 64U, 107U, 109U, 123U, 125U,
                                     128U, 0xDEADBEEFU, 0xFFFFFFFFU}) {
        auto bytes = BitmapFile{.gap = 200}.bytes();
        BitmapFile::overwrite(bytes, BitmapFile::descriptionSizeAt, size);
        EXPECT_EQ(codeOf(bytes), code::transportFailure) << size;
    }
}

TEST_F(BitmapLoader, RefusesSizesAbove65535)
{
    constexpr std::int32_t largest = 65535;
    expectPattern({.width = largest, .height = 1});
    expectPattern({.width = 1, .height = largest});
    EXPECT_EQ(codeOf(BitmapFile{.width = largest + 1, .height = 1}.bytes()), code::transportFailure);
    EXPECT_EQ(codeOf(BitmapFile{.width = 1, .height = largest + 1}.bytes()), code::transportFailure);
    EXPECT_EQ(codeOf(BitmapFile{.width = largest + 1, .height = 1, .bitsPerPixel = 8}.bytes()),
              code::transportFailure);
}

TEST_F(BitmapLoader, RefusesWhatIsNoBitmap)
{
    EXPECT_EQ(codeOfLoading(), code::transportFailure) << "no file";
    EXPECT_EQ(codeOf({}), code::transportFailure);
    EXPECT_EQ(codeOf({'B', 'M', 1, 2, 3}), code::transportFailure);
    for (const char* const letters : {"bm", "BA", "CI", "PM"}) {
        auto bytes = BitmapFile{}.bytes();
        bytes[0] = static_cast<std::uint8_t>(letters[0]);
        bytes[1] = static_cast<std::uint8_t>(letters[1]);
        EXPECT_EQ(codeOf(bytes), code::transportFailure) << letters;
    }
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

    for (const std::string missing : {"missing.bmp", ""}) {
        testing::internal::CaptureStdout();
        EXPECT_THROW(loadMonochrome(missing), Telvo06FMException);
        EXPECT_EQ(testing::internal::GetCapturedStdout(), "Path: " + missing + "\n");
    }

    write(BitmapFile{.width = 4, .height = 4, .bitsPerPixel = 24}.bytes());
    testing::internal::CaptureStdout();
    EXPECT_THROW(loadMonochrome(name),
                 Telvo06FMException); // loaded, and only then found to be no monochrome one
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "Path: " + name + "\nOK\n");
}

} // namespace
} // namespace telvofm::graphics
