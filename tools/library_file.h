// What kind of library a file is, told from its first bytes.
#pragma once

#include <filesystem>

namespace telvofm::tools {

// For this operating system or for the other one, by the size of its addresses.
enum class LibraryFile
{
    own64,
    own32,
    other64,
    other32,
    cutOff, // loading one would end this program
    none
};

LibraryFile kindOfLibrary(const std::filesystem::path& file);

} // namespace telvofm::tools
