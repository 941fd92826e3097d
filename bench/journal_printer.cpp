#include "bench/journal_printer.h"

#include "bench/cores.h"
#include "bench/reply_block.h"

#include <algorithm>
#include <arpa/inet.h>
#include <array>
#include <chrono>
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
class Journal
{
public:
    explicit Journal(std::size_t bytes) : size(bytes), last(replyBlock((bytes - 1) % largestPiece + 1, true))
    {
    }

    [[nodiscard]] std::size_t blocks() const { return (size + largestPiece - 1) / largestPiece; }
    [[nodiscard]] const std::string& block(std::size_t number) const
    {
        return number + 1 < blocks() ? full : last;
    }

private:
    std::size_t size;
    std::string full = replyBlock(largestPiece, false);
    std::string last;
};

struct Till
{
    int connection;
    double seconds = 0;
};

Till accepted(int listener)
{
    const Till till = {.connection = ::accept(listener, nullptr, nullptr)};
    // The caller's checksum byte waits for the acknowledgement of the request; a delayed one would cost 40
    // ms.
    const int on = 1;
    ::setsockopt(till.connection, IPPROTO_TCP, TCP_QUICKACK, &on, sizeof on);
    std::array<char, journalRequest.size()> request{};
    if (::recv(till.connection, request.data(), request.size(), MSG_WAITALL) !=
        static_cast<ssize_t>(request.size())) {
        stop("the request");
    }
    return till;
}

void serveTurn(Till& till, const Journal& journal, std::size_t from, std::size_t end)
{
    const auto started = std::chrono::steady_clock::now();
    for (std::size_t number = from; number < end; ++number) {
        const std::string& block = journal.block(number);
        char acknowledge = 0;
        if (::send(till.connection, block.data(), block.size(), MSG_NOSIGNAL) < 0 ||
            ::recv(till.connection, &acknowledge, 1, 0) != 1) {
            stop("a block");
        }
    }
    till.seconds += std::chrono::duration<double>(std::chrono::steady_clock::now() - started).count();
}

void serve(std::vector<Till>& tills, const Journal& journal)
{
    constexpr std::size_t blocksOfATurn = 256; // some 15 ms: shorter ones show what it costs to take turns
    for (std::size_t from = 0; from < journal.blocks(); from += blocksOfATurn) {
        for (Till& till : tills) {
            serveTurn(till, journal, from, std::min(from + blocksOfATurn, journal.blocks()));
        }
    }
}

[[noreturn]] void serveForEver(int listener, int measured, std::size_t numberOfTills, const Journal& journal)
{
    for (;;) {
        std::vector<Till> tills;
        while (tills.size() < numberOfTills) {
            tills.push_back(accepted(listener));
        }
        serve(tills, journal);
        for (const Till& till : tills) {
            ::close(till.connection);
            if (::write(measured, &till.seconds, sizeof till.seconds) != sizeof till.seconds) {
                stop("write");
            }
        }
    }
}

} // namespace

JournalPrinter::JournalPrinter(std::size_t journalSize, std::size_t numberOfTills) : tills(numberOfTills)
{
    const int listener = streamSocket();
    sockaddr_in address = loopback(0);
    socklen_t size = sizeof address;
    auto* const generic = reinterpret_cast<sockaddr*>(&address);
    if (::bind(listener, generic, size) != 0 || ::listen(listener, static_cast<int>(tills)) != 0 ||
        ::getsockname(listener, generic, &size) != 0) {
        stop("bind");
    }
    boundPort = ntohs(address.sin_port);
    std::array<int, 2> ends{};
    if (::pipe(ends.data()) != 0) {
        stop("pipe");
    }
    process = fork();
    if (process == 0) {
        pinToCore(1);
        serveForEver(listener, ends[1], tills, Journal(journalSize));
    }
    ::close(listener);
    ::close(ends[1]);
    measured = ends[0];
}

std::vector<double> JournalPrinter::seconds() const
{
    std::vector<double> all(tills);
    for (double& one : all) {
        if (::read(measured, &one, sizeof one) != sizeof one) {
            stop("the printer of the journal");
        }
    }
    return all;
}

JournalPrinter::~JournalPrinter()
{
    ::kill(process, SIGKILL);
    ::waitpid(process, nullptr, 0);
    ::close(measured);
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
