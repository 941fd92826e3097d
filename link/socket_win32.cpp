#include "link/socket.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <memory>
#include <winsock2.h>
#include <ws2tcpip.h>

namespace telvofm {

bool Socket::startUp()
{
    WSADATA data;
    return ::WSAStartup(MAKEWORD(2, 2), &data) == 0;
}

void Socket::cleanUp()
{
    ::WSACleanup();
}

std::optional<std::vector<SocketAddress>> Socket::resolve(const std::string& host, const std::string& port)
{
    addrinfo hints{};
    hints.ai_family = AF_UNSPEC;
    hints.ai_socktype = SOCK_STREAM;
    hints.ai_protocol = IPPROTO_TCP;
    addrinfo* found = nullptr;
    if (::getaddrinfo(host.c_str(), port.c_str(), &hints, &found) != 0) {
        return std::nullopt;
    }
    const std::unique_ptr<addrinfo, decltype(&::freeaddrinfo)> owner(found, &::freeaddrinfo);
    std::vector<SocketAddress> addresses;
    for (const addrinfo* entry = found; entry != nullptr; entry = entry->ai_next) {
        SocketAddress address{
            entry->ai_family, entry->ai_socktype, entry->ai_protocol, entry->ai_addrlen, {}};
        std::memcpy(address.storage.data(), entry->ai_addr, std::min(address.size, address.storage.size()));
        addresses.push_back(address);
    }
    return addresses;
}

bool Socket::create(const SocketAddress& address)
{
    // A program that the host starts would keep the connection open beyond our close.
    constexpr DWORD flags = WSA_FLAG_OVERLAPPED | WSA_FLAG_NO_HANDLE_INHERIT;
    const SOCKET created = ::WSASocketW(address.family, address.type, address.protocol, nullptr, 0, flags);
    if (created == INVALID_SOCKET) {
        return false;
    }
    handle = created;
    return true;
}

bool Socket::connect(const SocketAddress& address) const
{
    const auto* target = reinterpret_cast<const sockaddr*>(address.storage.data());
    return ::connect(handle, target, static_cast<int>(address.size)) == 0;
}

void Socket::close()
{
    if (handle != invalid) {
        ::closesocket(handle);
        handle = invalid;
    }
}

// A send that waits for room lets a shutdown wait: no operation begins after it, and those that have begun
// end with the cancel, whichever thread they are of.
void Socket::shutDown() const
{
    if (handle != invalid) {
        ::shutdown(handle, SD_BOTH);
        ::CancelIoEx(reinterpret_cast<HANDLE>(handle), nullptr);
    }
}

bool Socket::send(std::string_view bytes) const
{
    // The platform counts in int: what is beyond is not sent in part and reported whole.
    if (bytes.size() > INT_MAX) {
        return false;
    }
    return ::send(handle, bytes.data(), static_cast<int>(bytes.size()), 0) != SOCKET_ERROR;
}

Socket::Wait Socket::waitReadable(std::chrono::milliseconds limit) const
{
    fd_set readable;
    FD_ZERO(&readable);
    FD_SET(handle, &readable);
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(limit);
    const auto rest = std::chrono::duration_cast<std::chrono::microseconds>(limit - seconds);
    timeval timeout = {static_cast<long>(seconds.count()), static_cast<long>(rest.count())};
    const int ready = ::select(0, &readable, nullptr, nullptr, &timeout);
    if (ready == SOCKET_ERROR) {
        return Wait::failed;
    }
    return ready == 0 ? Wait::silent : Wait::readable;
}

std::ptrdiff_t Socket::receive(std::span<char> buffer) const
{
    return ::recv(handle, buffer.data(), static_cast<int>(buffer.size()), 0);
}

} // namespace telvofm
