#include "virtual_printer/transport/serial_link.h"

#include <stdexcept>

namespace virtual_printer {

void servePseudoTerminal(boost::asio::io_context& /*context*/, Station& /*station*/, const Codes& /*codes*/,
                         std::function<void(const std::string&)> /*tellPath*/)
{
    throw std::runtime_error("there are no pseudo-terminals on Windows; name a COM port with --serial");
}

} // namespace virtual_printer
