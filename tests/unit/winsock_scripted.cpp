#include "tests/unit/winsock_scripted.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>
#include <memory>

namespace telvofm::test {
namespace {

ScriptedWinsock* script = nullptr;

// One entry of a resolved list, with its address behind it.
struct Resolved
{
    addrinfo entry{};
    sockaddr_storage address{};
};

std::string text(auto number)
{
    return std::to_string(number);
}

// Notes the call down; whether it goes on.
bool begin(const std::string& name, const std::string& arguments = {})
{
    EXPECT_GT(script->startUps, 0) << name << " without the socket interface";
    script->calls.push_back(arguments.empty() ? name : name + " " + arguments);
    if (name != script->failingCall || script->callsBeforeFailure-- > 0) {
        return true;
    }
    script->failingCall.clear();
    return false;
}

bool beginOn(SOCKET socket, const std::string& name, const std::string& arguments = {})
{
    EXPECT_TRUE(script->openSockets.contains(socket)) << name << " on a socket that is not open";
    return begin(name, text(socket) + (arguments.empty() ? "" : " " + arguments));
}

int WSAAPI startUp(WORD version, WSADATA* data)
{
    ++script->startUps;
    const bool goesOn = begin("WSAStartup", text(LOBYTE(version)) + "." + text(HIBYTE(version)));
    *data = {};
    data->wVersion = version;
    if (!goesOn) {
        --script->startUps;
        return WSASYSNOTREADY;
    }
    return 0;
}

int WSAAPI cleanUp()
{
    begin("WSACleanup");
    --script->startUps;
    return 0;
}

int WSAAPI resolve(const char* host, const char* port, const addrinfo* hints, addrinfo** found)
{
    const std::string wanted = text(hints->ai_family) + " " + text(hints->ai_socktype) + " " +
                               text(hints->ai_protocol) + " " + text(hints->ai_flags);
    if (!begin("getaddrinfo", std::string(host) + " " + port + " " + wanted)) {
        return WSAHOST_NOT_FOUND;
    }
    const std::size_t count = script->addresses.size();
    auto list = std::make_unique<Resolved[]>(count);
    for (std::size_t i = 0; i < count; ++i) {
        const int family = script->addresses[i].family;
        list[i].address.ss_family = static_cast<decltype(list[i].address.ss_family)>(family);
        // The number of the address stands where an Internet address has its port.
        reinterpret_cast<sockaddr_in*>(&list[i].address)->sin_port = static_cast<u_short>(i + 1);
        list[i].entry = {.ai_flags = 0,
                         .ai_family = family,
                         .ai_socktype = SOCK_STREAM,
                         .ai_protocol = IPPROTO_TCP,
                         .ai_addrlen = family == AF_INET ? sizeof(sockaddr_in) : sizeof(sockaddr_in6),
                         .ai_canonname = nullptr,
                         .ai_addr = reinterpret_cast<sockaddr*>(&list[i].address),
                         .ai_next = i + 1 < count ? &list[i + 1].entry : nullptr};
    }
    *found = &list.release()->entry;
    script->lists.insert(*found);
    return 0;
}

void WSAAPI freeResolved(addrinfo* list)
{
    begin("freeaddrinfo");
    EXPECT_EQ(script->lists.erase(list), 1U) << "freed what was not resolved";
    const std::unique_ptr<Resolved[]> owner(reinterpret_cast<Resolved*>(list));
}

SOCKET WSAAPI createSocket(int family, int type, int protocol, WSAPROTOCOL_INFOW* provider, GROUP group,
                           DWORD flags)
{
    EXPECT_TRUE(provider == nullptr && group == 0);
    std::array<char, 8> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), flags, 16).ptr;
    const std::string hexadecimal(digits.data(), end);
    if (!begin("WSASocketW", text(family) + " " + text(type) + " " + text(protocol) + " " + hexadecimal)) {
        return INVALID_SOCKET;
    }
    script->openSockets.insert(script->socketsSoFar);
    return script->socketsSoFar++;
}

int WSAAPI connectSocket(SOCKET socket, const sockaddr* address, int size)
{
    const auto number = reinterpret_cast<const sockaddr_in*>(address)->sin_port;
    const bool goesOn = beginOn(socket, "connect", "to " + text(number) + " of " + text(size) + " bytes");
    return goesOn && script->addresses.at(number - 1U).accepts ? 0 : SOCKET_ERROR;
}

