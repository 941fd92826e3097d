// The library, loaded when it is needed: the tool runs without it and can say what is wrong with one.
#pragma once

#include <filesystem>
#include <string>

namespace telvofm::tools {

struct LoadedLibrary
{
    std::filesystem::path file;
    int version; // of its interface
};

// Loads the named file, or without a name the library beside the program, or the system's. From then on
// exportedFunction() finds its functions. Throws a Failure that says what is wrong and what to do.
LoadedLibrary loadLibrary(const std::string& name);

} // namespace telvofm::tools
