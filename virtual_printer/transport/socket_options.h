// What the printer's sockets want of the platform. There is one implementation per platform.
#pragma once

#include <boost/asio/ip/tcp.hpp>

namespace virtual_printer {

// The address is free again as soon as this process has gone, and nobody else's meanwhile.
void shareAddressAfterwards(boost::asio::ip::tcp::acceptor& acceptor);

void answerWithoutDelay(boost::asio::ip::tcp::socket& till);

// A till sends a request and its checksum in two pieces and would wait for the timer of the
// acknowledgements in between.
void acknowledgeAtOnce(boost::asio::ip::tcp::socket& till);

// Whether the till has closed its end, also when not all that it has sent is read yet.
bool hasHungUp(boost::asio::ip::tcp::socket& till);

// A till whose machine has gone away, without a word, must not keep the printer: after some 10 seconds its
// connection has failed.
void noticeDeadTills(boost::asio::ip::tcp::socket& till);

} // namespace virtual_printer
