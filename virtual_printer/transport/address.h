// Addresses as users write them: HOST:PORT, and [HOST]:PORT for those of IPv6.
#pragma once

#include <boost/asio/ip/tcp.hpp>
#include <string>
#include <string_view>

namespace virtual_printer {

// The first address that the host has. Throws std::runtime_error with a sentence for the user.
boost::asio::ip::tcp::endpoint parseAddress(std::string_view text, boost::asio::io_context& context);

// "127.0.0.1:4711", "[::1]:4711".
std::string toText(const boost::asio::ip::tcp::endpoint& address);

} // namespace virtual_printer
