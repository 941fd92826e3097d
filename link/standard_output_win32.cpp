#include "link/standard_output.h"

#include <cstdio>

namespace telvofm {

// There is no signal here, and no look at a pipe that would tell whether a write blocks.
void writeLine(std::string_view line)
{
    std::fwrite(line.data(), 1, line.size(), stdout);
    std::fputc('\n', stdout);
    std::fflush(stdout);
}

} // namespace telvofm
