// The printer's picture layouts as pure functions of a bitmap: four header bytes, and bytes of eight dots
// each, the first dot in bit 7. Without `inverse` clear pixels become dots, and set pixels and the padding
// blanks; with it set pixels and the padding become dots.
#pragma once

#include "graphics/bitmap.h"

#include <string>

namespace telvofm::graphics {

struct LogoLayouts
{
    std::string raster;  // row by row from the top
    std::string bands;   // bands of eight rows, each column by column, one byte for the column's eight dots
    std::string columns; // column by column, each from the top
};

LogoLayouts logoLayouts(const Bitmap& bitmap, bool inverse);

} // namespace telvofm::graphics
