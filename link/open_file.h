// A file of the C library, closed with its last user. The library has no stream classes of C++: they would
// double it.
#pragma once

#include <cstdio>
#include <memory>

namespace telvofm {

struct CloseFile
{
    void operator()(std::FILE* file) const { static_cast<void>(std::fclose(file)); }
};
using OpenFile = std::unique_ptr<std::FILE, CloseFile>;

} // namespace telvofm
