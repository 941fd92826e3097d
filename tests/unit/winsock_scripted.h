// The socket functions of Windows as a script plays them. They stand behind the pointers through which
// imported functions are called, so that the library's own file for sockets runs unchanged against them.
#pragma once

#include <deque>
#include <set>
#include <string>
#include <utility>
#include <vector>
#include <winsock2.h>
#include <ws2tcpip.h>

namespace telvofm::test {

// An address that a name resolves to.
struct ScriptedAddress
{
    int family = AF_INET;
    bool accepts = true;
};

// The network and what is done with it. It plays while it lives. Its end fails the test when a socket, a list
// of addresses or the socket interface itself was left behind.
struct ScriptedWinsock
{
    ScriptedWinsock();
    ~ScriptedWinsock();
    ScriptedWinsock(const ScriptedWinsock&) = delete;
    ScriptedWinsock& operator=(const ScriptedWinsock&) = delete;

    std::vector<ScriptedAddress> addresses = {{}};
    // What waits meet: bytes, or silence when there are none. Afterwards there is silence.
    std::deque<std::string> arriving;
    // How many bytes a send takes at most.
    int takenBySend = 0x7FFFFFFF;

    // The call of that name fails, once, after `before` calls of the name that succeed.
    void fail(std::string name, int before = 0);

    // Every call in order: "WSAStartup 2.2", "WSASocketW 2 1 6 81", "connect 0 to 1 of 16 bytes", ...
    std::vector<std::string> calls;
    std::vector<std::string> takeCalls() { return std::exchange(calls, {}); }

    // Kept by the functions.
    std::set<SOCKET> openSockets;
    SOCKET socketsSoFar = 0; // which is a socket like any other
    int startUps = 0;
    std::set<addrinfo*> lists;
    std::string failingCall;
    int callsBeforeFailure = 0;
};

} // namespace telvofm::test
