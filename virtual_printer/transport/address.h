// Addresses as users write them: HOST:PORT, and [HOST]:PORT for those of IPv6.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace virtual_printer {

struct Address
{
    std::string host;
    std::uint16_t port = 0;
};

// Throws std::runtime_error with a sentence for the user.
Address parseAddress(std::string_view text);

// "127.0.0.1:4711", "[::1]:4711".
std::string toText(const Address& address);

} // namespace virtual_printer
