#include "tests/wire/loopback.h"

#include <arpa/inet.h>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <stdexcept>
#include <sys/socket.h>
#include <termios.h>
#include <unistd.h>
#include <utility>

namespace wire {
namespace {

int descriptor(std::intptr_t handle)
{
    return static_cast<int>(handle);
}

bool becomesReadable(std::intptr_t handle, std::chrono::milliseconds limit)
{
    pollfd readable = {.fd = descriptor(handle), .events = POLLIN, .revents = 0};
    return ::poll(&readable, 1, static_cast<int>(limit.count())) == 1;
}

// The library sends the checksum byte on its own, and its system keeps it back until the request is
// acknowledged. Acknowledging late, as systems do, would cost each call of a test 40 ms. The setting lasts
// for a moment only.
void acknowledgeAtOnce(std::intptr_t handle)
{
    const int on = 1;
    ::setsockopt(descriptor(handle), IPPROTO_TCP, TCP_QUICKACK, &on, sizeof on);
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
    constexpr int patience = 10000; // in milliseconds, for a library that reads slowly
    while (!bytes.empty()) {
        pollfd writable = {.fd = descriptor(handle), .events = POLLOUT, .revents = 0};
        if (::poll(&writable, 1, patience) != 1) {
            return;
        }
        const auto sent = socket ? ::send(descriptor(handle), bytes.data(), bytes.size(), MSG_NOSIGNAL)
                                 : ::write(descriptor(handle), bytes.data(), bytes.size());
        if (sent == -1 && errno == EAGAIN) {
            continue;
        }
        if (sent <= 0) {
            return; // the library has gone; the expectations that follow tell
        }
        bytes.remove_prefix(static_cast<std::size_t>(sent));
    }
}

std::optional<std::string> Connection::receive(std::size_t count, std::chrono::milliseconds limit) const
{
    if (!becomesReadable(handle, limit)) {
        return std::string();
    }
    std::string bytes(count, '\0');
    const auto received = ::read(descriptor(handle), bytes.data(), bytes.size());
    if (received == -1 && errno == EAGAIN) {
        return std::string(); // a hang-up that was over when we looked, because the line was opened again
    }
    if (received <= 0) {
        return std::nullopt;
    }
    if (socket) {
        acknowledgeAtOnce(handle);
    }
    bytes.resize(static_cast<std::size_t>(received));
    return bytes;
}

void Connection::close()
{
    if (handle != -1) {
        ::close(descriptor(std::exchange(handle, -1)));
    }
}

void Connection::reset()
{
    constexpr linger atOnce = {1, 0};
    ::setsockopt(descriptor(handle), SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
    close();
}

bool Connection::vanish()
{
    constexpr int on = 1;
    const bool isSilent = ::setsockopt(descriptor(handle), IPPROTO_TCP, TCP_REPAIR, &on, sizeof on) == 0;
    close();
    return isSilent;
}

Listener::Listener(bool listens) : handle(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0))
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto* any = reinterpret_cast<sockaddr*>(&address);
    if (::bind(descriptor(handle), any, size) != 0 || (listens && ::listen(descriptor(handle), 8) != 0) ||
        ::getsockname(descriptor(handle), any, &size) != 0) {
        throw std::runtime_error("no port could be opened on the loopback address");
    }
    boundPort = ntohs(address.sin_port);
}

Listener::~Listener()
{
    ::close(descriptor(handle));
}

Connection Listener::accept(std::chrono::milliseconds limit) const
{
    if (!becomesReadable(handle, limit)) {
        return {};
    }
    const int accepted = ::accept4(descriptor(handle), nullptr, nullptr, SOCK_CLOEXEC);
    const int on = 1;
    ::setsockopt(accepted, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    return Connection(accepted);
}

Connection connectTo(std::uint16_t port)
{
    const int connecting = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (::connect(connecting, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
        ::close(connecting);
        return {};
    }
    const int on = 1;
    ::setsockopt(connecting, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    return Connection(connecting);
}

Connection openPseudoTerminal(std::string& path)
{
    const int controller = ::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (controller == -1 || ::grantpt(controller) != 0 || ::unlockpt(controller) != 0) {
        return {};
    }
    path = ::ptsname(controller);
    termios raw{};
    ::tcgetattr(controller, &raw);
    ::cfmakeraw(&raw);
    ::tcsetattr(controller, TCSANOW, &raw);
    return Connection(controller, false);
}

void setEnvironment(const std::string& name, const std::string& value)
{
    ::setenv(name.c_str(), value.c_str(), 1);
}

} // namespace wire
