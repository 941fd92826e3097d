// What the request that announces an upload tells about the blocks that come behind it.
#pragma once

#include <cstddef>

namespace virtual_printer {

inline constexpr int widestPicture = 576; // in dots

// The numbers of `Upload::numbers`.
enum class Said : std::size_t
{
    firstPicture, // the number of the first one
    pictures,     // how many come
    isPrinted     // whether they are also put on the paper
};

} // namespace virtual_printer
