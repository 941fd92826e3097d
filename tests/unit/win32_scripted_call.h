// What every scripted function of a serial port does: it notes the call down and fails where the script says
// so, or it goes on to the system when the call is none of the script's.
#pragma once

#include "tests/unit/win32_comm_scripted.h"

#include <string>

namespace telvofm::test {

// The script that plays on this thread; null without one.
ScriptedComm* playing();

// A handle that the script gave out, open or not.
bool isPort(HANDLE handle);
HANDLE portNumber(int number);

// Whether the call of that name is the one that fails; the error is set then.
bool fails(const std::string& name);
// Notes the call down; whether it goes on, because neither the script nor a closed port makes it fail.
bool begin(HANDLE port, const std::string& name, const std::string& arguments = {});
// How it ends.
BOOL failed(DWORD error);
BOOL succeeded();

// The function of the system that ours stands in front of.
template <typename Function>
Function original(Function& kept, const char* name)
{
    if (kept == nullptr) {
        const FARPROC found = ::GetProcAddress(::GetModuleHandleA("kernel32.dll"), name);
        kept = reinterpret_cast<Function>(reinterpret_cast<void*>(found));
    }
    return kept;
}

} // namespace telvofm::test
