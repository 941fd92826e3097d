#include "graphics/bitmap_reader.h"

#include <algorithm>

namespace telvofm::graphics {
namespace {

// Offsets in the file: a header of 14 bytes, and behind it the description, which begins with its own size.
constexpr std::size_t pixelOffsetAt = 10;
constexpr std::size_t descriptionAt = 14;
constexpr std::uint32_t coreDescriptionSize = 12;
constexpr std::uint32_t smallestDescriptionSize = 40;

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
    std::int64_t width;
    std::int64_t height; // negative when the rows stand from the top
    std::uint32_t bitsPerPixel;
    std::uint32_t compression;
};

std::optional<Description> describe(std::span<const std::uint8_t> file)
{
    const Numbers numbers(file);
    const std::uint32_t size = numbers.at(descriptionAt, 4);
    if (file.size() < descriptionAt + 4 || file[0] != 'B' || file[1] != 'M' ||
        file.size() - descriptionAt < size) {
        return std::nullopt;
    }
    if (size == coreDescriptionSize) {
        return Description{.width = numbers.at(descriptionAt + 4, 2),
                           .height = numbers.at(descriptionAt + 6, 2),
                           .bitsPerPixel = numbers.at(descriptionAt + 10, 2),
                           .compression = 0};
    }
    if (size < smallestDescriptionSize) {
        return std::nullopt;
    }
    return Description{.width = static_cast<std::int32_t>(numbers.at(descriptionAt + 4, 4)),
                       .height = static_cast<std::int32_t>(numbers.at(descriptionAt + 8, 4)),
                       .bitsPerPixel = numbers.at(descriptionAt + 14, 2),
                       .compression = numbers.at(descriptionAt + 16, 4)};
}

} // namespace

std::optional<PackedBitmap> readBitmap(std::span<const std::uint8_t> file)
{
    const auto description = describe(file);
    if (!description || description->width <= 0 || description->height == 0) {
        return std::nullopt;
    }
    PackedBitmap bitmap;
    bitmap.width = static_cast<std::size_t>(description->width);
    bitmap.height = static_cast<std::size_t>(std::abs(description->height));
    bitmap.bitsPerPixel = static_cast<int>(description->bitsPerPixel);
    if (bitmap.bitsPerPixel != 1) {
        return bitmap.bitsPerPixel == 0 ? std::nullopt : std::optional(bitmap);
    }
    constexpr std::size_t wordBits = 32; // rows of the file end on whole words
    bitmap.stride = (bitmap.width + wordBits - 1) / wordBits * 4;
    const std::size_t offset = Numbers(file).at(pixelOffsetAt, 4);
    // Division, as the product may not fit; it also keeps what is allocated below the size of the file.
    if (description->compression != 0 || offset < descriptionAt || offset > file.size() ||
        (file.size() - offset) / bitmap.stride < bitmap.height) {
        return std::nullopt;
    }
    const auto rows = file.subspan(offset, bitmap.stride * bitmap.height);
    bitmap.bits.reserve(rows.size());
    for (std::size_t y = 0; y < bitmap.height; ++y) {
        const std::size_t stored = description->height < 0 ? y : bitmap.height - 1 - y;
        const auto row = rows.subspan(stored * bitmap.stride, bitmap.stride);
        bitmap.bits.insert(bitmap.bits.end(), row.begin(), row.end());
    }
    return bitmap;
}

} // namespace telvofm::graphics
