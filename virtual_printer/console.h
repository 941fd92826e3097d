// What the program is told on its command line and writes to the console is UTF-8 on every platform. There is
// one implementation per platform.
#pragma once

#include <string>
#include <vector>

namespace virtual_printer {

// Those behind the program's name.
std::vector<std::string> commandLine(int count, char** arguments);

// From here to the end of the process a console shows what is written as the UTF-8 that it is, and lines end
// alike everywhere.
void writeInUtf8();

} // namespace virtual_printer
