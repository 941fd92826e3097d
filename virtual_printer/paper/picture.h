// Pictures as tills upload them: the layouts of the printer's language taken apart into dots again, and put
// on the paper in block characters.
#pragma once

#include "virtual_printer/fiscal/settings.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace virtual_printer {

enum class PictureLayout
{
    raster,
    bands,
    columns
};

// Nothing when the data does not fit its own header. The header has only the low bytes of the sizes: what it
// leaves open is taken from the length of the data.
std::optional<Picture> decodePicture(std::string_view data, PictureLayout layout);
// A picture that comes with a print command: the first of columns, bands and raster that its size fits.
std::optional<Picture> decodePictureOfAnyLayout(std::string_view data);

// Lines of at most `columns` block characters in UTF-8, two rows of dots a line; larger pictures are made
// smaller.
std::vector<std::string> pictureAsText(const Picture& picture, std::size_t columns);
// Not on every platform.
extern const bool canWritePng;
// Returns whether the file could be written.
bool writePictureAsPng(const Picture& picture, const std::string& fileName);

} // namespace virtual_printer
