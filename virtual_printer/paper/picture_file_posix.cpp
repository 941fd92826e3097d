#include "virtual_printer/paper/picture.h"

#include <png.h>

namespace virtual_printer {

const bool canWritePng = true;

bool writePictureAsPng(const Picture& picture, const std::string& fileName)
{
    constexpr png_byte black = 0;
    constexpr png_byte white = 255;
    std::vector<png_byte> pixels;
    pixels.reserve(picture.dots.size());
    for (const bool dot : picture.dots) {
        pixels.push_back(dot ? black : white);
    }
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(picture.width);
    image.height = static_cast<png_uint_32>(picture.height);
    image.format = PNG_FORMAT_GRAY;
    return png_image_write_to_file(&image, fileName.c_str(), 0, pixels.data(), 0, nullptr) != 0;
}

} // namespace virtual_printer
