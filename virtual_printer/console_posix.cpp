#include "virtual_printer/console.h"

namespace virtual_printer {

std::vector<std::string> commandLine(int count, char** arguments)
{
    return {arguments + 1, arguments + count};
}

void writeInUtf8() {} // as it does anyway

} // namespace virtual_printer
