// What a client of the HTTP server may cost.
#pragma once

#include <chrono>
#include <cstddef>

namespace virtual_printer {

struct HttpLimits
{
    std::size_t header = std::size_t{8} * 1024;
    std::size_t body = std::size_t{1024} * 1024;
    std::size_t connections = 64;
    std::chrono::seconds request{10}; // from the connection or the last answer to its last byte
    std::chrono::seconds answer{10};  // without a byte being taken
    std::chrono::seconds heartbeat{15};
};

} // namespace virtual_printer
