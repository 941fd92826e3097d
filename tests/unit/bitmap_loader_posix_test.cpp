// Files that our own reader and Wine's loader take differently, and files far larger than memory.
#include "tests/unit/bitmap_loader_fixture.h"

#include <sys/stat.h>
#include <unistd.h>

namespace telvofm::graphics {
namespace {

class BitmapFiles : public BitmapLoaderFixture
{
};

TEST_F(BitmapFiles, WithWhiteFirstGiveOneForWhiteAllTheSame)
{
    for (const std::uint32_t size : {12U, 40U, 108U, 124U}) {
        expectPattern({.descriptionSize = size, .palette = {BitmapFile::white, BitmapFile::black}},
                      Pixels::clearBits);
    }
}

TEST_F(BitmapFiles, OfTheNewerHeadersHaveTheirPaletteBehindThem)
{
    for (const std::uint32_t size : {108U, 124U}) {
        expectPattern({.descriptionSize = size});
        expectPattern({.descriptionSize = size, .gap = 300});
        EXPECT_EQ(
            codeOf(BitmapFile{.descriptionSize = size, .palette = {0x0000FF, BitmapFile::white}}.bytes()),
            code::bitmapNotMonochrome);
        EXPECT_EQ(codeOf(BitmapFile{.descriptionSize = size, .palette = {}}.bytes()),
                  code::bitmapNotMonochrome);
    }
}

// Run by the administrator, the test becomes another user for the moment: to the former no file is closed.
TEST_F(BitmapFiles, ThatMayNotBeReadAreNoBitmaps)
{
    write(BitmapFile{}.bytes());
    ASSERT_EQ(codeOfLoading(), 0);
    ASSERT_EQ(::chmod(name.c_str(), 0), 0);
    constexpr uid_t nobody = 65534;
    const uid_t self = ::geteuid();
    if (self == 0) {
        ASSERT_EQ(::seteuid(nobody), 0);
    }
    const int code = codeOfLoading();
    if (self == 0) {
        ASSERT_EQ(::seteuid(self), 0);
    }
    EXPECT_EQ(code, code::transportFailure);
}

TEST_F(BitmapFiles, WithRowsFromTheTopAreNotUpsideDown)
{
    for (const std::uint32_t size : {40U, 108U, 124U}) {
        expectPattern({.width = 70, .height = -33, .descriptionSize = size});
    }
    expectPattern({.height = -10, .palette = {BitmapFile::white, BitmapFile::black}}, Pixels::clearBits);
    EXPECT_EQ(codeOf(BitmapFile{.width = 1, .height = -65536}.bytes()), code::transportFailure);
}

TEST_F(BitmapFiles, TruncatedAnywhereTheyAreNoBitmaps)
{
    for (const std::uint32_t size : {12U, 40U, 108U, 124U}) {
        const auto whole = BitmapFile{.descriptionSize = size}.bytes();
        for (std::size_t length = 0; length < whole.size(); ++length) {
            write(whole, length);
            ASSERT_EQ(codeOfLoading(), code::transportFailure) << length;
        }
        write(whole);
        EXPECT_EQ(codeOfLoading(), 0);
    }
}

TEST_F(BitmapFiles, OfOneBitThatSayTheyAreCompressedAreNoBitmaps)
{
    for (const std::uint32_t compression : {1U, 2U, 3U, 4U, 5U, 99U}) {
        EXPECT_EQ(codeOf(BitmapFile{.compression = compression}.bytes()), code::transportFailure);
    }
}

TEST_F(BitmapFiles, WithoutASizeOrWithOneBelowZeroAreNoBitmaps)
{
    for (const auto& [position, value] :
         std::initializer_list<std::pair<std::size_t, std::uint32_t>>{{BitmapFile::widthAt, 0U},
                                                                      {BitmapFile::heightAt, 0U},
                                                                      {BitmapFile::widthAt, 0xFFFFFFF4U},
                                                                      {BitmapFile::heightAt, 0x80000000U}}) {
        auto bytes = BitmapFile{}.bytes();
        BitmapFile::overwrite(bytes, position, value);
        EXPECT_EQ(codeOf(bytes), code::transportFailure) << value;
    }
}

TEST_F(BitmapFiles, WhosePixelsWouldBeInTheHeaderOrBehindTheEndAreNoBitmaps)
{
    for (const std::uint32_t offset : {1U, 14U, 53U, 0x7FFFFFFFU, 0xFFFFFFFFU}) {
        auto bytes = BitmapFile{}.bytes();
        BitmapFile::overwrite(bytes, BitmapFile::pixelOffsetAt, offset);
        EXPECT_EQ(codeOf(bytes), code::transportFailure) << offset;
    }
}

TEST_F(BitmapFiles, CostNoMoreMemoryThanTheirPictureHoweverLargeTheyAre)
{
    constexpr std::uintmax_t farTooLarge = std::uintmax_t{64} << 30U;
    const auto bytes = BitmapFile{}.bytes();
    write(bytes);
    std::filesystem::resize_file(name, farTooLarge); // takes no room on the disk
    const auto loaded = loadBitmapFile(name);
    ASSERT_TRUE(loaded.has_value());
    EXPECT_EQ(loaded->bits.size(), 40U);

    write({});
    std::filesystem::resize_file(name, farTooLarge);
    EXPECT_FALSE(loadBitmapFile(name).has_value());
}

TEST_F(BitmapFiles, CostNoMemoryForAPictureThatTheyOnlyAnnounce)
{
    for (const std::uint32_t size : {65535U, 0x7FFFFFFFU}) {
        auto bytes = BitmapFile{}.bytes();
        BitmapFile::overwrite(bytes, BitmapFile::widthAt, size);
        BitmapFile::overwrite(bytes, BitmapFile::heightAt, size);
        write(bytes);
        EXPECT_FALSE(loadBitmapFile(name).has_value());
    }
}

TEST_F(BitmapFiles, APipeIsNotWaitedFor)
{
    ASSERT_EQ(::mkfifo(name.c_str(), S_IRUSR | S_IWUSR), 0);
    EXPECT_FALSE(loadBitmapFile(name).has_value());
}

} // namespace
} // namespace telvofm::graphics
