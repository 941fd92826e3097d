#include "tools/console.h"
#include "tools/ending.h"
#include "tools/win32_text.h"

#include <array>
#include <cstdlib>
#include <fcntl.h>
#include <io.h>
#include <memory>
#include <shellapi.h>
#include <windows.h>

namespace telvofm::tools {

// What main() gets has lost every character that the user's code page does not have.
std::vector<std::string> commandLine(int /*count*/, char** /*arguments*/)
{
    int count = 0;
    const std::unique_ptr<wchar_t*, decltype(&::LocalFree)> arguments(
        ::CommandLineToArgvW(::GetCommandLineW(), &count), &::LocalFree);
    std::vector<std::string> converted;
    for (int i = 1; i < count; ++i) {
        converted.push_back(utf8(arguments.get()[i]));
    }
    return converted;
}

std::FILE* takeStandardOutput()
{
    static const UINT before = ::GetConsoleOutputCP();
    ::SetConsoleOutputCP(CP_UTF8);
    std::atexit([] { ::SetConsoleOutputCP(before); }); // the console outlives the process
    const int own = ::_dup(::_fileno(stdout));
    std::FILE* stream = own == -1 ? nullptr : ::_fdopen(own, "wb");
    if (stream == nullptr || ::_dup2(::_fileno(stderr), ::_fileno(stdout)) == -1) {
        throw Failure(Ending::noFile, "standard output cannot be written to");
    }
    ::_setmode(own, _O_BINARY); // lines end alike everywhere
    ::_setmode(::_fileno(stderr), _O_BINARY);
    return stream;
}

// The library opens files by names in the code page of the system.
std::string nameForLibrary(const std::string& utf8)
{
    const std::wstring wide = std::filesystem::path(std::u8string(utf8.begin(), utf8.end())).wstring();
    BOOL isLost = FALSE;
    const int size =
        ::WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, wide.c_str(), -1, nullptr, 0, nullptr, &isLost);
    std::string narrow(static_cast<std::size_t>(size), '\0');
    ::WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, wide.c_str(), -1, narrow.data(), size, nullptr,
                          &isLost);
    if (size == 0 || isLost != FALSE) {
        throw Failure(Ending::wrongUse, "the file name " + utf8 +
                                            " has a character that this Windows cannot hand to the "
                                            "library; choose another name");
    }
    narrow.pop_back(); // its end mark
    return narrow;
}

std::filesystem::path ownProgram()
{
    std::array<wchar_t, 32768> path{};
    ::GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    return path.data();
}

} // namespace telvofm::tools
