// A monochrome picture, one byte per pixel in rows from the top: 1 where the bit of the loaded bitmap is set,
// else 0.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace telvofm::graphics {

struct Bitmap
{
    std::size_t width = 0;
    std::size_t height = 0;
    std::vector<std::uint8_t> pixels;
};

// A bitmap as the platform loads it: rows from the top, `stride` bytes each, the first pixel of a byte in bit
// 7. White is 1. Bitmaps in colours come with another depth than 1 and without their bits, a bitmap that
// cannot be described, or not be read whole, with depth 0.
struct PackedBitmap
{
    std::size_t width = 0;
    std::size_t height = 0;
    std::size_t stride = 0;
    int bitsPerPixel = 0;
    std::vector<std::uint8_t> bits;
};

// Nothing when the file is no bitmap or cannot be read. There is one implementation per platform.
std::optional<PackedBitmap> loadBitmapFile(const std::string& fileName);

// Loads a monochrome bitmap and says so on standard output. Throws -10201 for what is no bitmap and -10104
// for one that is not monochrome.
Bitmap loadMonochrome(std::string_view fileName);

} // namespace telvofm::graphics
