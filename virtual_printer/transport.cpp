#include "virtual_printer/transport.h"

#include <arpa/inet.h>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <memory>
#include <netdb.h>
#include <netinet/tcp.h>
#include <stdexcept>
#include <sys/socket.h>
#include <termios.h>
#include <unistd.h>

namespace virtual_printer {
namespace {

[[noreturn]] void fail(const std::string& what, const std::string& advice)
{
    throw std::runtime_error(what + ": " + std::strerror(errno) + "; " + advice);
}

void makeRaw(int terminal)
{
    termios settings{};
    ::tcgetattr(terminal, &settings);
    ::cfmakeraw(&settings);
    ::tcsetattr(terminal, TCSANOW, &settings);
}

} // namespace

DescriptorStream::DescriptorStream(int openDescriptor, bool isTcp) : descriptor(openDescriptor), tcp(isTcp)
{
    if (tcp) {
        const int on = 1;
        ::setsockopt(descriptor, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    }
}

DescriptorStream::~DescriptorStream()
{
    ::close(descriptor);
}

std::optional<unsigned char> DescriptorStream::read()
{
    if (next == received.size()) {
        std::array<char, 4096> buffer;
        if (tcp) {
            const int on = 1;
            ::setsockopt(descriptor, IPPROTO_TCP, TCP_QUICKACK, &on, sizeof on);
        }
        const ssize_t count = ::read(descriptor, buffer.data(), buffer.size());
        if (count <= 0) {
            return std::nullopt;
        }
        received.assign(buffer.data(), static_cast<std::size_t>(count));
        next = 0;
    }
    return static_cast<unsigned char>(received[next++]);
}

void DescriptorStream::write(std::string_view bytes)
{
    while (!bytes.empty()) {
        const ssize_t sent = tcp ? ::send(descriptor, bytes.data(), bytes.size(), MSG_NOSIGNAL)
                                 : ::write(descriptor, bytes.data(), bytes.size());
        if (sent <= 0) {
            return; // the next read tells that the till has gone
        }
        bytes.remove_prefix(static_cast<std::size_t>(sent));
    }
}

int listenOn(const std::string& host, const std::string& port)
{
    addrinfo hints{};
    hints.ai_socktype = SOCK_STREAM;
    hints.ai_flags = AI_PASSIVE;
    addrinfo* found = nullptr;
    if (::getaddrinfo(host.c_str(), port.c_str(), &hints, &found) != 0) {
        throw std::runtime_error(host + ":" + port + " is no address to listen on; name one as 127.0.0.1:0");
    }
    const std::unique_ptr<addrinfo, decltype(&::freeaddrinfo)> address(found, ::freeaddrinfo);
    const int listener = ::socket(found->ai_family, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const int on = 1;
    ::setsockopt(listener, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
    if (::bind(listener, found->ai_addr, found->ai_addrlen) != 0 || ::listen(listener, 4) != 0) {
        fail("cannot listen on " + host + ":" + port, "name a free port, or 0 for any");
    }
    return listener;
}

int acceptOn(int listener)
{
    return ::accept4(listener, nullptr, nullptr, SOCK_CLOEXEC);
}

int openTerminal(const std::string& path)
{
    const int terminal = ::open(path.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (terminal == -1 || ::isatty(terminal) == 0) {
        fail("cannot use " + path + " as a serial line", "name a serial device");
    }
    makeRaw(terminal);
    return terminal;
}

int openPseudoTerminal(std::string& path)
{
    const int controller = ::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (controller == -1 || ::grantpt(controller) != 0 || ::unlockpt(controller) != 0) {
        fail("cannot make a pseudo-terminal", "check /dev/pts");
    }
    path = ::ptsname(controller);
    // Without an open end of its own, a reading printer would fail whenever no till is there.
    makeRaw(::open(path.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC));
    return controller;
}

std::string addressOf(int listener)
{
    sockaddr_storage address{};
    socklen_t size = sizeof address;
    ::getsockname(listener, reinterpret_cast<sockaddr*>(&address), &size);
    std::array<char, NI_MAXHOST> host{};
    std::array<char, NI_MAXSERV> port{};
    ::getnameinfo(reinterpret_cast<sockaddr*>(&address), size, host.data(), host.size(), port.data(),
                  port.size(), NI_NUMERICHOST | NI_NUMERICSERV);
    return std::string(host.data()) + ":" + port.data();
}

} // namespace virtual_printer
