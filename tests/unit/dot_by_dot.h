// The logo layouts dot by dot, as they are defined: what the fast ones are held against.
#pragma once

#include "graphics/bitmap.h"

#include <string>

namespace telvofm::graphics {

class DotByDot
{
public:
    DotByDot(const Bitmap& source, bool isInverse) : bitmap(source), inverse(isInverse) {}

    [[nodiscard]] std::string raster() const
    {
        std::string layout = header(tiles(bitmap.width), bitmap.height + 7);
        for (std::size_t y = 0; y < tiles(bitmap.height) * 8; ++y) {
            for (std::size_t k = 0; k < tiles(bitmap.width); ++k) {
                layout += byteOf([&](std::size_t i) { return dot(8 * k + i, y); });
            }
        }
        return layout;
    }

    [[nodiscard]] std::string bands() const
    {
        std::string layout = header(bitmap.width, tiles(bitmap.height));
        for (std::size_t b = 0; b < tiles(bitmap.height); ++b) {
            for (std::size_t x = 0; x < bitmap.width; ++x) {
                layout += byteOf([&](std::size_t i) { return dot(x, 8 * b + i); });
            }
        }
        return layout;
    }

    [[nodiscard]] std::string columns() const
    {
        std::string layout = header(tiles(bitmap.width), tiles(bitmap.height));
        for (std::size_t x = 0; x < 8 * tiles(bitmap.width); ++x) {
            for (std::size_t b = 0; b < tiles(bitmap.height); ++b) {
                layout += byteOf([&](std::size_t i) { return dot(x, 8 * b + i); });
            }
        }
        return layout;
    }

private:
    static std::size_t tiles(std::size_t dots) { return (dots + 7) / 8; }

    static std::string header(std::size_t first, std::size_t second)
    {
        return {static_cast<char>(first), 0, static_cast<char>(second), 0};
    }

    [[nodiscard]] bool dot(std::size_t x, std::size_t y) const
    {
        if (x >= bitmap.width || y >= bitmap.height || bitmap.pixels[y * bitmap.width + x] == 1) {
            return inverse;
        }
        return !inverse;
    }

    template <typename Dot>
    static char byteOf(Dot dotAt)
    {
        unsigned byte = 0;
        for (std::size_t i = 0; i < 8; ++i) {
            byte = byte << 1U | (dotAt(i) ? 1U : 0U);
        }
        return static_cast<char>(byte);
    }

    const Bitmap& bitmap;
    bool inverse;
};

} // namespace telvofm::graphics
