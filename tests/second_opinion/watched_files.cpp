#include "tests/second_opinion/watched_files.h"

#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace telvofm::test {
namespace {

constexpr const char* printedPath = "printed";
constexpr std::size_t longEnough = 1 << 20;

std::size_t sizeOf(const std::string& path)
{
    struct stat status
    {
    };
    return ::stat(path.c_str(), &status) == 0 ? static_cast<std::size_t>(status.st_size) : 0;
}

} // namespace

std::optional<std::string> contentOf(const std::string& path, std::size_t from)
{
    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    struct stat status
    {
    };
    if (file == -1 || ::fstat(file, &status) != 0 || !S_ISREG(status.st_mode)) {
        ::close(file);
        return std::nullopt;
    }
    std::string bytes(static_cast<std::size_t>(status.st_size) - from, '\0');
    const auto got = ::pread(file, bytes.data(), bytes.size(), static_cast<off_t>(from));
    ::close(file);
    bytes.resize(got < 0 ? 0 : static_cast<std::size_t>(got));
    return bytes;
}

WatchedFiles::WatchedFiles()
    : sizes{{"fmlog.txt", 0}, {"a.log", 0}, {"b.log", 0}, {"raw.log", 0}, {"other.raw", 0}}
{
    const int file = ::open(printedPath, O_WRONLY | O_CREAT | O_TRUNC | O_APPEND, 0600);
    ::dup2(file, STDOUT_FILENO);
    ::close(file);
}

bool WatchedFiles::holdsAnything(const std::string& path) const
{
    const auto found = sizes.find(path);
    return found != sizes.end() && found->second != 0;
}

void WatchedFiles::report(Record& record)
{
    std::string added;
    std::string emptied;
    for (auto& [path, size] : sizes) {
        const std::size_t now = sizeOf(path);
        if (now < size) {
            emptied = "[\"" + path + "\"]";
            size = 0;
        }
        if (now > size) {
            added += (added.empty() ? "{\"" : ",\"") + path +
                     "\":" + jsonBytes(std::string_view(*contentOf(path, size)));
            size = now;
        }
    }
    if (!added.empty()) {
        record.member("logs", added + "}");
    }
    if (!emptied.empty()) {
        record.member("emptied", emptied);
    }
    std::fflush(stdout);
    if (const std::size_t now = sizeOf(printedPath); now != printed) {
        record.member("printed", jsonBytes(std::string_view(*contentOf(printedPath, printed))));
        printed = now;
    }
    shorten();
}

void WatchedFiles::shorten()
{
    for (auto& [path, size] : sizes) {
        if (size > longEnough && ::truncate(path.c_str(), 0) == 0) {
            size = 0;
        }
    }
}

} // namespace telvofm::test
