#include "link/appended_file.h"

#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>

namespace telvofm {

AppendedFile::AppendedFile(const std::string& path)
{
    // Text: a line ends as the platform's lines do.
    descriptor = ::_open(path.c_str(), _O_WRONLY | _O_CREAT | _O_APPEND | _O_TEXT | _O_NOINHERIT,
                         _S_IREAD | _S_IWRITE);
}

AppendedFile::~AppendedFile()
{
    if (isOpen()) {
        ::_close(descriptor);
    }
}

bool AppendedFile::isOpen() const
{
    return descriptor != invalid;
}

void AppendedFile::append(std::string_view record) const
{
    constexpr std::size_t most = 1 << 30; // the length of one write is an int
    while (!record.empty()) {
        const std::string_view piece = record.substr(0, most);
        if (::_write(descriptor, piece.data(), static_cast<unsigned int>(piece.size())) < 0) {
            return;
        }
        record.remove_prefix(piece.size());
    }
}

} // namespace telvofm
