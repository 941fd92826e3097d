// Feeds any bytes to the bitmap reader; what it accepts is never larger than the file. Run it with the seeds
// beside it:
//
//     build/tsan/bitmap_reader_fuzzer -max_total_time=60 CORPUS tests/fuzz/bitmap_seeds
#include "graphics/bitmap_reader.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto packed = telvofm::graphics::readBitmap({data, size});
    if (packed && packed->bitsPerPixel == 1) {
        if (packed->bits.size() > size || packed->bits.size() != packed->stride * packed->height) {
            std::abort();
        }
    }
    return 0;
}
