// BMP files of one bit per pixel in memory, with the oddities that tests ask for.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <vector>

namespace telvofm::graphics {

struct BitmapFile
{
    std::int32_t width = 12;
    std::int32_t height = 10; // negative: rows from the top
    std::uint16_t bitsPerPixel = 1;
    std::uint32_t compression = 0;
    std::uint32_t descriptionSize = 40; // 12: the oldest version; 108 and 124: the newer ones
    std::uint32_t gap = 0;              // between the palette and the pixels

    // Every pixel row holds its number counted from the top of the picture, and zeros.
    [[nodiscard]] std::vector<std::uint8_t> bytes() const
    {
        std::vector<std::uint8_t> file = {'B', 'M'};
        const std::uint32_t paletteSize = descriptionSize == 12 ? 6 : 8;
        put(file, 0, 4);
        put(file, 0, 4);
        put(file, 14 + descriptionSize + paletteSize + gap, 4);
        put(file, descriptionSize, 4);
        const int sizeBytes = descriptionSize == 12 ? 2 : 4;
        put(file, static_cast<std::uint32_t>(width), sizeBytes);
        put(file, static_cast<std::uint32_t>(height), sizeBytes);
        put(file, 1, 2);
        put(file, bitsPerPixel, 2);
        if (descriptionSize != 12) {
            put(file, compression, 4);
        }
        file.resize(14 + descriptionSize + paletteSize + gap);
        const std::int32_t rows = std::abs(height);
        for (std::int32_t row = 0; row < rows; ++row) {
            file.push_back(static_cast<std::uint8_t>(height < 0 ? row : rows - 1 - row));
            file.resize(file.size() + static_cast<std::size_t>((width + 31) / 32 * 4 - 1));
        }
        return file;
    }

private:
    static void put(std::vector<std::uint8_t>& file, std::uint32_t value, int size)
    {
        for (int i = 0; i < size; ++i) {
            file.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
        }
    }
};

} // namespace telvofm::graphics
