#include "bench/loopback_printer.h"

#include "bench/cores.h"

#include <arpa/inet.h>
#include <array>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <stdexcept>
#include <sys/socket.h>
#include <unistd.h>

namespace bench {
namespace {

// Receives a whole request. The sender holds the checksum byte back until the request is acknowledged, so
// that a delayed acknowledgement would cost 40 ms.
bool receiveRequest(int handle, std::size_t length)
{
    std::array<char, 512> buffer;
    std::size_t received = 0;
    while (received < length) {
        const int on = 1;
        ::setsockopt(handle, IPPROTO_TCP, TCP_QUICKACK, &on, sizeof on);
        const auto count = ::recv(handle, buffer.data(), buffer.size(), 0);
        if (count <= 0) {
            return false;
        }
        received += static_cast<std::size_t>(count);
    }
    return true;
}

} // namespace

LoopbackPrinter::LoopbackPrinter() : listener(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0))
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto* any = reinterpret_cast<sockaddr*>(&address);
    if (::bind(listener, any, size) != 0 || ::listen(listener, 4) != 0 ||
        ::getsockname(listener, any, &size) != 0) {
        throw std::runtime_error("no port could be opened on the loopback address");
    }
    boundPort = ntohs(address.sin_port);
}

LoopbackPrinter::~LoopbackPrinter()
{
    if (thread.joinable()) {
        thread.join();
    }
    for (const int handle : handles) {
        ::close(handle);
    }
    ::close(listener);
}

void LoopbackPrinter::serve(std::size_t connections, std::size_t requestLength)
{
    lengthOfRequest = requestLength;
    while (handles.size() < connections) {
        handles.push_back(::accept4(listener, nullptr, nullptr, SOCK_CLOEXEC));
    }
    thread = std::thread([this] {
        pinToCore(1);
        acceptRequests();
    });
}

void LoopbackPrinter::acceptRequests() const
{
    constexpr char accepted = 0x06;
    std::vector<pollfd> waiting;
    for (const int handle : handles) {
        waiting.push_back({.fd = handle, .events = POLLIN, .revents = 0});
    }
    while (::poll(waiting.data(), waiting.size(), -1) > 0) {
        for (const pollfd& connection : waiting) {
            if (connection.revents == 0) {
                continue;
            }
            if (!receiveRequest(connection.fd, lengthOfRequest) ||
                ::send(connection.fd, &accepted, 1, MSG_NOSIGNAL) != 1) {
                return;
            }
        }
    }
}

} // namespace bench
