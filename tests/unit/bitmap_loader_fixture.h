// A bitmap file of the test's own, and what the platform's loader makes of it.
#pragma once

#include "graphics/bitmap.h"

#include "link/telvo06fm_exception.h"
#include "tests/unit/bitmap_file.h"
#include "tests/unit/own_folder.h"

namespace telvofm::graphics {

class BitmapLoaderFixture : public testing::Test
{
protected:
    void write(const std::vector<std::uint8_t>& bytes) { write(bytes, bytes.size()); }

    void write(const std::vector<std::uint8_t>& bytes, std::size_t length)
    {
        std::ofstream file(name, std::ios::binary | std::ios::trunc);
        file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(length));
    }

    // 0 when the file is loaded.
    [[nodiscard]] int codeOfLoading() const
    {
        try {
            loadMonochrome(name);
        } catch (const Telvo06FMException& failure) {
            return failure.code;
        }
        return 0;
    }

    int codeOf(const std::vector<std::uint8_t>& bytes)
    {
        write(bytes);
        return codeOfLoading();
    }

    enum class Pixels
    {
        setBits,
        clearBits
    }; // which bits of the file are the pixels that are 1

    void expectPattern(const BitmapFile& file, Pixels ones = Pixels::setBits)
    {
        expectPattern(file.bytes(), file, ones);
    }

    void expectPattern(const std::vector<std::uint8_t>& bytes, const BitmapFile& file,
                       Pixels ones = Pixels::setBits)
    {
        write(bytes);
        const Bitmap bitmap = loadMonochrome(name);
        ASSERT_EQ(bitmap.width, static_cast<std::size_t>(file.width));
        ASSERT_EQ(bitmap.height, static_cast<std::size_t>(std::abs(file.height)));
        ASSERT_EQ(bitmap.pixels.size(), bitmap.width * bitmap.height);
        for (std::size_t y = 0; y < bitmap.height; ++y) {
            for (std::size_t x = 0; x < bitmap.width; ++x) {
                const bool isOne = BitmapFile::isSet(x, y) == (ones == Pixels::setBits);
                ASSERT_EQ(bitmap.pixels[y * bitmap.width + x], isOne ? 1 : 0)
                    << x << ", " << y << " of " << bitmap.width << " x " << bitmap.height;
            }
        }
    }

    test::OwnFolder folder;
    std::string name = folder.file("logo.bmp");
};

} // namespace telvofm::graphics
