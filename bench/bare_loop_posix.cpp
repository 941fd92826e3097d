#include "bench/bare_loop.h"

#include <arpa/inet.h>
#include <array>
#include <fcntl.h>
#include <netinet/in.h>
#include <poll.h>
#include <stdexcept>
#include <sys/socket.h>
#include <unistd.h>

namespace bench {
namespace {

int descriptorOf(std::uintptr_t handle)
{
    return static_cast<int>(handle);
}

} // namespace

BareLoop::BareLoop(std::uint16_t port)
    : handle(static_cast<std::uintptr_t>(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, IPPROTO_TCP)))
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(port);
    if (::connect(descriptorOf(handle), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
        throw std::runtime_error("the bare loop could not connect");
    }
}

BareLoop::~BareLoop()
{
    ::close(descriptorOf(handle));
}

bool BareLoop::exchange(std::string_view request, char checksum) const
{
    constexpr int patience = 3000;
    constexpr char accepted = 0x06;
    std::array<char, 256> buffer;
    const int socket = descriptorOf(handle);
    pollfd readable = {.fd = socket, .events = POLLIN, .revents = 0};
    return ::send(socket, request.data(), request.size(), MSG_NOSIGNAL) > 0 &&
           ::send(socket, &checksum, 1, MSG_NOSIGNAL) == 1 && ::poll(&readable, 1, patience) == 1 &&
           ::recv(socket, buffer.data(), buffer.size(), 0) == 1 && buffer[0] == accepted;
}

void BareLoop::appendToFile(const std::string& path, std::string_view line)
{
    constexpr int everybodysFile = 0666;
    const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND, everybodysFile);
    if (file == -1 || ::write(file, line.data(), line.size()) < 0) {
        throw std::runtime_error("the bare loop could not write " + path);
    }
    ::close(file);
}

} // namespace bench
