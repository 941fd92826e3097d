// Eight dots at a time, without a branch in the inner loops. Rows: eight pixels become a byte by one
// multiplication. Bands: eight columns of eight rows in one word. Columns: the bands turned on their side, in
// blocks of 8 x 8 bytes.
#include "graphics/logo_layouts.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

namespace telvofm::graphics {
namespace {

constexpr std::size_t tileSize = 8;
constexpr std::size_t headerSize = 4;
constexpr unsigned byteBits = 8;
constexpr bool firstIsLowest = std::endian::native == std::endian::little; // byte of a word

std::size_t tiles(std::size_t dots)
{
    return (dots + tileSize - 1) / tileSize;
}

char lowByte(std::size_t value)
{
    return static_cast<char>(value & 0xFFU);
}

// `fill` is what bytes that nothing is written to hold.
std::string withHeader(std::size_t first, std::size_t second, std::size_t dataSize, char fill)
{
    std::string layout(headerSize + dataSize, fill);
    layout[0] = lowByte(first);
    layout[1] = '\0';
    layout[2] = lowByte(second);
    layout[3] = '\0';
    return layout;
}

std::uint64_t eightPixels(const std::uint8_t* pixels)
{
    std::uint64_t word = 0;
    std::memcpy(&word, pixels, sizeof word);
    return word;
}

// Eight pixels, each 0 or 1, as the bits of a byte, the first one in bit 7. Each product of the
// multiplication falls on a bit of its own, and the eight wanted ones on the highest byte.
unsigned packed(const std::uint8_t* pixels)
{
    constexpr std::uint64_t gather = firstIsLowest ? 0x8040201008040201U : 0x0102040810204080U;
    constexpr unsigned highestByte = 56;
    return static_cast<unsigned>(eightPixels(pixels) * gather >> highestByte);
}

void packRow(const std::uint8_t* pixels, std::size_t width, unsigned mask, char* row)
{
    const std::size_t whole = width / tileSize;
    for (std::size_t k = 0; k < whole; ++k) {
        row[k] = static_cast<char>(packed(pixels + k * tileSize) ^ mask);
    }
    if (whole * tileSize < width) {
        std::array<std::uint8_t, tileSize> last;
        last.fill(1); // padding counts as set pixels
        std::copy(pixels + whole * tileSize, pixels + width, last.begin());
        row[whole] = static_cast<char>(packed(last.data()) ^ mask);
    }
}

using RowsOfBand = std::array<const std::uint8_t*, tileSize>;

// Eight columns at a time, and those that are left one by one. As each pixel is 0 or 1, no bit of a word
// reaches the byte beside it.
void packBand(const RowsOfBand& rows, std::size_t width, unsigned mask, char* band)
{
    constexpr std::uint64_t eachByte = 0x0101010101010101U;
    const std::size_t wholeWidth = width / tileSize * tileSize;
    for (std::size_t x = 0; x < wholeWidth; x += tileSize) {
        const auto row = [&rows, x](std::size_t i) { return eightPixels(rows[i] + x) << (tileSize - 1 - i); };
        const std::uint64_t dots =
            (row(0) | row(1) | row(2) | row(3) | row(4) | row(5) | row(6) | row(7)) ^ mask * eachByte;
        std::memcpy(band + x, &dots, sizeof dots);
    }
    for (std::size_t x = wholeWidth; x < width; ++x) {
        unsigned dots = 0;
        for (const std::uint8_t* row : rows) {
            dots = dots << 1U | row[x];
        }
        band[x] = static_cast<char>(dots ^ mask);
    }
}

// Eight words of eight bytes: rows become columns by exchanging quarters, then quarters of those, then bytes.
void turn(std::array<std::uint64_t, tileSize>& rows)
{
    const auto exchange = [&rows](std::size_t distance, std::uint64_t mask) {
        const std::size_t shift = byteBits * distance;
        for (std::size_t i = 0; i < tileSize; ++i) {
            if ((i & distance) == 0) {
                std::uint64_t& shifted = rows[firstIsLowest ? i : i + distance];
                std::uint64_t& other = rows[firstIsLowest ? i + distance : i];
                const std::uint64_t difference = (shifted >> shift ^ other) & mask;
                other ^= difference;
                shifted ^= difference << shift;
            }
        }
    };
    exchange(4, 0x00000000FFFFFFFFU);
    exchange(2, 0x0000FFFF0000FFFFU);
    exchange(1, 0x00FF00FF00FF00FFU);
}

// Byte (b, x) of the bands becomes byte (x, b) of the columns.
void turnBands(const char* bands, std::size_t width, std::size_t count, char* columns)
{
    const std::size_t wholeWidth = width / tileSize * tileSize;
    const std::size_t wholeCount = count / tileSize * tileSize;
    for (std::size_t b = 0; b < wholeCount; b += tileSize) {
        for (std::size_t x = 0; x < wholeWidth; x += tileSize) {
            std::array<std::uint64_t, tileSize> block;
            for (std::size_t i = 0; i < tileSize; ++i) {
                std::memcpy(&block[i], bands + (b + i) * width + x, tileSize);
            }
            turn(block);
            for (std::size_t i = 0; i < tileSize; ++i) {
                std::memcpy(columns + (x + i) * count + b, &block[i], tileSize);
            }
        }
    }
    for (std::size_t b = 0; b < count; ++b) {
        for (std::size_t x = b < wholeCount ? wholeWidth : 0; x < width; ++x) {
            columns[x * count + b] = bands[b * width + x];
        }
    }
}

} // namespace

LogoLayouts logoLayouts(const Bitmap& bitmap, bool inverse)
{
    const auto& [width, height, pixels] = bitmap;
    const std::size_t tileColumns = tiles(width);
    const std::size_t tileRows = tiles(height);
    const unsigned mask = inverse ? 0x00 : 0xFF;
    const char padding = lowByte(~mask);

    LogoLayouts layouts;
    // The second number of the raster is the height and seven, neither rounded nor in tiles: this is meant.
    layouts.raster =
        withHeader(tileColumns, height + tileSize - 1, tileRows * tileSize * tileColumns, padding);
    layouts.bands = withHeader(width, tileRows, tileRows * width, padding);
    layouts.columns = withHeader(tileColumns, tileRows, tileColumns * tileSize * tileRows, padding);

    for (std::size_t y = 0; y < height; ++y) {
        packRow(pixels.data() + y * width, width, mask, layouts.raster.data() + headerSize + y * tileColumns);
    }
    const std::vector<std::uint8_t> below(width, 1); // padding counts as set pixels
    char* const bands = layouts.bands.data() + headerSize;
    for (std::size_t b = 0; b < tileRows; ++b) {
        RowsOfBand rows;
        for (std::size_t i = 0; i < tileSize; ++i) {
            const std::size_t y = b * tileSize + i;
            rows[i] = y < height ? pixels.data() + y * width : below.data();
        }
        packBand(rows, width, mask, bands + b * width);
    }
    turnBands(bands, width, tileRows, layouts.columns.data() + headerSize);
    return layouts;
}

} // namespace telvofm::graphics
