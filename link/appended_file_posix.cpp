#include "link/appended_file.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace telvofm {

AppendedFile::AppendedFile(const std::string& path)
{
    constexpr int everybodysFile = 0666; // less what the process's mask takes away
    do { // again when a signal interrupts it, as it does where a pipe or a network's file stands there
        descriptor = ::open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, everybodysFile);
    } while (!isOpen() && errno == EINTR);
}

AppendedFile::~AppendedFile()
{
    if (isOpen()) {
        ::close(descriptor);
    }
}

bool AppendedFile::isOpen() const
{
    return descriptor != invalid;
}

void AppendedFile::append(std::string_view record) const
{
    while (!record.empty()) {
        const ssize_t written = ::write(descriptor, record.data(), record.size());
        if (written >= 0) {
            record.remove_prefix(static_cast<std::size_t>(written));
        } else if (errno != EINTR) {
            return;
        }
    }
}

} // namespace telvofm
