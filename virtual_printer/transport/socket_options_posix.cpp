#include "virtual_printer/transport/socket_options.h"

#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>

namespace virtual_printer {
namespace {

void set(int socket, int level, int option, int value)
{
    ::setsockopt(socket, level, option, &value, sizeof value);
}

} // namespace

void shareAddressAfterwards(boost::asio::ip::tcp::acceptor& acceptor)
{
    set(acceptor.native_handle(), SOL_SOCKET, SO_REUSEADDR, 1);
}

void answerWithoutDelay(boost::asio::ip::tcp::socket& till)
{
    set(till.native_handle(), IPPROTO_TCP, TCP_NODELAY, 1);
}

void acknowledgeAtOnce(boost::asio::ip::tcp::socket& till)
{
    set(till.native_handle(), IPPROTO_TCP, TCP_QUICKACK, 1);
}

bool hasHungUp(boost::asio::ip::tcp::socket& till)
{
    pollfd end = {.fd = till.native_handle(), .events = POLLRDHUP, .revents = 0};
    return ::poll(&end, 1, 0) == 1;
}

void noticeDeadTills(boost::asio::ip::tcp::socket& till)
{
    constexpr int secondsOfSilence = 5;
    constexpr int secondsBetweenProbes = 2;
    constexpr int probes = 3;
    constexpr int longestUnacknowledged = 10000; // milliseconds
    set(till.native_handle(), SOL_SOCKET, SO_KEEPALIVE, 1);
    set(till.native_handle(), IPPROTO_TCP, TCP_KEEPIDLE, secondsOfSilence);
    set(till.native_handle(), IPPROTO_TCP, TCP_KEEPINTVL, secondsBetweenProbes);
    set(till.native_handle(), IPPROTO_TCP, TCP_KEEPCNT, probes);
    set(till.native_handle(), IPPROTO_TCP, TCP_USER_TIMEOUT, longestUnacknowledged);
}

} // namespace virtual_printer
