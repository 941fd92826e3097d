#include "virtual_printer/console.h"

#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <io.h>
#include <memory>
#include <shellapi.h>
#include <windows.h>

namespace virtual_printer {
namespace {

std::string utf8(const wchar_t* text)
{
    const int size = ::WideCharToMultiByte(CP_UTF8, 0, text, -1, nullptr, 0, nullptr, nullptr);
    std::string converted(static_cast<std::size_t>(size), '\0');
    ::WideCharToMultiByte(CP_UTF8, 0, text, -1, converted.data(), size, nullptr, nullptr);
    converted.pop_back(); // its end mark
    return converted;
}

} // namespace

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

void writeInUtf8()
{
    static const UINT before = ::GetConsoleOutputCP();
    ::SetConsoleOutputCP(CP_UTF8);
    std::atexit([] { ::SetConsoleOutputCP(before); }); // the console outlives the process
    ::_setmode(::_fileno(stdout), _O_BINARY);
    ::_setmode(::_fileno(stderr), _O_BINARY);
}

} // namespace virtual_printer
