#include "virtual_printer/logo.h"

#include <png.h>

namespace virtual_printer {
namespace {

constexpr std::size_t headerSize = 4;
constexpr std::size_t byteDots = 8;
constexpr std::size_t byteRange = 256;

// A size whose low byte is known: the smallest one that accounts for all of the data.
std::size_t wholeSize(unsigned char lowByte, std::size_t dataSize, std::size_t bytesEach)
{
    std::size_t size = lowByte;
    while (bytesEach > 0 && size * bytesEach < dataSize) {
        size += byteRange;
    }
    return size;
}

bool bitOf(std::string_view bytes, std::size_t index, std::size_t dot)
{
    const unsigned int byte = static_cast<unsigned char>(bytes[index]);
    return (byte >> (byteDots - 1 - dot) & 1U) != 0;
}

} // namespace

std::optional<Logo> decodeLogo(std::string_view data, LogoLayout layout)
{
    if (data.size() < headerSize) {
        return std::nullopt;
    }
    const auto first = static_cast<unsigned char>(data[0]);
    const auto second = static_cast<unsigned char>(data[2]);
    const std::string_view bytes = data.substr(headerSize);
    Logo logo;
    std::size_t down = second; // in bytes of eight dots
    std::size_t across = first;
    switch (layout) {
    case LogoLayout::raster:
        // The second number is the height and seven; the data has whole bytes of rows.
        if (across == 0 || bytes.size() % (across * byteDots) != 0) {
            return std::nullopt;
        }
        logo.width = across * byteDots;
        logo.height = bytes.size() / across;
        if ((logo.height + byteDots - 1 - second) % byteRange >= byteDots) {
            return std::nullopt;
        }
        break;
    case LogoLayout::bands:
        across = wholeSize(first, bytes.size(), down);
        logo.width = across;
        logo.height = down * byteDots;
        if (across * down != bytes.size()) {
            return std::nullopt;
        }
        break;
    case LogoLayout::columns:
        if (across * byteDots * down != bytes.size()) {
            return std::nullopt;
        }
        logo.width = across * byteDots;
        logo.height = down * byteDots;
        break;
    }
    logo.dots.resize(logo.width * logo.height);
    for (std::size_t y = 0; y < logo.height; ++y) {
        for (std::size_t x = 0; x < logo.width; ++x) {
            bool dot = false;
            switch (layout) {
            case LogoLayout::raster:
                dot = bitOf(bytes, y * across + x / byteDots, x % byteDots);
                break;
            case LogoLayout::bands:
                dot = bitOf(bytes, y / byteDots * logo.width + x, y % byteDots);
                break;
            case LogoLayout::columns:
                dot = bitOf(bytes, x * down + y / byteDots, y % byteDots);
                break;
            }
            logo.dots[y * logo.width + x] = dot;
        }
    }
    return logo;
}

std::vector<std::string> logoAsText(const Logo& logo, std::size_t columns)
{
    const std::size_t scale = (logo.width + columns - 1) / columns;
    std::vector<std::string> lines;
    if (scale == 0) {
        return lines;
    }
    for (std::size_t y = 0; y < logo.height; y += 2 * scale) {
        std::string line;
        for (std::size_t x = 0; x < logo.width; x += scale) {
            const bool upper = logo.at(x + scale / 2, y + scale / 2);
            const bool lower = logo.at(x + scale / 2, y + scale + scale / 2);
            if (upper) {
                line += lower ? "\u2588" : "\u2580";
            } else {
                line += lower ? "\u2584" : " ";
            }
        }
        line.erase(line.find_last_not_of(' ') + 1);
        lines.push_back(line);
    }
    return lines;
}

bool writeLogoAsPng(const Logo& logo, const std::string& fileName)
{
    constexpr png_byte black = 0;
    constexpr png_byte white = 255;
    std::vector<png_byte> pixels;
    pixels.reserve(logo.dots.size());
    for (const bool dot : logo.dots) {
        pixels.push_back(dot ? black : white);
    }
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(logo.width);
    image.height = static_cast<png_uint_32>(logo.height);
    image.format = PNG_FORMAT_GRAY;
    return png_image_write_to_file(&image, fileName.c_str(), 0, pixels.data(), 0, nullptr) != 0;
}

} // namespace virtual_printer
