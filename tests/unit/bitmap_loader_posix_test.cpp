// Files that only our own reader is asked about: damaged ones, rows from the top, and files far larger than
// memory.
#include "graphics/bitmap.h"

#include "tests/unit/bitmap_file.h"
#include "tests/unit/own_folder.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace telvofm::graphics {
namespace {

class BitmapFiles : public testing::Test
{
protected:
    void write(const std::vector<std::uint8_t>& bytes, std::size_t length)
    {
        std::ofstream file(name, std::ios::binary | std::ios::trunc);
        file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(length));
    }

    test::OwnFolder folder;
    std::string name = folder.file("logo.bmp");
};

TEST_F(BitmapFiles, TruncatedAnywhereTheyAreNoBitmaps)
{
    for (const std::uint32_t size : {12U, 40U, 124U}) {
        const auto whole = BitmapFile{.descriptionSize = size}.bytes();
        for (std::size_t length = 0; length < whole.size(); ++length) {
            write(whole, length);
            EXPECT_FALSE(loadBitmapFile(name).has_value()) << length;
        }
        write(whole, whole.size());
        EXPECT_TRUE(loadBitmapFile(name).has_value());
    }
}

TEST_F(BitmapFiles, AreReadAsTheReaderReadsThem)
{
    for (const BitmapFile& file : {BitmapFile{.width = 70, .height = -33}, BitmapFile{.descriptionSize = 12},
                                   BitmapFile{.descriptionSize = 108, .whiteFirst = true},
                                   BitmapFile{.descriptionSize = 124, .gap = 300}}) {
        const auto bytes = file.bytes();
        write(bytes, bytes.size());
        const auto loaded = loadBitmapFile(name);
        ASSERT_TRUE(loaded.has_value());
        ASSERT_EQ(loaded->height, static_cast<std::size_t>(std::abs(file.height)));
        for (std::size_t y = 0; y < loaded->height; ++y) {
            const unsigned byte = loaded->bits[y * loaded->stride];
            EXPECT_EQ((byte & 0x80U) != 0, BitmapFile::isSet(0, y));
            EXPECT_EQ((byte & 0x01U) != 0, BitmapFile::isSet(7, y));
        }
    }
}

TEST_F(BitmapFiles, CostNoMoreMemoryThanTheirPictureHoweverLargeTheyAre)
{
    constexpr std::uintmax_t farTooLarge = std::uintmax_t{64} << 30U;
    const auto bytes = BitmapFile{}.bytes();
    write(bytes, bytes.size());
    std::filesystem::resize_file(name, farTooLarge); // takes no room on the disk
    const auto loaded = loadBitmapFile(name);
    ASSERT_TRUE(loaded.has_value());
    EXPECT_EQ(loaded->bits.size(), 40U);

    write(bytes, 0);
    std::filesystem::resize_file(name, farTooLarge);
    EXPECT_FALSE(loadBitmapFile(name).has_value());
}

TEST_F(BitmapFiles, CostNoMemoryForAPictureThatTheyOnlyAnnounce)
{
    auto bytes = BitmapFile{}.bytes();
    for (const std::size_t number : {18U, 22U}) { // where the width and the height stand
        std::fill_n(bytes.begin() + static_cast<std::ptrdiff_t>(number), 3, std::uint8_t{0xFF});
        bytes[number + 3] = 0x7F;
    }
    write(bytes, bytes.size());
    EXPECT_FALSE(loadBitmapFile(name).has_value());
}

TEST_F(BitmapFiles, APipeIsNotWaitedFor)
{
    ASSERT_EQ(::mkfifo(name.c_str(), S_IRUSR | S_IWUSR), 0);
    EXPECT_FALSE(loadBitmapFile(name).has_value());
}

} // namespace
} // namespace telvofm::graphics
