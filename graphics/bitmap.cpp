#include "graphics/bitmap.h"

#include "link/standard_output.h"
#include "link/telvo06fm_exception.h"

namespace telvofm::graphics {
namespace {

Bitmap expanded(const PackedBitmap& packed)
{
    constexpr std::size_t bitsPerByte = 8;
    Bitmap bitmap{.width = packed.width, .height = packed.height, .pixels = {}};
    bitmap.pixels.resize(packed.width * packed.height);
    std::uint8_t* pixel = bitmap.pixels.data();
    for (std::size_t y = 0; y < packed.height; ++y) {
        const std::uint8_t* row = packed.bits.data() + y * packed.stride;
        for (std::size_t x = 0; x < packed.width; ++x) {
            const unsigned int byte = row[x / bitsPerByte];
            *pixel++ = static_cast<std::uint8_t>(byte >> (bitsPerByte - 1 - x % bitsPerByte) & 1U);
        }
    }
    return bitmap;
}

} // namespace

Bitmap loadMonochrome(std::string_view fileName)
{
    const std::string name(fileName);
    writeLine("Path: " + name);
    const auto packed = loadBitmapFile(name);
    if (!packed) {
        throw Telvo06FMException(code::transportFailure);
    }
    writeLine("OK");
    if (packed->bitsPerPixel == 0) {
        throw Telvo06FMException(code::transportFailure);
    }
    if (packed->bitsPerPixel != 1) {
        throw Telvo06FMException(code::bitmapNotMonochrome);
    }
    return expanded(*packed);
}

} // namespace telvofm::graphics
