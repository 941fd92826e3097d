// Texts of Windows in UTF-8.
#pragma once

#include <string>
#include <windows.h>

namespace telvofm::tools {

inline std::string utf8(const wchar_t* text)
{
    const int size = ::WideCharToMultiByte(CP_UTF8, 0, text, -1, nullptr, 0, nullptr, nullptr);
    std::string converted(static_cast<std::size_t>(size), '\0');
    ::WideCharToMultiByte(CP_UTF8, 0, text, -1, converted.data(), size, nullptr, nullptr);
    converted.pop_back(); // its end mark
    return converted;
}

} // namespace telvofm::tools
