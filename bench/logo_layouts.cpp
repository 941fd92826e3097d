// Converts bitmaps into all layouts, beside a plain loop over the dots and beside copying the same output.
// Prints dots per second (all four tables counted), the ratios, and the most memory that preparing a bitmap
// file takes, beside the pixels and the four layouts.
//
//     logo_layouts            measures
//     logo_layouts --once     only makes the layouts of one picture, for a profiler
#include "graphics/logo_layouts.h"
#include "graphics/logos.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <malloc.h>
#include <new>
#include <random>

namespace {

std::size_t memoryInUse = 0;
std::size_t mostMemoryInUse = 0;

} // namespace

// These take the place of the standard ones in this program.
void* operator new(std::size_t size)
{
    void* memory = std::malloc(size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    memoryInUse += ::malloc_usable_size(memory);
    mostMemoryInUse = std::max(mostMemoryInUse, memoryInUse);
    return memory;
}

void operator delete(void* memory) noexcept
{
    memoryInUse -= ::malloc_usable_size(memory);
    std::free(memory);
}

void operator delete(void* memory, std::size_t /*size*/) noexcept
{
    operator delete(memory);
}

namespace {

using namespace telvofm::graphics;

// The best of several runs, in seconds.
template <typename Work>
double fastest(Work work)
{
    constexpr int runs = 7;
    double best = 1e9;
    for (int run = 0; run < runs; ++run) {
        const auto begun = std::chrono::steady_clock::now();
        work();
        best =
            std::min(best, std::chrono::duration<double>(std::chrono::steady_clock::now() - begun).count());
    }
    return best;
}

// Dot by dot, eight to a byte: rows of bytes, columns of bytes, and columns once more.
void dotByDot(const Bitmap& bitmap, std::string* layouts)
{
    const std::size_t across = (bitmap.width + 7) / 8;
    const std::size_t down = (bitmap.height + 7) / 8;
    const auto dot = [&](std::size_t x, std::size_t y) {
        return x < bitmap.width && y < bitmap.height && bitmap.pixels[y * bitmap.width + x] == 0;
    };
    const auto put = [](std::string& layout, auto dotAt) {
        unsigned byte = 0;
        for (std::size_t i = 0; i < 8; ++i) {
            byte = byte << 1U | (dotAt(i) ? 1U : 0U);
        }
        layout.push_back(static_cast<char>(byte));
    };
    for (std::size_t y = 0; y < 8 * down; ++y) {
        for (std::size_t k = 0; k < across; ++k) {
            put(layouts[0], [&](std::size_t i) { return dot(8 * k + i, y); });
        }
    }
    for (std::size_t b = 0; b < down; ++b) {
        for (std::size_t x = 0; x < bitmap.width; ++x) {
            put(layouts[1], [&](std::size_t i) { return dot(x, 8 * b + i); });
        }
    }
    for (const int table : {2, 3}) {
        for (std::size_t x = 0; x < 8 * across; ++x) {
            for (std::size_t b = 0; b < down; ++b) {
                put(layouts[table], [&](std::size_t i) { return dot(x, 8 * b + i); });
            }
        }
    }
}

Bitmap randomDots(std::size_t width, std::size_t height)
{
    Bitmap bitmap{.width = width, .height = height, .pixels = {}};
    std::mt19937 random(1);
    for (std::size_t i = 0; i < width * height; ++i) {
        bitmap.pixels.push_back(random() & 1U);
    }
    return bitmap;
}

void measure(std::size_t width, std::size_t height)
{
    const Bitmap bitmap = randomDots(width, height);
    std::size_t bytes = 0;
    const double ours = fastest([&] {
        const LogoLayouts layouts = logoLayouts(bitmap, false);
        const std::string second = layouts.columns; // the fourth table
        bytes = layouts.raster.size() + layouts.bands.size() + layouts.columns.size() + second.size();
    });
    const double plain = fastest([&] {
        std::string layouts[4];
        for (std::string& layout : layouts) {
            layout.reserve(bytes / 4 + 8);
        }
        dotByDot(bitmap, layouts);
    });
    const std::string source(bytes, 'x');
    const double copying = fastest([&] {
        std::string target(bytes, '\0');
        std::memcpy(target.data(), source.data(), bytes);
    });
    const double dots = 4.0 * static_cast<double>(width) * static_cast<double>(height);
    std::printf("%zu x %zu: %.2f billion dots/s, plain loop %.2f, ratio %.1f; copying the output takes "
                "1/%.1f of it\n",
                width, height, dots / ours / 1e9, dots / plain / 1e9, plain / ours, ours / copying);
}

// A file of clear pixels: one bit each, rows from the bottom, whole words.
void writeBitmap(const std::filesystem::path& path, std::uint32_t width, std::uint32_t height)
{
    constexpr std::uint32_t pixelsAt = 14 + 40 + 8;
    const std::size_t stride = (std::size_t{width} + 31) / 32 * 4;
    std::string file(pixelsAt + stride * height, '\0');
    const auto put = [&file](std::size_t position, std::uint32_t value) {
        for (std::size_t i = 0; i < 4; ++i) {
            file[position + i] = static_cast<char>(value >> (8 * i) & 0xFFU);
        }
    };
    file.replace(0, 2, "BM");
    put(10, pixelsAt);
    put(14, 40);
    put(18, width);
    put(22, height);
    put(26, 0x00010001);          // one plane, one bit per pixel
    put(14 + 40 + 4, 0x00FFFFFF); // black, then white
    std::ofstream(path, std::ios::binary).write(file.data(), static_cast<std::streamsize>(file.size()));
}

void measureMemory(std::uint32_t width, std::uint32_t height)
{
    const auto path = std::filesystem::temp_directory_path() / "telvofm_logo_layouts.bmp";
    writeBitmap(path, width, height);
    telvofm::Device printer(nullptr);
    const std::size_t before = memoryInUse;
    mostMemoryInUse = before;
    prepare(printer, 1, path.string(), false);
    const std::size_t most = mostMemoryInUse - before;
    const std::size_t kept = printer.rasterImages[1].size() + printer.bandImages[1].size() +
                             printer.columnImages[1].size() + printer.secondColumnImages[1].size();
    const std::size_t needed = std::size_t{width} * height + kept;
    std::filesystem::remove(path);
    std::printf("%u x %u: preparing takes %zu bytes at most, pixels and four layouts are %zu, ratio %.2f\n",
                width, height, most, needed, static_cast<double>(most) / static_cast<double>(needed));
}

} // namespace

int main(int count, char** arguments)
{
    if (count > 1 && std::strcmp(arguments[1], "--once") == 0) {
        return logoLayouts(randomDots(576, 1200), false).raster.empty() ? EXIT_FAILURE : EXIT_SUCCESS;
    }
    measure(576, 1200);
    measure(4096, 4096);
    measureMemory(576, 1200);
    measureMemory(4096, 4096);
}
