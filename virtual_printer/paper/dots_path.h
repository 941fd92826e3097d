// Dots as an outline that vector graphics fill: one path for a whole picture, short where dots lie side by
// side.
#pragma once

#include "virtual_printer/fiscal/settings.h"

#include <string>

namespace virtual_printer {

// "M0 0h7v1h-7z...", one unit a dot. Rows that are the same are one, so that a bar is a single rectangle.
std::string dotsPath(const Picture& picture);

} // namespace virtual_printer
