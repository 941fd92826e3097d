// Names of files, which are the system's matter and not the printer's: the bytes that they have on Linux, the
// system's own code page on Windows.
#pragma once

#include "result.hpp"

#include <algorithm>
#include <filesystem>
#include <string>

namespace telvofm {
namespace inside {

#ifdef _WIN32
// As <windows.h> has them, without its macros.
extern "C" __declspec(dllimport) int __stdcall WideCharToMultiByte(unsigned, unsigned long, const wchar_t*,
                                                                   int, char*, int, const char*, int*);
extern "C" __declspec(dllimport) int __stdcall MultiByteToWideChar(unsigned, unsigned long, const char*, int,
                                                                   wchar_t*, int);

// With something similar in the place of what the code page lacks.
inline std::string inSystemCodePage(const std::wstring& name)
{
    std::string bytes(name.size() * 4, '\0');
    bytes.resize(static_cast<std::size_t>(
        WideCharToMultiByte(0, 0, name.data(), static_cast<int>(name.size()), bytes.data(),
                            static_cast<int>(bytes.size()), nullptr, nullptr)));
    return bytes;
}

inline std::wstring fromSystemCodePage(const std::string& bytes)
{
    std::wstring name(bytes.size(), L'\0');
    name.resize(static_cast<std::size_t>(MultiByteToWideChar(
        0, 0, bytes.data(), static_cast<int>(bytes.size()), name.data(), static_cast<int>(name.size()))));
    return name;
}
#endif

inline Failure cannotName(const std::string& what, std::size_t position)
{
    return wrongArgument(Kind::textError, what + " at position " + std::to_string(position) +
                                              " of a file's name; give it another one, nothing was sent");
}

} // namespace inside

// The bytes of a name. Refuses a NUL, and on Windows what the system's code page lacks.
inline Result<std::string> encodeFileName(const std::filesystem::path& file)
{
    const std::filesystem::path::string_type& name = file.native();
    const auto nul = std::find(name.begin(), name.end(), std::filesystem::path::value_type());
    if (nul != name.end()) {
        return inside::cannotName("a NUL stands", static_cast<std::size_t>(nul - name.begin()));
    }
#ifdef _WIN32
    std::string bytes = inside::inSystemCodePage(name);
    const std::wstring read = inside::fromSystemCodePage(bytes);
    const auto different = std::mismatch(name.begin(), name.end(), read.begin(), read.end()).first;
    if (different != name.end()) {
        return inside::cannotName("a character that the system's code page lacks stands",
                                  static_cast<std::size_t>(different - name.begin()));
    }
    return bytes;
#else
    return name;
#endif
}

} // namespace telvofm
