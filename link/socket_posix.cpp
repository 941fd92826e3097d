#include "link/socket.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <memory>
#include <netdb.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace telvofm {
namespace {

int descriptor(std::uintptr_t handle)
{
    return static_cast<int>(handle);
}

// Repeats a call that a signal interrupted.
template <typename Call>
auto restarted(Call call)
{
    auto result = call();
    while (result == -1 && errno == EINTR) {
        result = call();
    }
    return result;
}

// A connect that a signal interrupts goes on by itself: wait for its outcome.
bool finishConnect(int handle)
{
    pollfd writable = {.fd = handle, .events = POLLOUT, .revents = 0};
    if (restarted([&] { return ::poll(&writable, 1, -1); }) != 1) {
        return false;
    }
    int failure = 0;
    socklen_t size = sizeof failure;
    return ::getsockopt(handle, SOL_SOCKET, SO_ERROR, &failure, &size) == 0 && failure == 0;
}

} // namespace

bool Socket::startUp()
{
    return true;
}

void Socket::cleanUp() {}

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
    const int created = ::socket(address.family, address.type | SOCK_CLOEXEC, address.protocol);
    if (created == -1) {
        return false;
    }
    handle = static_cast<std::uintptr_t>(created);
    return true;
}

bool Socket::connect(const SocketAddress& address) const
{
    const auto* target = reinterpret_cast<const sockaddr*>(address.storage.data());
    if (::connect(descriptor(handle), target, static_cast<socklen_t>(address.size)) == 0) {
        return true;
    }
    return errno == EINTR && finishConnect(descriptor(handle));
}

void Socket::close()
{
    if (handle != invalid) {
        ::close(descriptor(handle));
        handle = invalid;
    }
}

void Socket::shutDown() const
{
    ::shutdown(descriptor(handle), SHUT_RDWR);
}

bool Socket::send(std::string_view bytes) const
{
    // The system takes so many at once and cuts the rest: they are not sent in part and reported whole.
    constexpr std::size_t mostAtOnce = 0x7FFFF000;
    if (bytes.size() > mostAtOnce) {
        return false;
    }
    return restarted([&] { return ::send(descriptor(handle), bytes.data(), bytes.size(), MSG_NOSIGNAL); }) !=
           -1;
}

Socket::Wait Socket::waitReadable(std::chrono::milliseconds limit) const
{
    using Clock = std::chrono::steady_clock;
    if (handle == invalid) {
        return Wait::failed; // poll would pass over a negative descriptor and wait in vain
    }
    const auto deadline = Clock::now() + limit;
    pollfd readable = {.fd = descriptor(handle), .events = POLLIN, .revents = 0};
    int ready = ::poll(&readable, 1, static_cast<int>(limit.count()));
    while (ready == -1 && errno == EINTR) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
        ready = ::poll(&readable, 1, static_cast<int>(std::max<std::int64_t>(left.count(), 0)));
    }
    if (ready == -1) {
        return Wait::failed;
    }
    return ready == 0 ? Wait::silent : Wait::readable;
}

std::ptrdiff_t Socket::receive(std::span<char> buffer) const
{
    return restarted([&] { return ::recv(descriptor(handle), buffer.data(), buffer.size(), 0); });
}

} // namespace telvofm
