// Reads BMP files from memory, for platforms without a loader of their own, as a loader for a screen does: a
// file of one bit per pixel whose palette is black and white becomes a monochrome bitmap, in which white is 1
// whichever colour stands first; all others become bitmaps in colours. docs/graphics.md has the table of what
// is read and what is refused.
#pragma once

#include "graphics/bitmap.h"

#include <span>

namespace telvofm::graphics {

// So many bytes of the file's beginning tell how long it has to be.
inline constexpr std::size_t bitmapHeadSize = 50;

// Where the bitmap ends that `head`, the beginning of a file, announces; nothing when it is no bitmap. A
// loader asks before it reads the rest, so that a wrong file costs no memory.
std::optional<std::uint64_t> endOfBitmap(std::span<const std::uint8_t> head);

// Nothing when the bytes are no whole bitmap of a size that makes sense. The result is never larger than the
// file.
std::optional<PackedBitmap> readBitmap(std::span<const std::uint8_t> file);

} // namespace telvofm::graphics
