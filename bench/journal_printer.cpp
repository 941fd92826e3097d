#include "bench/journal_printer.h"

#include "bench/cores.h"
#include "bench/reply_block.h"

#include <algorithm>
#include <arpa/inet.h>
#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

namespace bench {
namespace {

[[noreturn]] void stop(const char* failed)
{
    std::perror(failed);
    std::exit(1);
}

sockaddr_in loopback(std::uint16_t port)
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    return address;
}

int streamSocket()
{
    const int created = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (created == -1) {
        stop("socket");
    }
    return created;
}

// The printer's answers are built before it serves: its part of the time is the system calls.
void serve(int connection, std::size_t journalSize)
{
    const std::size_t lastPiece = (journalSize - 1) % largestPiece + 1;
    const std::string full = replyBlock(largestPiece, false);
    const std::string last = replyBlock(lastPiece, true);
    // The caller's checksum byte waits for the acknowledgement of the request; a delayed one would cost 40
    // ms.
    const int on = 1;
    ::setsockopt(connection, IPPROTO_TCP, TCP_QUICKACK, &on, sizeof on);
    std::array<char, journalRequest.size()> request{};
    while (::recv(connection, request.data(), request.size(), MSG_WAITALL) ==
           static_cast<ssize_t>(request.size())) {
        for (std::size_t left = journalSize; left > 0; left -= std::min(left, largestPiece)) {
            const std::string& next = left > largestPiece ? full : last;
            char acknowledge = 0;
            if (::send(connection, next.data(), next.size(), MSG_NOSIGNAL) < 0 ||
                ::recv(connection, &acknowledge, 1, 0) != 1) {
                return;
            }
        }
    }
}

} // namespace

JournalPrinter::JournalPrinter(std::size_t journalSize)
{
    const int listener = streamSocket();
    sockaddr_in address = loopback(0);
    socklen_t size = sizeof address;
    auto* const generic = reinterpret_cast<sockaddr*>(&address);
    if (::bind(listener, generic, size) != 0 || ::listen(listener, 1) != 0 ||
        ::getsockname(listener, generic, &size) != 0) {
        stop("bind");
    }
    boundPort = ntohs(address.sin_port);
    process = fork();
    if (process == 0) {
        pinToCore(1);
        for (;;) {
            const int connection = ::accept(listener, nullptr, nullptr);
            serve(connection, journalSize);
            ::close(connection);
        }
    }
    ::close(listener);
}

JournalPrinter::~JournalPrinter()
{
    ::kill(process, SIGKILL);
    ::waitpid(process, nullptr, 0);
}

int connectTo(std::uint16_t port)
{
    const int socket = streamSocket();
    const sockaddr_in address = loopback(port);
    if (::connect(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
        stop("connect");
    }
    return socket;
}

} // namespace bench
