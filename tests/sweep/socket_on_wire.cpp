// Takes the place of link/socket_posix.cpp: a socket whose network is the wire in memory.
#include "link/socket.h"
#include "tests/sweep/faulty_wire.h"

namespace telvofm {

using test::sweep::FaultyWire;
using test::sweep::wire;

bool Socket::startUp()
{
    return true;
}

void Socket::cleanUp() {}

std::optional<std::vector<SocketAddress>> Socket::resolve(const std::string& /*host*/,
                                                          const std::string& /*port*/)
{
    return std::vector<SocketAddress>(1);
}

bool Socket::create(const SocketAddress& /*address*/)
{
    handle = 1;
    return true;
}

bool Socket::connect(const SocketAddress& /*address*/) const
{
    return true;
}

void Socket::close()
{
    handle = invalid;
}

void Socket::shutDown() const {}

bool Socket::send(std::string_view bytes) const
{
    return wire().send(bytes);
}

// An end is readable, as the system has it.
Socket::Wait Socket::waitReadable(std::chrono::milliseconds limit) const
{
    return wire().wait(limit) == FaultyWire::Wait::silence ? Wait::silent : Wait::readable;
}

std::ptrdiff_t Socket::receive(std::span<char> buffer) const
{
    return static_cast<std::ptrdiff_t>(wire().take(buffer));
}

} // namespace telvofm
