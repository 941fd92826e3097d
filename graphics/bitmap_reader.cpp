#include "graphics/bitmap_reader.h"

#include <algorithm>
#include <array>

namespace telvofm::graphics {
namespace {

// Offsets in the file: a header of 14 bytes, and behind it the description, which begins with its own size,
// and then the palette.
constexpr std::size_t pixelOffsetAt = 10;
constexpr std::size_t descriptionAt = 14;
constexpr std::size_t coloursUsedAt = 46;
constexpr std::uint32_t coreDescriptionSize = 12;
constexpr std::array<std::uint32_t, 4> descriptionSizes = {coreDescriptionSize, 40, 108, 124};
constexpr std::uint32_t largestSize = 65535; // of the width and of the height
constexpr std::uint64_t rowBits = 32;        // rows of the file end on whole words
constexpr std::uint64_t rowBytes = 4;
constexpr std::uint32_t twoColours = 2;
constexpr int screenDepth = 32; // of bitmaps in colours, as a loader for a screen makes them

// Numbers of the file, least significant byte first; 0 beyond its end.
class Numbers
{
public:
    explicit Numbers(std::span<const std::uint8_t> bytes) : file(bytes) {}

    [[nodiscard]] std::uint32_t at(std::size_t position, std::size_t size) const
    {
        std::uint32_t value = 0;
        for (std::size_t i = size; i-- > 0;) {
            const std::size_t index = position + i;
            value = value << 8U | (index < file.size() ? file[index] : 0U);
        }
        return value;
    }

private:
    std::span<const std::uint8_t> file;
};

struct Description
{
    std::uint32_t width;
    std::uint32_t height;
    bool fromTop;
    bool hasOneBit; // per pixel
    std::uint32_t colours;
    std::size_t colourSize;
    std::size_t paletteAt;
    std::uint64_t stride;
    std::uint64_t pixelsAt;
    std::uint64_t end; // of the picture, in bytes from the start of the file; nothing here can overflow
};

std::optional<Description> describe(std::span<const std::uint8_t> head)
{
    const Numbers numbers(head);
    const std::uint32_t size = numbers.at(descriptionAt, 4);
    if (numbers.at(0, 1) != 'B' || numbers.at(1, 1) != 'M' ||
        std::find(descriptionSizes.begin(), descriptionSizes.end(), size) == descriptionSizes.end()) {
        return std::nullopt;
    }
    const bool isCore = size == coreDescriptionSize;
    const std::size_t numberSize = isCore ? 2 : 4; // of the width and of the height
    const std::uint32_t width = numbers.at(descriptionAt + 4, numberSize);
    const std::uint32_t height = numbers.at(descriptionAt + 4 + numberSize, numberSize);
    const std::uint32_t compression = isCore ? 0 : numbers.at(descriptionAt + 16, 4);
    const std::uint32_t coloursUsed = isCore ? 0 : numbers.at(coloursUsedAt, 4);
    const bool fromTop = static_cast<std::int32_t>(height) < 0;
    Description description{.width = width,
                            .height = fromTop ? 0U - height : height,
                            .fromTop = fromTop,
                            .hasOneBit = numbers.at(descriptionAt + 6 + 2 * numberSize, 2) == 1,
                            .colours = coloursUsed == 0 ? twoColours : coloursUsed,
                            .colourSize = isCore ? 3U : 4U,
                            .paletteAt = descriptionAt + size,
                            .stride = (std::uint64_t{width} + rowBits - 1) / rowBits * rowBytes,
                            .pixelsAt = numbers.at(pixelOffsetAt, 4),
                            .end = descriptionAt + size};
    if (width == 0 || width > largestSize || height == 0 || description.height > largestSize) {
        return std::nullopt;
    }
    if (description.hasOneBit) {
        if (description.pixelsAt == 0) {
            description.pixelsAt =
                description.paletteAt + std::uint64_t{description.colours} * description.colourSize;
        }
        if (compression != 0 || description.pixelsAt < description.paletteAt) {
            return std::nullopt;
        }
        description.end = description.pixelsAt + description.stride * description.height;
    }
    return description;
}

// What turns the bits of the file into black 0 and white 1; nothing when its two colours are others. A fourth
// byte that is not 0 makes a colour another one too.
std::optional<std::uint8_t> maskToBlackAndWhite(const Description& description,
                                                std::span<const std::uint8_t> file)
{
    constexpr std::uint32_t black = 0x000000;
    constexpr std::uint32_t white = 0xFFFFFF;
    const Numbers numbers(file);
    const std::size_t size = description.colourSize;
    const std::uint32_t first = numbers.at(description.paletteAt, size);
    const std::uint32_t second = numbers.at(description.paletteAt + size, size);
    if (!description.hasOneBit || description.colours < twoColours) {
        return std::nullopt;
    }
    if (first == black && second == white) {
        return 0x00;
    }
    if (first == white && second == black) {
        return 0xFF;
    }
    return std::nullopt;
}

} // namespace

std::optional<std::uint64_t> endOfBitmap(std::span<const std::uint8_t> head)
{
    const auto description = describe(head);
    return description ? std::optional(description->end) : std::nullopt;
}

std::optional<PackedBitmap> readBitmap(std::span<const std::uint8_t> file)
{
    const auto description = describe(file);
    if (!description || description->end > file.size()) {
        return std::nullopt;
    }
    PackedBitmap bitmap;
    bitmap.width = description->width;
    bitmap.height = description->height;
    const auto mask = maskToBlackAndWhite(*description, file);
    if (!mask) {
        bitmap.bitsPerPixel = screenDepth;
        return bitmap;
    }
    bitmap.bitsPerPixel = 1;
    bitmap.stride = description->stride;
    const auto rows = file.subspan(description->pixelsAt, bitmap.stride * bitmap.height);
    bitmap.bits.reserve(rows.size());
    for (std::size_t y = 0; y < bitmap.height; ++y) {
        const std::size_t stored = description->fromTop ? y : bitmap.height - 1 - y;
        for (const std::uint8_t byte : rows.subspan(stored * bitmap.stride, bitmap.stride)) {
            bitmap.bits.push_back(byte ^ *mask);
        }
    }
    return bitmap;
}

} // namespace telvofm::graphics
