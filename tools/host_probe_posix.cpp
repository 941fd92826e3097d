#include "tools/host_probe.h"

#include <cerrno>
#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace telvofm::tools {
namespace {

constexpr int waitMs = 3000;

class Descriptor
{
public:
    explicit Descriptor(const SocketAddress& address)
        : number(::socket(address.family, address.type | SOCK_CLOEXEC | SOCK_NONBLOCK, address.protocol))
    {
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() { ::close(number); }

    [[nodiscard]] bool waitFor(short event) const
    {
        pollfd waiting = {.fd = number, .events = event, .revents = 0};
        return ::poll(&waiting, 1, waitMs) == 1;
    }

    const int number;
};

// 0, or why not.
int connectWithin(const Descriptor& socket, const SocketAddress& address)
{
    const auto* const target = reinterpret_cast<const sockaddr*>(address.storage.data());
    if (::connect(socket.number, target, static_cast<socklen_t>(address.size)) == 0) {
        return 0;
    }
    if (errno != EINPROGRESS) {
        return errno;
    }
    int failure = ETIMEDOUT;
    socklen_t size = sizeof failure;
    if (socket.waitFor(POLLOUT)) {
        ::getsockopt(socket.number, SOL_SOCKET, SO_ERROR, &failure, &size);
    }
    return failure;
}

} // namespace

HostState probeHost(const SocketAddress& address)
{
    const Descriptor socket(address);
    const int failure = connectWithin(socket, address);
    if (failure != 0) {
        return failure == ECONNREFUSED ? HostState::refused : HostState::unreachable;
    }
    const char probe = 0x11;
    char answer = 0;
    if (::send(socket.number, &probe, 1, MSG_NOSIGNAL) != 1) {
        return HostState::closes;
    }
    if (!socket.waitFor(POLLIN)) {
        return HostState::silent;
    }
    return ::recv(socket.number, &answer, 1, 0) == 1 ? HostState::answers : HostState::closes;
}

} // namespace telvofm::tools
