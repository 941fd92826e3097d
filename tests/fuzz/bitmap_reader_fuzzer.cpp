// Feeds any bytes to the bitmap reader; what it accepts is never larger than the file, and its head alone
// tells where it ends. Run it with the seeds beside it:
//
//     build/debug/bitmap_reader_fuzzer -max_total_time=60 CORPUS tests/fuzz/bitmap_reader_seeds
#include "graphics/bitmap_reader.h"

#include <algorithm>
#include <cstdlib>

namespace {

void require(bool condition)
{
    if (!condition) {
        std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace telvofm::graphics;
    const std::span file(data, size);
    const auto packed = readBitmap(file);
    const auto end = endOfBitmap(file.first(std::min(size, bitmapHeadSize)));
    require(packed.has_value() == (end.has_value() && *end <= size));
    if (packed && packed->bitsPerPixel == 1) {
        require(packed->bits.size() <= size && packed->bits.size() == packed->stride * packed->height);
        require(packed->width > 0 && packed->height > 0 && packed->stride * 8 >= packed->width);
    }
    return 0;
}
