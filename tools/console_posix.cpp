#include "tools/console.h"
#include "tools/ending.h"

#include <cerrno>
#include <cstring>
#include <unistd.h>

namespace telvofm::tools {

std::vector<std::string> commandLine(int count, char** arguments)
{
    return {arguments + 1, arguments + count};
}

std::FILE* takeStandardOutput()
{
    const int own = ::dup(STDOUT_FILENO);
    std::FILE* stream = own == -1 ? nullptr : ::fdopen(own, "w");
    if (stream == nullptr || ::dup2(STDERR_FILENO, STDOUT_FILENO) == -1) {
        throw Failure(Ending::noFile,
                      std::string("standard output cannot be written to: ") + std::strerror(errno));
    }
    return stream;
}

std::string nameForLibrary(const std::string& utf8)
{
    return utf8;
}

std::filesystem::path ownProgram()
{
    std::error_code unknown;
    return std::filesystem::read_symlink("/proc/self/exe", unknown);
}

} // namespace telvofm::tools
