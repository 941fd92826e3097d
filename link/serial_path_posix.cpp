#include "link/serial_path_posix.h"

#include <charconv>

namespace telvofm {

std::string serialPath(std::string_view name)
{
    constexpr std::string_view prefix = R"(\\.\COM)";
    if (!name.starts_with(prefix)) {
        return {};
    }
    name.remove_prefix(prefix.size());
    if (name.starts_with('/')) {
        return std::string(name);
    }
    int number = 0;
    const char* const end = name.data() + name.size();
    const auto parsed = std::from_chars(name.data(), end, number);
    if (parsed.ec != std::errc() || parsed.ptr != end || number < 1) {
        return {};
    }
    return "/dev/ttyS" + std::to_string(number - 1);
}

} // namespace telvofm
