#include "virtual_printer/paper/picture.h"

#include <algorithm>

namespace virtual_printer {
namespace {

constexpr int byteDots = 8;
constexpr int byteRange = 256;
constexpr std::size_t headerSize = 4;

// The sizes of a layout: bytes of eight dots, or single dots, across and down.
struct Size
{
    int width = 0;
    int height = 0;
};

// A size whose low byte is known: the smallest one that accounts for all of the data.
int wholeSize(int lowByte, std::size_t dataSize, int bytesEach)
{
    int size = lowByte;
    while (bytesEach > 0 && static_cast<std::size_t>(size) * static_cast<std::size_t>(bytesEach) < dataSize) {
        size += byteRange;
    }
    return size;
}

bool isProduct(int a, int b, std::size_t size)
{
    return static_cast<std::size_t>(a) * static_cast<std::size_t>(b) == size;
}

std::optional<Size> sizeOf(std::string_view data, PictureLayout layout)
{
    if (data.size() < headerSize) {
        return std::nullopt;
    }
    const int first = static_cast<unsigned char>(data[0]);
    const int second = static_cast<unsigned char>(data[2]);
    const std::size_t dots = data.size() - headerSize; // in bytes
    if (layout == PictureLayout::raster) {
        // The second number is the height and seven; the data has whole bytes of rows.
        if (first == 0 || dots % static_cast<std::size_t>(first * byteDots) != 0) {
            return std::nullopt;
        }
        const int height = static_cast<int>(dots / static_cast<std::size_t>(first));
        if ((height + byteDots - 1 - second + byteRange) % byteRange >= byteDots) {
            return std::nullopt;
        }
        return Size{first * byteDots, height};
    }
    if (layout == PictureLayout::bands) {
        const int width = wholeSize(first, dots, second);
        return isProduct(width, second, dots) ? std::optional(Size{width, second * byteDots}) : std::nullopt;
    }
    return isProduct(first * byteDots, second, dots)
               ? std::optional(Size{first * byteDots, second * byteDots})
               : std::nullopt;
}

bool bitOf(std::string_view bytes, int index, int dot)
{
    const unsigned int byte = static_cast<unsigned char>(bytes[static_cast<std::size_t>(index)]);
    return (byte >> static_cast<unsigned>(byteDots - 1 - dot) & 1U) != 0;
}

bool dotAt(std::string_view bytes, PictureLayout layout, const Size& size, int x, int y)
{
    switch (layout) {
    case PictureLayout::raster:
        return bitOf(bytes, y * (size.width / byteDots) + x / byteDots, x % byteDots);
    case PictureLayout::bands:
        return bitOf(bytes, y / byteDots * size.width + x, y % byteDots);
    case PictureLayout::columns:
        break;
    }
    return bitOf(bytes, x * (size.height / byteDots) + y / byteDots, y % byteDots);
}

std::string_view blockOf(bool upper, bool lower)
{
    if (upper) {
        return lower ? "\u2588" : "\u2580";
    }
    return lower ? "\u2584" : " ";
}

} // namespace

std::optional<Picture> decodePicture(std::string_view data, PictureLayout layout)
{
    const auto size = sizeOf(data, layout);
    if (!size) {
        return std::nullopt;
    }
    const std::string_view bytes = data.substr(headerSize);
    Picture picture = {.width = size->width, .height = size->height, .dots = {}};
    picture.dots.reserve(bytes.size() * byteDots);
    for (int y = 0; y < size->height; ++y) {
        for (int x = 0; x < size->width; ++x) {
            picture.dots.push_back(dotAt(bytes, layout, *size, x, y));
        }
    }
    return picture;
}

std::optional<Picture> decodePictureOfAnyLayout(std::string_view data)
{
    for (const PictureLayout layout : {PictureLayout::columns, PictureLayout::bands, PictureLayout::raster}) {
        if (auto picture = decodePicture(data, layout)) {
            return picture;
        }
    }
    return std::nullopt;
}

std::vector<std::string> pictureAsText(const Picture& picture, std::size_t columns)
{
    const int width = static_cast<int>(columns);
    const int scale = (picture.width + width - 1) / width;
    std::vector<std::string> lines;
    if (scale == 0) {
        return lines;
    }
    for (int y = 0; y < picture.height; y += 2 * scale) {
        std::string line;
        for (int x = 0; x < picture.width; x += scale) {
            line += blockOf(picture.at(x + scale / 2, y + scale / 2),
                            picture.at(x + scale / 2, y + scale + scale / 2));
        }
        line.erase(line.find_last_not_of(' ') + 1);
        lines.push_back(line);
    }
    return lines;
}

} // namespace virtual_printer
