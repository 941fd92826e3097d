// Works on tiles of 8 x 8 dots held in one 64-bit word: eight pixels become a byte by one multiplication, and
// a tile is turned from rows into columns by three exchanges of its bits.
#include "graphics/logo_layouts.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

namespace telvofm::graphics {
namespace {

constexpr std::size_t tileSize = 8;
constexpr std::size_t headerSize = 4;

static_assert(std::endian::native == std::endian::little,
              "the first pixel is taken from the lowest byte of a word");

std::size_t tiles(std::size_t dots)
{
    return (dots + tileSize - 1) / tileSize;
}

char lowByte(std::size_t value)
{
    return static_cast<char>(value & 0xFFU);
}

std::string withHeader(std::size_t first, std::size_t second, std::size_t dataSize)
{
    std::string layout(headerSize + dataSize, '\0');
    layout[0] = lowByte(first);
    layout[2] = lowByte(second);
    return layout;
}

// Eight pixels, each 0 or 1, as the bits of a byte, the first one in bit 7. Each product of the
// multiplication falls on a bit of its own, and the eight wanted ones on the highest byte.
std::uint8_t packed(std::uint64_t pixels)
{
    constexpr std::uint64_t gather = 0x8040201008040201U;
    return static_cast<std::uint8_t>(pixels * gather >> 56U);
}

std::uint64_t load(const void* bytes)
{
    std::uint64_t word = 0;
    std::memcpy(&word, bytes, sizeof word);
    return word;
}

void packRow(const std::uint8_t* pixels, std::size_t width, std::uint8_t mask, char* row)
{
    const std::size_t whole = width / tileSize;
    for (std::size_t k = 0; k < whole; ++k) {
        row[k] = static_cast<char>(packed(load(pixels + k * tileSize)) ^ mask);
    }
    if (whole * tileSize < width) {
        std::array<std::uint8_t, tileSize> last;
        last.fill(1); // padding counts as set pixels
        std::copy(pixels + whole * tileSize, pixels + width, last.begin());
        row[whole] = static_cast<char>(packed(load(last.data())) ^ mask);
    }
}

// Byte i of the result holds bit 7 - i of every byte, the first byte's in bit 7.
std::uint64_t transposed(std::uint64_t tile)
{
    const auto exchange = [&tile](std::uint64_t mask, unsigned distance) {
        const std::uint64_t difference = (tile ^ tile >> distance) & mask;
        tile ^= difference ^ difference << distance;
    };
    tile = __builtin_bswap64(tile);
    exchange(0x00AA00AA00AA00AAU, 7);
    exchange(0x0000CCCC0000CCCCU, 14);
    exchange(0x00000000F0F0F0F0U, 28);
    return __builtin_bswap64(tile);
}

} // namespace

LogoLayouts logoLayouts(const Bitmap& bitmap, bool inverse)
{
    const std::size_t tileColumns = tiles(bitmap.width);
    const std::size_t tileRows = tiles(bitmap.height);
    const std::uint8_t mask = inverse ? 0x00 : 0xFF;

    LogoLayouts layouts;
    // The second number of the raster is the height and seven, neither rounded nor in tiles: this is meant.
    layouts.raster = withHeader(tileColumns, bitmap.height + tileSize - 1, tileRows * tileSize * tileColumns);
    layouts.bands = withHeader(bitmap.width, tileRows, tileRows * bitmap.width);
    layouts.columns = withHeader(tileColumns, tileRows, tileColumns * tileSize * tileRows);

    char* const raster = layouts.raster.data() + headerSize;
    for (std::size_t y = 0; y < bitmap.height; ++y) {
        packRow(bitmap.pixels.data() + y * bitmap.width, bitmap.width, mask, raster + y * tileColumns);
    }
    const std::size_t packedSize = bitmap.height * tileColumns;
    std::fill(raster + packedSize, raster + tileRows * tileSize * tileColumns, static_cast<char>(~mask));

    char* const bands = layouts.bands.data() + headerSize;
    char* const columns = layouts.columns.data() + headerSize;
    for (std::size_t k = 0; k < tileColumns; ++k) {
        const std::size_t inBand = std::min(tileSize, bitmap.width - k * tileSize);
        for (std::size_t b = 0; b < tileRows; ++b) {
            std::array<char, tileSize> bytes;
            for (std::size_t row = 0; row < tileSize; ++row) {
                bytes[row] = raster[(b * tileSize + row) * tileColumns + k];
            }
            const std::uint64_t turned = transposed(load(bytes.data()));
            std::memcpy(bytes.data(), &turned, tileSize);
            char* const band = bands + b * bitmap.width + k * tileSize;
            if (inBand == tileSize) {
                std::memcpy(band, bytes.data(), tileSize); // a fixed size is one move
            } else {
                std::copy_n(bytes.begin(), inBand, band);
            }
            for (std::size_t column = 0; column < tileSize; ++column) {
                columns[(k * tileSize + column) * tileRows + b] = bytes[column];
            }
        }
    }
    return layouts;
}

} // namespace telvofm::graphics
