#include "tests/wire/loopback.h"

#include <stdexcept>
#include <utility>
#include <winsock2.h>
#include <ws2tcpip.h>

namespace wire {
namespace {

SOCKET socketOf(std::intptr_t handle)
{
    return static_cast<SOCKET>(handle);
}

bool becomesReadable(std::intptr_t handle, std::chrono::milliseconds limit)
{
    fd_set readable;
    FD_ZERO(&readable);
    FD_SET(socketOf(handle), &readable);
    const auto milliseconds = static_cast<long>(limit.count());
    timeval timeout = {milliseconds / 1000, milliseconds % 1000 * 1000};
    return ::select(0, &readable, nullptr, nullptr, &timeout) == 1;
}

} // namespace

Connection::Connection(Connection&& other) noexcept
    : handle(std::exchange(other.handle, -1)), socket(other.socket)
{
}

Connection& Connection::operator=(Connection&& other) noexcept
{
    std::swap(handle, other.handle);
    std::swap(socket, other.socket);
    return *this;
}

void Connection::send(std::string_view bytes) const
{
    ::send(socketOf(handle), bytes.data(), static_cast<int>(bytes.size()), 0);
}

std::optional<std::string> Connection::receive(std::size_t count, std::chrono::milliseconds limit) const
{
    if (!becomesReadable(handle, limit)) {
        return std::string();
    }
    std::string bytes(count, '\0');
    const int received = ::recv(socketOf(handle), bytes.data(), static_cast<int>(bytes.size()), 0);
    if (received <= 0) {
        return std::nullopt;
    }
    bytes.resize(static_cast<std::size_t>(received));
    return bytes;
}

void Connection::close()
{
    if (handle != -1) {
        ::closesocket(socketOf(std::exchange(handle, -1)));
    }
}

void Connection::reset()
{
    constexpr linger atOnce = {1, 0};
    ::setsockopt(socketOf(handle), SOL_SOCKET, SO_LINGER, reinterpret_cast<const char*>(&atOnce),
                 sizeof atOnce);
    close();
}

bool Connection::vanish()
{
    return false;
}

Listener::Listener(bool listens)
{
    WSADATA data;
    ::WSAStartup(MAKEWORD(2, 2), &data);
    handle = static_cast<std::intptr_t>(::socket(AF_INET, SOCK_STREAM, 0));
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = ::htonl(INADDR_LOOPBACK);
    int size = sizeof address;
    auto* any = reinterpret_cast<sockaddr*>(&address);
    if (::bind(socketOf(handle), any, size) != 0 || (listens && ::listen(socketOf(handle), 8) != 0) ||
        ::getsockname(socketOf(handle), any, &size) != 0) {
        throw std::runtime_error("no port could be opened on the loopback address");
    }
    boundPort = ::ntohs(address.sin_port);
}

Listener::~Listener()
{
    ::closesocket(socketOf(handle));
    ::WSACleanup();
}

Connection Listener::accept(std::chrono::milliseconds limit) const
{
    if (!becomesReadable(handle, limit)) {
        return {};
    }
    const SOCKET accepted = ::accept(socketOf(handle), nullptr, nullptr);
    const char on = 1;
    ::setsockopt(accepted, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    return Connection(static_cast<std::intptr_t>(accepted));
}

Connection connectTo(std::uint16_t port)
{
    WSADATA data;
    ::WSAStartup(MAKEWORD(2, 2), &data); // until the process ends
    const SOCKET connecting = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = ::htons(port);
    address.sin_addr.s_addr = ::htonl(INADDR_LOOPBACK);
    if (::connect(connecting, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
        ::closesocket(connecting);
        return {};
    }
    const char on = 1;
    ::setsockopt(connecting, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    return Connection(static_cast<std::intptr_t>(connecting));
}

Connection openPseudoTerminal(std::string& /*path*/)
{
    return {};
}

void setEnvironment(const std::string& name, const std::string& value)
{
    ::_putenv_s(name.c_str(), value.c_str());
}

} // namespace wire
