// Reads BMP files from memory, for platforms without a loader of their own: one bit per pixel, uncompressed,
// with any version of the header, rows in either order. The palette is ignored: the bits of the file are what
// counts.
#pragma once

#include "graphics/bitmap.h"

#include <span>

namespace telvofm::graphics {

// So many bytes of the file's beginning tell how long it has to be.
inline constexpr std::size_t bitmapHeadSize = 34;

// Where the bitmap ends that `head`, the beginning of a file, announces; nothing when it is no bitmap. A
// loader asks before it reads the rest, so that a wrong file costs no memory.
std::optional<std::uint64_t> endOfBitmap(std::span<const std::uint8_t> head);

// Nothing when the bytes are no whole bitmap of a size that makes sense. The result is never larger than the
// file.
std::optional<PackedBitmap> readBitmap(std::span<const std::uint8_t> file);

} // namespace telvofm::graphics
