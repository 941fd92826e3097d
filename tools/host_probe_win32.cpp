#include "tools/host_probe.h"

#include <winsock2.h>

namespace telvofm::tools {
namespace {

class OwnSocket
{
public:
    explicit OwnSocket(const SocketAddress& address)
        : number(::socket(address.family, address.type, address.protocol))
    {
        u_long on = 1;
        ::ioctlsocket(number, static_cast<long>(FIONBIO), &on);
    }
    OwnSocket(const OwnSocket&) = delete;
    OwnSocket& operator=(const OwnSocket&) = delete;
    ~OwnSocket() { ::closesocket(number); }

    // A failed connect is reported apart from a successful one.
    [[nodiscard]] bool waitForConnection(bool& hasFailed) const
    {
        fd_set writable = only();
        fd_set failed = only();
        timeval limit = threeSeconds();
        const bool isOver = ::select(0, nullptr, &writable, &failed, &limit) > 0;
        hasFailed = isOver && FD_ISSET(number, &failed) != 0;
        return isOver;
    }

    [[nodiscard]] bool waitForBytes() const
    {
        fd_set readable = only();
        timeval limit = threeSeconds();
        return ::select(0, &readable, nullptr, nullptr, &limit) > 0;
    }

    const SOCKET number;

private:
    [[nodiscard]] fd_set only() const
    {
        fd_set set;
        set.fd_count = 1;
        set.fd_array[0] = number;
        return set;
    }

    static timeval threeSeconds() { return {3, 0}; }
};

// 0, or why not.
int connectWithin(const OwnSocket& socket, const SocketAddress& address)
{
    const auto* const target = reinterpret_cast<const sockaddr*>(address.storage.data());
    if (::connect(socket.number, target, static_cast<int>(address.size)) == 0) {
        return 0;
    }
    if (::WSAGetLastError() != WSAEWOULDBLOCK) {
        return ::WSAGetLastError();
    }
    bool hasFailed = false;
    if (!socket.waitForConnection(hasFailed)) {
        return WSAETIMEDOUT;
    }
    int failure = 0;
    int size = sizeof failure;
    ::getsockopt(socket.number, SOL_SOCKET, SO_ERROR, reinterpret_cast<char*>(&failure), &size);
    return hasFailed && failure == 0 ? WSAECONNREFUSED : failure;
}

} // namespace

HostState probeHost(const SocketAddress& address)
{
    const OwnSocket socket(address);
    const int failure = connectWithin(socket, address);
    if (failure != 0) {
        return failure == WSAECONNREFUSED ? HostState::refused : HostState::unreachable;
    }
    const char probe = 0x11;
    char answer = 0;
    if (::send(socket.number, &probe, 1, 0) != 1) {
        return HostState::closes;
    }
    if (!socket.waitForBytes()) {
        return HostState::silent;
    }
    return ::recv(socket.number, &answer, 1, 0) == 1 ? HostState::answers : HostState::closes;
}

} // namespace telvofm::tools
