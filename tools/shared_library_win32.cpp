#include "tools/shared_library.h"

#include <windows.h>

namespace telvofm::tools {
namespace {

std::string systemWords(DWORD error)
{
    std::array<char, 512> text{};
    const DWORD size = ::FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                        error, MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US), text.data(),
                                        static_cast<DWORD>(text.size()), nullptr);
    std::string words(text.data(), size);
    words.erase(words.find_last_not_of("\r\n. ") + 1);
    return words.empty() ? "error " + std::to_string(error) : words;
}

} // namespace

SharedLibrary loadSharedLibrary(const std::filesystem::path& file)
{
    SharedLibrary library;
    library.handle = ::LoadLibraryW(file.c_str());
    if (library.handle == nullptr) {
        library.problem = systemWords(::GetLastError());
    }
    return library;
}

ExportedFunction functionIn(const SharedLibrary& library, const std::string& name)
{
    return reinterpret_cast<ExportedFunction>(
        ::GetProcAddress(static_cast<HMODULE>(library.handle), name.c_str()));
}

std::filesystem::path fileOf(ExportedFunction function)
{
    HMODULE module = nullptr;
    std::array<wchar_t, 32768> path{};
    ::GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS |
                             GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                         reinterpret_cast<const wchar_t*>(function), &module);
    ::GetModuleFileNameW(module, path.data(), static_cast<DWORD>(path.size()));
    return path.data();
}

std::span<const char* const> libraryNames()
{
    static constexpr std::array names = {"telvofm.dll"};
    return names;
}

} // namespace telvofm::tools
