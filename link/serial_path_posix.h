// The file behind a serial port's name on POSIX systems.
#pragma once

#include <string>
#include <string_view>

namespace telvofm {

// `\\.\COM<n>` is the n-th serial port of the machine, /dev/ttyS<n-1>; `\\.\COM` and an absolute path is that
// path. Any other name has no file: an empty path, which cannot be opened because it does not exist.
std::string serialPath(std::string_view name);

} // namespace telvofm
