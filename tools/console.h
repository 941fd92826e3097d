// What the tool gets from the one who started it and where it writes to. There is one implementation per
// platform.
#pragma once

#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

namespace telvofm::tools {

// Those behind the program's name, in UTF-8.
std::vector<std::string> commandLine(int count, char** arguments);

// Standard output as a stream of its own. What the library writes to standard output goes to standard error
// from here on, so that the tool's own output stays clean.
std::FILE* takeStandardOutput();

// A file's name, given in UTF-8, in the form in which the library's functions take it.
std::string nameForLibrary(const std::string& utf8);

// The program itself.
std::filesystem::path ownProgram();

} // namespace telvofm::tools
