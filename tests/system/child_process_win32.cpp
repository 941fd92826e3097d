#include "tests/system/child_process.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <utility>
#include <windows.h>

namespace telvofm::test {
namespace {

HANDLE handleOf(std::intptr_t number)
{
    return reinterpret_cast<HANDLE>(number);
}

std::wstring wide(const std::string& utf8)
{
    const int size = ::MultiByteToWideChar(CP_UTF8, 0, utf8.c_str(), -1, nullptr, 0);
    std::wstring converted(static_cast<std::size_t>(size), L'\0');
    ::MultiByteToWideChar(CP_UTF8, 0, utf8.c_str(), -1, converted.data(), size);
    converted.pop_back(); // its end mark
    return converted;
}

// None of the tests' arguments has a quotation mark or ends with a backslash.
std::wstring joined(const std::vector<std::string>& commandLine)
{
    std::string text;
    for (const std::string& argument : commandLine) {
        const bool isPlain = !argument.empty() && argument.find(' ') == std::string::npos;
        text += (text.empty() ? "" : " ") + (isPlain ? argument : '"' + argument + '"');
    }
    return wide(text);
}

// What this process hears on the console of a program that is asked to end is not meant for it.
BOOL WINAPI passOver(DWORD /*event*/)
{
    return TRUE;
}

struct Pipe
{
    Pipe()
    {
        SECURITY_ATTRIBUTES inheritable{sizeof inheritable, nullptr, TRUE};
        EXPECT_TRUE(::CreatePipe(&reading, &writing, &inheritable, 0));
    }
    void keep(HANDLE end) const { EXPECT_TRUE(::SetHandleInformation(end, HANDLE_FLAG_INHERIT, 0)); }

    HANDLE reading = nullptr;
    HANDLE writing = nullptr;
};

// On a busy machine Wine sometimes says that it could not start a program for a reason of its own: it is
// asked once more.
PROCESS_INFORMATION start(std::wstring commandLine, STARTUPINFOW& streams)
{
    PROCESS_INFORMATION started{};
    const auto create = [&] {
        return ::CreateProcessW(nullptr, commandLine.data(), nullptr, nullptr, TRUE, CREATE_NO_WINDOW,
                                nullptr, nullptr, &streams, &started) != FALSE;
    };
    const bool isStarted = create() || (::GetLastError() == ERROR_INTERNAL_ERROR && create());
    EXPECT_TRUE(isStarted) << ::GetLastError();
    return started;
}

} // namespace

ChildProcess::ChildProcess(std::vector<std::string> commandLine)
{
    const Pipe in;
    const Pipe out;
    in.keep(in.writing);
    out.keep(out.reading);
    STARTUPINFOW streams{};
    streams.cb = sizeof streams;
    streams.dwFlags = STARTF_USESTDHANDLES;
    streams.hStdInput = in.reading;
    streams.hStdOutput = out.writing;
    streams.hStdError = out.writing;
    const PROCESS_INFORMATION started = start(joined(commandLine), streams);
    ::CloseHandle(in.reading);
    ::CloseHandle(out.writing);
    ::CloseHandle(started.hThread);
    process = reinterpret_cast<std::intptr_t>(started.hProcess);
    number = started.dwProcessId;
    input = reinterpret_cast<std::intptr_t>(in.writing);
    output = reinterpret_cast<std::intptr_t>(out.reading);
}

ChildProcess::~ChildProcess()
{
    kill();
    ::CloseHandle(handleOf(input));
    if (output != -1) {
        closeOutput();
    }
}

std::vector<std::string> ChildProcess::shell(const std::vector<std::string>& command)
{
    std::vector<std::string> words = {"cmd", "/c"};
    words.insert(words.end(), command.begin(), command.end());
    words[2] = std::filesystem::path(words[2]).make_preferred().string(); // cmd takes "/" for an option
    return words;
}

bool ChildProcess::write(std::string_view bytes) const
{
    DWORD written = 0;
    return ::WriteFile(handleOf(input), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) !=
               0 &&
           written == bytes.size();
}

std::string ChildProcess::read(std::size_t most) const
{
    std::string bytes(most, '\0');
    DWORD count = 0;
    const bool isThere =
        ::ReadFile(handleOf(output), bytes.data(), static_cast<DWORD>(bytes.size()), &count, nullptr) != 0;
    bytes.resize(isThere ? count : 0);
    return bytes;
}

void ChildProcess::closeOutput()
{
    ::CloseHandle(handleOf(std::exchange(output, -1)));
}

// It has a console of its own, where nobody else is.
void ChildProcess::askToEnd(int /*signal*/) const
{
    ::SetConsoleCtrlHandler(passOver, TRUE);
    ::FreeConsole();
    EXPECT_TRUE(::AttachConsole(static_cast<DWORD>(number))) << ::GetLastError();
    EXPECT_TRUE(::GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0)) << ::GetLastError();
    ::FreeConsole();
}

int ChildProcess::exitCode()
{
    const HANDLE ending = handleOf(std::exchange(process, 0));
    constexpr DWORD patience = 10000; // in milliseconds, so that the test fails and does not hang
    EXPECT_EQ(::WaitForSingleObject(ending, patience), WAIT_OBJECT_0);
    DWORD status = 0;
    ::GetExitCodeProcess(ending, &status);
    ::CloseHandle(ending);
    return static_cast<int>(status);
}

void ChildProcess::kill()
{
    if (process != 0) {
        ::TerminateProcess(handleOf(process), 1);
        exitCode();
    }
}

} // namespace telvofm::test
