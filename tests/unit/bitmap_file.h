// BMP files in memory, with the oddities that tests ask for. Files of one bit per pixel hold a pattern
// without any symmetry, and ones in the padding of their rows.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <vector>

namespace telvofm::graphics {

struct BitmapFile
{
    // Colours as the palette holds them: red, green and blue from the third byte down to the first.
    static constexpr std::uint32_t black = 0x000000;
    static constexpr std::uint32_t white = 0xFFFFFF;

    std::int32_t width = 12;
    std::int32_t height = 10; // negative: rows from the top
    std::uint16_t bitsPerPixel = 1;
    std::uint32_t compression = 0;
    std::uint32_t descriptionSize = 40; // 12: the oldest version; 108 and 124: the newer ones
    std::uint32_t gap = 0;              // between the palette and the pixels
    std::vector<std::uint32_t> palette = {black, white};
    std::uint32_t coloursUsed = 0; // 0: as many as the depth allows

    // The pattern of the file's bits; `y` counts from the top of the picture.
    static bool isSet(std::size_t x, std::size_t y)
    {
        const auto column = static_cast<std::uint32_t>(x + 1) * 0x9E3779B1U;
        const auto row = static_cast<std::uint32_t>(y + 1) * 0x85EBCA77U;
        return ((column ^ row) >> 16U & 1U) != 0;
    }

    [[nodiscard]] std::size_t stride() const
    {
        return (static_cast<std::size_t>(width) * bitsPerPixel + 31) / 32 * 4;
    }

    [[nodiscard]] std::vector<std::uint8_t> bytes() const
    {
        const bool isCore = descriptionSize == 12;
        const int colourSize = isCore ? 3 : 4;
        const auto paletteSize =
            static_cast<std::uint32_t>(palette.size()) * static_cast<std::uint32_t>(colourSize);
        const std::uint32_t pixelsAt = 14 + descriptionSize + paletteSize + gap;
        std::vector<std::uint8_t> file = {'B', 'M'};
        put(file, 0, 4);
        put(file, 0, 4);
        put(file, pixelsAt, 4);
        put(file, descriptionSize, 4);
        put(file, static_cast<std::uint32_t>(width), isCore ? 2 : 4);
        put(file, static_cast<std::uint32_t>(height), isCore ? 2 : 4);
        put(file, 1, 2);
        put(file, bitsPerPixel, 2);
        if (!isCore) {
            put(file, compression, 4);
            file.resize(coloursUsedAt);
            put(file, coloursUsed, 4);
        }
        file.resize(14 + descriptionSize);
        for (const std::uint32_t colour : palette) {
            put(file, colour, colourSize);
        }
        file.resize(pixelsAt);
        const auto rows = static_cast<std::size_t>(std::abs(height));
        for (std::size_t row = 0; row < rows; ++row) {
            appendRow(file, height < 0 ? row : rows - 1 - row);
        }
        return file;
    }

    // Where these numbers of four bytes stand in the file.
    static constexpr std::size_t pixelOffsetAt = 10;
    static constexpr std::size_t descriptionSizeAt = 14;
    static constexpr std::size_t widthAt = 18;
    static constexpr std::size_t heightAt = 22;
    static constexpr std::size_t coloursUsedAt = 46;

    static void overwrite(std::vector<std::uint8_t>& file, std::size_t position, std::uint32_t value)
    {
        for (std::size_t i = 0; i < 4; ++i) {
            file[position + i] = static_cast<std::uint8_t>(value >> (8 * i));
        }
    }

private:
    static void put(std::vector<std::uint8_t>& file, std::uint32_t value, int size)
    {
        for (int i = 0; i < size; ++i) {
            file.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
        }
    }

    void appendRow(std::vector<std::uint8_t>& file, std::size_t y) const
    {
        for (std::size_t x = 0; x < stride() * 8; ++x) {
            if (x % 8 == 0) {
                file.push_back(0);
            }
            const bool isPadding = x >= static_cast<std::size_t>(width) * bitsPerPixel;
            const unsigned bit = isPadding || isSet(x, y) ? 1U : 0U;
            file.back() = static_cast<std::uint8_t>(unsigned{file.back()} << 1U | bit);
        }
    }
};

} // namespace telvofm::graphics
