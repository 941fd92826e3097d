// The fast logo layouts beside the plain loop over the dots, for any picture of up to a thousand dots.
#include "graphics/logo_layouts.h"
#include "tests/fuzz/fuzzed_bytes.h"
#include "tests/unit/dot_by_dot.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace telvofm::graphics;
    using telvofm::fuzz::require;
    constexpr std::size_t mostDots = 1024;

    telvofm::fuzz::FuzzedBytes input(data, size);
    const bool inverse = (input.byte() & 1U) != 0;
    Bitmap bitmap;
    bitmap.width = 1 + input.number<std::uint16_t>() % mostDots;
    bitmap.height = input.byte() % (mostDots / bitmap.width + 1); // none, too
    bitmap.pixels.assign(bitmap.width * bitmap.height, 0);
    const std::string_view dots = input.rest(); // eight to a byte, and again from the beginning
    for (std::size_t i = 0; i < bitmap.pixels.size() && !dots.empty(); ++i) {
        bitmap.pixels[i] = static_cast<unsigned char>(dots[i / 8 % dots.size()]) >> (i % 8) & 1U;
    }
    const LogoLayouts layouts = logoLayouts(bitmap, inverse);
    const DotByDot expected(bitmap, inverse);
    require(layouts.raster == expected.raster());
    require(layouts.bands == expected.bands());
    require(layouts.columns == expected.columns());
    return 0;
}
