// What programs that this process starts get from it.
#pragma once

#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <set>
#include <string>

namespace telvofm::test {

// The numbers of the open files that they would have too.
inline std::set<std::string> filesOfStartedPrograms()
{
    std::set<std::string> files;
    for (const auto& file : std::filesystem::directory_iterator("/proc/self/fd")) {
        const std::string number = file.path().filename().string();
        const int flags = ::fcntl(std::atoi(number.c_str()), F_GETFD);
        if (flags != -1 && (flags & FD_CLOEXEC) == 0) {
            files.insert(number);
        }
    }
    return files;
}

} // namespace telvofm::test
