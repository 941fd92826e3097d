// What the printer asks of the system for the socket of a till that it serves. A till that has really gone is
// seen by nobody but the system, which needs these settings for it.
#include "tests/wire/loopback.h"
#include "virtual_printer/printers/new_printer.h"
#include "virtual_printer/transport/tcp_link.h"

#include <gtest/gtest.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>

namespace virtual_printer {
namespace {

int optionOf(int socket, int level, int option)
{
    int value = -1;
    socklen_t size = sizeof value;
    EXPECT_EQ(::getsockopt(socket, level, option, &value, &size), 0);
    return value;
}

// This process's socket on the port that has another end; -1 when there is none.
int servedSocket(std::uint16_t port)
{
    constexpr int mostFiles = 1024;
    for (int file = 0; file < mostFiles; ++file) {
        sockaddr_in own{};
        sockaddr_in other{};
        socklen_t size = sizeof own;
        socklen_t sizeOfOther = sizeof other;
        if (::getsockname(file, reinterpret_cast<sockaddr*>(&own), &size) == 0 && own.sin_family == AF_INET &&
            ntohs(own.sin_port) == port &&
            ::getpeername(file, reinterpret_cast<sockaddr*>(&other), &sizeOfOther) == 0) {
            return file;
        }
    }
    return -1;
}

TEST(ServedSocket, FailsSomeTenSecondsAfterItsTillHasGone)
{
    boost::asio::io_context context;
    const Codes codes;
    Station station("printer", Printer(Memory(), readyToSell(), systemClock()));
    const TcpLink link(context, {"127.0.0.1", 0}, station, codes, SecondTill::busy);
    const std::string address = link.address();
    const auto port = static_cast<std::uint16_t>(std::stoi(address.substr(address.rfind(':') + 1)));
    const wire::Connection till = wire::connectTo(port);
    ASSERT_TRUE(till.isOpen());
    context.run_one_for(std::chrono::seconds(30));
    const int served = servedSocket(port);
    ASSERT_NE(served, -1);
    EXPECT_EQ(optionOf(served, SOL_SOCKET, SO_KEEPALIVE), 1);
    const int silence = optionOf(served, IPPROTO_TCP, TCP_KEEPIDLE);
    const int between = optionOf(served, IPPROTO_TCP, TCP_KEEPINTVL);
    const int probes = optionOf(served, IPPROTO_TCP, TCP_KEEPCNT);
    EXPECT_GE(silence, 1);
    EXPECT_LE(silence + between * probes, 12) << "seconds until an idle link fails";
    EXPECT_EQ(optionOf(served, IPPROTO_TCP, TCP_USER_TIMEOUT), 10'000) << "and one with an answer on its way";
    EXPECT_EQ(optionOf(served, IPPROTO_TCP, TCP_NODELAY), 1);
}

} // namespace
} // namespace virtual_printer
