#include "virtual_printer/transport/socket_options.h"

#include <mstcpip.h>
#include <winsock2.h>

namespace virtual_printer {

// Exclusive use is what Windows calls it: there SO_REUSEADDR would let anybody take the address.
void shareAddressAfterwards(boost::asio::ip::tcp::acceptor& acceptor)
{
    const BOOL on = TRUE;
    ::setsockopt(acceptor.native_handle(), SOL_SOCKET, SO_EXCLUSIVEADDRUSE,
                 reinterpret_cast<const char*>(&on), sizeof on);
}

void answerWithoutDelay(boost::asio::ip::tcp::socket& till)
{
    const BOOL on = TRUE;
    ::setsockopt(till.native_handle(), IPPROTO_TCP, TCP_NODELAY, reinterpret_cast<const char*>(&on),
                 sizeof on);
}

void acknowledgeAtOnce(boost::asio::ip::tcp::socket& till)
{
    DWORD everyPacket = 1;
    DWORD unused = 0;
    constexpr DWORD acknowledgeFrequency = _WSAIOW(IOC_VENDOR, 23); // SIO_TCP_SET_ACK_FREQUENCY
    ::WSAIoctl(till.native_handle(), acknowledgeFrequency, &everyPacket, sizeof everyPacket, nullptr, 0,
               &unused, nullptr, nullptr);
}

// As far as the system tells: bytes that are not read yet hide the end.
bool hasHungUp(boost::asio::ip::tcp::socket& till)
{
    WSAPOLLFD readable = {till.native_handle(), POLLRDNORM, 0};
    char byte = 0;
    return ::WSAPoll(&readable, 1, 0) == 1 && ::recv(till.native_handle(), &byte, 1, MSG_PEEK) <= 0;
}

void noticeDeadTills(boost::asio::ip::tcp::socket& till)
{
    constexpr ULONG millisecondsOfSilence = 5000;
    constexpr ULONG millisecondsBetweenProbes = 1000;
    tcp_keepalive keepAlive = {1, millisecondsOfSilence, millisecondsBetweenProbes};
    DWORD unused = 0;
    ::WSAIoctl(till.native_handle(), SIO_KEEPALIVE_VALS, &keepAlive, sizeof keepAlive, nullptr, 0, &unused,
               nullptr, nullptr);
}

} // namespace virtual_printer
