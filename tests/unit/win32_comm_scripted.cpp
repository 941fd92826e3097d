#include "tests/unit/win32_scripted_call.h"

#include <gtest/gtest.h>

#include <array>
#include <charconv>
#include <string_view>

namespace telvofm::test {
namespace {

std::string hexadecimal(DWORD value)
{
    std::array<char, 8> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value, 16).ptr;
    return {digits.data(), end};
}

// As a real port takes them.
bool areValid(const DCB& wanted)
{
    const bool oneAndHalfFits = wanted.StopBits != ONE5STOPBITS || wanted.ByteSize == 5;
    return wanted.DCBlength == sizeof(DCB) && wanted.fBinary != 0 && wanted.wReserved == 0 &&
           oneAndHalfFits && wanted.XonChar != wanted.XoffChar && wanted.XonLim <= playing()->queueSize &&
           wanted.XoffLim <= playing()->queueSize;
}

HANDLE WINAPI createFile(const char* name, DWORD access, DWORD share, SECURITY_ATTRIBUTES* security,
                         DWORD creation, DWORD flags, HANDLE pattern)
{
    static decltype(&::CreateFileA) system;
    if (playing() == nullptr || !std::string_view(name).starts_with(R"(\\.\COM)")) {
        return original(system, "CreateFileA")(name, access, share, security, creation, flags, pattern);
    }
    playing()->calls.push_back(std::string("CreateFileA ") + name + " " + hexadecimal(access) + " " +
                               hexadecimal(share) + " " + hexadecimal(creation) + " " + hexadecimal(flags));
    EXPECT_EQ(security, nullptr) << "a port that child processes inherit";
    if (fails("CreateFileA")) {
        return INVALID_HANDLE_VALUE;
    }
    if (playing()->refusesSecondHandle && !playing()->openPorts.empty()) {
        ::SetLastError(ERROR_ACCESS_DENIED);
        return INVALID_HANDLE_VALUE;
    }
    const HANDLE opened = portNumber(playing()->portsSoFar++);
    playing()->openPorts.insert(opened);
    succeeded();
    return opened;
}

BOOL WINAPI closeHandle(HANDLE handle)
{
    static decltype(&::CloseHandle) system;
    if (playing() != nullptr) {
        for (const auto& [overlapped, operation] : playing()->operations) {
            EXPECT_TRUE(operation.port != handle && overlapped->hEvent != handle)
                << "closed while an operation is under way";
        }
    }
    if (isPort(handle)) {
        if (!begin(handle, "CloseHandle")) {
            return FALSE;
        }
        playing()->openPorts.erase(handle);
        return succeeded();
    }
    if (playing() != nullptr) {
        playing()->events.erase(handle);
    }
    const BOOL result = original(system, "CloseHandle")(handle);
    if (playing() != nullptr && result != 0) {
        return succeeded();
    }
    return result;
}

BOOL WINAPI setupComm(HANDLE port, DWORD input, DWORD output)
{
    if (!begin(port, "SetupComm", std::to_string(input) + " " + std::to_string(output))) {
        return FALSE;
    }
    playing()->queueSize = input;
    return succeeded();
}

BOOL WINAPI getCommState(HANDLE port, DCB* settings)
{
    if (!begin(port, "GetCommState")) {
        return FALSE;
    }
    EXPECT_EQ(settings->DCBlength, sizeof(DCB));
    *settings = playing()->settings;
    return succeeded();
}

BOOL WINAPI setCommState(HANDLE port, DCB* settings)
{
    if (!begin(port, "SetCommState")) {
        return FALSE;
    }
    if (!areValid(*settings)) {
        return failed(ERROR_INVALID_PARAMETER);
    }
    playing()->settings = *settings;
    return succeeded();
}

BOOL WINAPI getCommTimeouts(HANDLE port, COMMTIMEOUTS* timeouts)
{
    if (!begin(port, "GetCommTimeouts")) {
        return FALSE;
    }
    *timeouts = playing()->timeouts;
    return succeeded();
}

BOOL WINAPI setCommTimeouts(HANDLE port, COMMTIMEOUTS* timeouts)
{
    if (!begin(port, "SetCommTimeouts")) {
        return FALSE;
    }
    playing()->timeouts = *timeouts;
    return succeeded();
}

BOOL WINAPI setCommMask(HANDLE port, DWORD mask)
{
    return begin(port, "SetCommMask", hexadecimal(mask)) ? succeeded() : FALSE;
}

BOOL WINAPI purgeComm(HANDLE port, DWORD flags)
{
    return begin(port, "PurgeComm", hexadecimal(flags)) ? succeeded() : FALSE;
}

BOOL WINAPI escapeCommFunction(HANDLE port, DWORD function)
{
    return begin(port, "EscapeCommFunction", std::to_string(function)) ? succeeded() : FALSE;
}

BOOL WINAPI getCommModemStatus(HANDLE port, DWORD* lines)
{
    if (!begin(port, "GetCommModemStatus")) {
        return FALSE;
    }
    *lines = MS_CTS_ON | MS_DSR_ON;
    if (!playing()->modemLines.empty()) {
        *lines = playing()->modemLines.front();
        playing()->modemLines.pop_front();
    }
    return succeeded();
}

} // namespace
} // namespace telvofm::test

// The pointers through which the library calls them; without ours the system's import library has them.
extern "C" {
decltype(&::CreateFileA) __imp_CreateFileA = telvofm::test::createFile;
decltype(&::CloseHandle) __imp_CloseHandle = telvofm::test::closeHandle;
decltype(&::SetupComm) __imp_SetupComm = telvofm::test::setupComm;
decltype(&::GetCommState) __imp_GetCommState = telvofm::test::getCommState;
decltype(&::SetCommState) __imp_SetCommState = telvofm::test::setCommState;
decltype(&::GetCommTimeouts) __imp_GetCommTimeouts = telvofm::test::getCommTimeouts;
decltype(&::SetCommTimeouts) __imp_SetCommTimeouts = telvofm::test::setCommTimeouts;
decltype(&::SetCommMask) __imp_SetCommMask = telvofm::test::setCommMask;
decltype(&::PurgeComm) __imp_PurgeComm = telvofm::test::purgeComm;
decltype(&::EscapeCommFunction) __imp_EscapeCommFunction = telvofm::test::escapeCommFunction;
decltype(&::GetCommModemStatus) __imp_GetCommModemStatus = telvofm::test::getCommModemStatus;
}