int WSAAPI closeSocket(SOCKET socket)
{
    beginOn(socket, "closesocket");
    script->openSockets.erase(socket);
    return 0;
}

int WSAAPI shutDown(SOCKET socket, int directions)
{
    return beginOn(socket, "shutdown", text(directions)) ? 0 : SOCKET_ERROR;
}

BOOL WINAPI cancelOperations(HANDLE handle, OVERLAPPED* operation)
{
    const auto socket = static_cast<SOCKET>(reinterpret_cast<std::uintptr_t>(handle));
    return beginOn(socket, "CancelIoEx", operation == nullptr ? "all" : "one") ? TRUE : FALSE;
}

// Of a long text only the length is looked at.
int WSAAPI sendBytes(SOCKET socket, const char* bytes, int count, int flags)
{
    constexpr int shown = 16;
    const std::string what = count >= 0 && count <= shown
                                 ? std::string(bytes, static_cast<std::size_t>(count))
                                 : text(count) + " bytes";
    return beginOn(socket, "send", what + " " + text(flags)) ? std::min(count, script->takenBySend)
                                                             : SOCKET_ERROR;
}

int WSAAPI selectSockets(int /*ignored*/, fd_set* readable, fd_set* writable, fd_set* broken, timeval* limit)
{
    EXPECT_EQ(readable->fd_count, 1U);
    EXPECT_TRUE(writable == nullptr && broken == nullptr);
    const std::string time = text(limit->tv_sec) + " s " + text(limit->tv_usec) + " us";
    if (!beginOn(readable->fd_array[0], "select", time)) {
        return SOCKET_ERROR;
    }
    if (!script->arriving.empty()) {
        return 1;
    }
    readable->fd_count = 0;
    return 0;
}

int WSAAPI receiveBytes(SOCKET socket, char* target, int count, int flags)
{
    if (!beginOn(socket, "recv", text(count) + " " + text(flags))) {
        return SOCKET_ERROR;
    }
    if (script->arriving.empty()) {
        ADD_FAILURE() << "receives without a limit in time";
        return 0;
    }
    std::string& first = script->arriving.front();
    const auto taken = std::min(first.size(), static_cast<std::size_t>(count));
    std::memcpy(target, first.data(), taken);
    first.erase(0, taken);
    if (first.empty()) {
        script->arriving.pop_front();
    }
    return static_cast<int>(taken);
}

} // namespace

ScriptedWinsock::ScriptedWinsock()
{
    script = this;
}

ScriptedWinsock::~ScriptedWinsock()
{
    script = nullptr;
    EXPECT_TRUE(openSockets.empty()) << "a socket was left open";
    EXPECT_TRUE(lists.empty()) << "a list of addresses was not freed";
    EXPECT_EQ(startUps, 0) << "WSAStartup and WSACleanup are not paired";
}

void ScriptedWinsock::fail(std::string name, int before)
{
    failingCall = std::move(name);
    callsBeforeFailure = before;
}

} // namespace telvofm::test

// The pointers through which the library calls them; without ours the system's import library has them.
extern "C" {
decltype(&::WSAStartup) __imp_WSAStartup = telvofm::test::startUp;
decltype(&::WSACleanup) __imp_WSACleanup = telvofm::test::cleanUp;
decltype(&::getaddrinfo) __imp_getaddrinfo = telvofm::test::resolve;
decltype(&::freeaddrinfo) __imp_freeaddrinfo = telvofm::test::freeResolved;
decltype(&::WSASocketW) __imp_WSASocketW = telvofm::test::createSocket;
decltype(&::connect) __imp_connect = telvofm::test::connectSocket;
decltype(&::closesocket) __imp_closesocket = telvofm::test::closeSocket;
decltype(&::shutdown) __imp_shutdown = telvofm::test::shutDown;
decltype(&::CancelIoEx) __imp_CancelIoEx = telvofm::test::cancelOperations;
decltype(&::send) __imp_send = telvofm::test::sendBytes;
decltype(&::select) __imp_select = telvofm::test::selectSockets;
decltype(&::recv) __imp_recv = telvofm::test::receiveBytes;
}
