// A shared library of the platform, call by call. There is one implementation per platform.
#pragma once

#include "tools/exported_function.h"

#include <array>
#include <filesystem>
#include <span>
#include <string>

namespace telvofm::tools {

struct SharedLibrary
{
    void* handle = nullptr; // null when it could not be loaded
    std::string problem;    // why, in the system's words
};

// By its path, or by its name alone in the places where the system looks.
SharedLibrary loadSharedLibrary(const std::filesystem::path& file);
ExportedFunction functionIn(const SharedLibrary& library, const std::string& name);
// Where the library lies that has this function.
std::filesystem::path fileOf(ExportedFunction function);

// The names that our library has here, the best first.
std::span<const char* const> libraryNames();

} // namespace telvofm::tools
