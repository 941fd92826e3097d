// Paths, which are given and shown in UTF-8 on every platform.
#pragma once

#include <filesystem>
#include <string>

namespace telvofm::tools {

inline std::filesystem::path pathOf(const std::string& utf8)
{
    return std::u8string(utf8.begin(), utf8.end());
}

inline std::string utf8(const std::filesystem::path& path)
{
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

} // namespace telvofm::tools
