// An address as the printers print it, "127.0.0.1:4000".
#pragma once

#include <boost/asio.hpp>
#include <cstdint>
#include <string>

namespace bench {

inline boost::asio::ip::tcp::endpoint endpointOf(const std::string& address)
{
    const std::size_t colon = address.rfind(':');
    return {boost::asio::ip::make_address(address.substr(0, colon)),
            static_cast<std::uint16_t>(std::stoi(address.substr(colon + 1)))};
}

} // namespace bench
