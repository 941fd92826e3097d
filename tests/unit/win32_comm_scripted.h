// The communications functions of Windows as a script plays them. They stand behind the pointers through
// which imported functions are called, so that the library's own file for serial ports runs unchanged against
// them. The port is as strict as a real one, also where Wine is not: it refuses a second handle and settings
// that contradict each other, and an operation goes on until its result has been waited for.
#pragma once

#include <deque>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>
#include <windows.h>

namespace telvofm::test {

// What one overlapped read or write meets.
struct Transfer
{
    enum class Course
    {
        atOnce,    // is done when the call returns
        waitedFor, // is done while its event is waited for
        late,      // is done after that wait has ended, but before the cancel takes hold
        silent,    // is never done: the cancel ends it
        refused,   // does not begin: the call fails
        broken     // begins, and has failed when it is waited for
    };

    Course course;
    std::string bytes; // of a read; a write moves as many
    DWORD error = 0;   // of one that fails, late ones included
};

// An operation under way.
struct Operation
{
    HANDLE port;
    char* target; // of a read
    DWORD wanted;
    Transfer transfer;
    bool isDone = false;
    bool isCancelled = false;
    DWORD moved = 0;
};

// One serial port and what is done with it. It plays while it lives, on the thread that made it; what does
// not concern its port goes on to the system. Its end fails the test when a handle or an operation was left
// behind.
struct ScriptedComm
{
    ScriptedComm();
    ~ScriptedComm();
    ScriptedComm(const ScriptedComm&) = delete;
    ScriptedComm& operator=(const ScriptedComm&) = delete;

    // As the last program left them, and as this one sets them.
    DCB settings{};
    COMMTIMEOUTS timeouts{};

    bool refusesSecondHandle = true;
    // Afterwards reads meet silence, and writes are done while they are waited for.
    std::deque<Transfer> reads;
    std::deque<Transfer> writes;
    // The bytes that have been received already, as the port says.
    DWORD queued = 0;
    // What successive looks at the modem lines see; afterwards CTS and DSR are on.
    std::deque<DWORD> modemLines;
    // Moved by waits that run out. It begins where 32 bits have just run over.
    ULONGLONG clock = 0x1'0000'0000;

    // The call of that name fails with that error, once, after `before` calls of the name that succeed.
    void fail(std::string name, DWORD error, int before = 0);

    // Every call in order: R"(CreateFileA \\.\COM3 c0000000 0 3 40000000)", "SetupComm 28800 28800", ...
    std::vector<std::string> calls;
    std::vector<std::string> takeCalls() { return std::exchange(calls, {}); }
    // The bytes that were given to writes.
    std::string written;

    // Kept by the functions.
    std::set<HANDLE> openPorts;
    std::map<HANDLE, bool> events; // of transfers and others of this thread; whether each is reset by hand
    std::map<OVERLAPPED*, Operation> operations;
    DWORD queueSize = 0;
    int portsSoFar = 0;
    std::string failingCall;
    DWORD failingError = 0;
    int callsBeforeFailure = 0;
    DWORD thread = 0;
};

} // namespace telvofm::test
