// A printer on a serial line: a real port, or a pseudo-terminal that the printer makes. A line has no
// connections: whoever writes on it is the till.
#pragma once

#include "virtual_printer/printers/codes.h"
#include "virtual_printer/printers/station.h"

#include <boost/asio/io_context.hpp>
#include <cstdint>
#include <string>

namespace virtual_printer {

// Each serves until the line has gone, and then calls `afterwards`. Throws std::runtime_error with a
// sentence for the user.
void servePort(boost::asio::io_context& context, const std::string& name, std::uint32_t baud,
               Station& station, const Codes& codes, std::function<void()> afterwards);

// Returns the path of the till's end. There are none on Windows.
std::string servePseudoTerminal(boost::asio::io_context& context, Station& station, const Codes& codes,
                                std::function<void()> afterwards);

} // namespace virtual_printer
