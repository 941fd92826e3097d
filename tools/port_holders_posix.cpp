#include "tools/port_holders_posix.h"

#include <filesystem>
#include <fstream>
#include <unistd.h>

namespace telvofm::tools {
namespace {

namespace fs = std::filesystem;

bool isNumber(const std::string& text)
{
    return text.find_first_not_of("0123456789") == std::string::npos;
}

bool holds(const fs::path& process, const fs::path& port)
{
    std::error_code unreadable;
    for (const auto& entry : fs::directory_iterator(process / "fd", unreadable)) {
        std::error_code gone;
        if (fs::read_symlink(entry.path(), gone) == port) {
            return true;
        }
    }
    return false;
}

std::string nameOf(const fs::path& process)
{
    std::ifstream file(process / "comm");
    std::string name;
    std::getline(file, name);
    return name + " (process " + process.filename().string() + ")";
}

} // namespace

Finding examineHolders(const std::string& path)
{
    std::error_code ignored;
    const fs::path port = fs::canonical(path, ignored);
    std::string holders;
    for (const auto& process : fs::directory_iterator("/proc", ignored)) {
        const std::string number = process.path().filename().string();
        if (isNumber(number) && number != std::to_string(::getpid()) && holds(process.path(), port)) {
            holders += (holders.empty() ? "" : ", ") + nameOf(process.path());
        }
    }
    if (!holders.empty()) {
        return {"holder", Health::bad, "The port is held by " + holders + ".",
                "End it: two programs at one port take each other's replies."};
    }
    if (::geteuid() != 0) {
        return {"holder", Health::unknown, "None of your programs holds the port.",
                "To see those of other users too, run this with sudo."};
    }
    return {"holder", Health::good, "No other program holds the port.", {}};
}

} // namespace telvofm::tools
