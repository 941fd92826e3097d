#include "tests/unit/win32_scripted_call.h"

#include <gtest/gtest.h>

#include <utility>

namespace telvofm::test {
namespace {

// Far above the system's own handles, and no number is used twice.
constexpr std::uintptr_t firstPort = 0x7E100000;
constexpr std::uintptr_t endOfPorts = 0x7E200000;

ScriptedComm* script = nullptr;

} // namespace

ScriptedComm::ScriptedComm() : thread(::GetCurrentThreadId())
{
    settings.DCBlength = sizeof settings;
    settings.fBinary = TRUE;
    settings.XonChar = 1;
    settings.XoffChar = 2;
    script = this;
}

ScriptedComm::~ScriptedComm()
{
    script = nullptr;
    EXPECT_TRUE(openPorts.empty()) << "a port was left open";
    EXPECT_TRUE(events.empty()) << "an event was left open";
    EXPECT_TRUE(operations.empty()) << "an operation was left under way";
}

void ScriptedComm::fail(std::string name, DWORD error, int before)
{
    failingCall = std::move(name);
    failingError = error;
    callsBeforeFailure = before;
}

ScriptedComm* playing()
{
    return script != nullptr && script->thread == ::GetCurrentThreadId() ? script : nullptr;
}

bool isPort(HANDLE handle)
{
    const auto value = reinterpret_cast<std::uintptr_t>(handle);
    return value >= firstPort && value < endOfPorts;
}

HANDLE portNumber(int number)
{
    return reinterpret_cast<HANDLE>(firstPort + 4 * static_cast<std::uintptr_t>(number));
}

bool fails(const std::string& name)
{
    if (name != script->failingCall || script->callsBeforeFailure-- > 0) {
        return false;
    }
    script->failingCall.clear();
    ::SetLastError(script->failingError);
    return true;
}

bool begin(HANDLE port, const std::string& name, const std::string& arguments)
{
    if (playing() == nullptr || !script->openPorts.contains(port)) {
        ADD_FAILURE() << name << " with a handle that is not open";
        return failed(ERROR_INVALID_HANDLE) != 0;
    }
    script->calls.push_back(arguments.empty() ? name : name + " " + arguments);
    return !fails(name);
}

BOOL failed(DWORD error)
{
    ::SetLastError(error);
    return FALSE;
}

BOOL succeeded()
{
    // Left behind so that nobody takes it for a reason.
    constexpr DWORD noReason = 0xDEAD;
    ::SetLastError(noReason);
    return TRUE;
}

} // namespace telvofm::test
