// A printer on a serial line: a real port, or a pseudo-terminal that the printer makes. A line has no
// connections: whoever writes on it is the till.
#pragma once

#include "virtual_printer/printers/codes.h"
#include "virtual_printer/printers/station.h"

#include <boost/asio/io_context.hpp>
#include <cstdint>
#include <functional>
#include <string>

namespace virtual_printer {

// Both throw std::runtime_error with a sentence for the user, also out of the context's run when the line
// goes away later. After a hang-up, which a fault makes, they begin again.
void servePort(boost::asio::io_context& context, const std::string& name, std::uint32_t baud,
               Station& station, const Codes& codes);

// Tells the path of the till's end, and the one of the next pseudo-terminal after a hang-up. There are none
// on Windows.
void servePseudoTerminal(boost::asio::io_context& context, Station& station, const Codes& codes,
                         std::function<void(const std::string&)> tellPath);

} // namespace virtual_printer
