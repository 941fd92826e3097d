#include "graphics/bitmap_reader.h"

namespace telvofm::graphics {
namespace {

// Offsets in the file: a header of 14 bytes, and behind it the description, which begins with its own size.
constexpr std::size_t pixelOffsetAt = 10;
constexpr std::size_t descriptionAt = 14;
constexpr std::uint32_t coreDescriptionSize = 12;
constexpr std::uint32_t smallestDescriptionSize = 40;
constexpr std::uint64_t rowBits = 32; // rows of the file end on whole words
constexpr std::uint64_t rowBytes = 4;

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
    std::uint64_t width;
    std::uint64_t height;
    bool fromTop;
    std::uint32_t bitsPerPixel;
    std::uint32_t compression;
    std::uint64_t stride;
    std::uint64_t pixelsAt;
    std::uint64_t
        end; // of the picture, in bytes from the start of the file; no sum or product here can overflow
};

std::optional<Description> describe(std::span<const std::uint8_t> head)
{
    const Numbers numbers(head);
    const std::uint32_t size = numbers.at(descriptionAt, 4);
    const bool isCore = size == coreDescriptionSize;
    if (numbers.at(0, 1) != 'B' || numbers.at(1, 1) != 'M' || (!isCore && size < smallestDescriptionSize)) {
        return std::nullopt;
    }
    const std::size_t numberSize = isCore ? 2 : 4; // of the width and of the height
    const std::uint32_t width = numbers.at(descriptionAt + 4, numberSize);
    const std::uint32_t height = numbers.at(descriptionAt + 4 + numberSize, numberSize);
    const bool fromTop = static_cast<std::int32_t>(height) < 0;
    Description description{.width = width,
                            .height = fromTop ? 0U - height : height,
                            .fromTop = fromTop,
                            .bitsPerPixel = numbers.at(descriptionAt + 6 + 2 * numberSize, 2),
                            .compression = isCore ? 0 : numbers.at(descriptionAt + 16, 4),
                            .stride = (std::uint64_t{width} + rowBits - 1) / rowBits * rowBytes,
                            .pixelsAt = numbers.at(pixelOffsetAt, 4),
                            .end = descriptionAt + std::uint64_t{size}};
    if (width == 0 || static_cast<std::int32_t>(width) < 0 || height == 0 || description.bitsPerPixel == 0) {
        return std::nullopt;
    }
    if (description.bitsPerPixel == 1) {
        if (description.compression != 0 || description.pixelsAt < description.end) {
            return std::nullopt;
        }
        description.end = description.pixelsAt + description.stride * description.height;
    }
    return description;
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
    bitmap.bitsPerPixel = static_cast<int>(description->bitsPerPixel);
    if (bitmap.bitsPerPixel != 1) {
        return bitmap;
    }
    bitmap.stride = description->stride;
    const auto rows = file.subspan(description->pixelsAt, bitmap.stride * bitmap.height);
    bitmap.bits.reserve(rows.size());
    for (std::size_t y = 0; y < bitmap.height; ++y) {
        const std::size_t stored = description->fromTop ? y : bitmap.height - 1 - y;
        const auto row = rows.subspan(stored * bitmap.stride, bitmap.stride);
        bitmap.bits.insert(bitmap.bits.end(), row.begin(), row.end());
    }
    return bitmap;
}

} // namespace telvofm::graphics
