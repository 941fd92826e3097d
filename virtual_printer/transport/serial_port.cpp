#include "virtual_printer/transport/modem_lines.h"
#include "virtual_printer/transport/serial_line.h"
#include "virtual_printer/transport/serial_link.h"

#include <boost/asio/serial_port.hpp>
#include <stdexcept>

namespace virtual_printer {

using boost::asio::serial_port;
using boost::asio::serial_port_base;

namespace {

serial_port openPort(boost::asio::io_context& context, const std::string& name, std::uint32_t baud)
{
    serial_port port(context);
    try {
        port.open(name);
        port.set_option(serial_port_base::baud_rate(baud));
        port.set_option(serial_port_base::character_size(8));
        port.set_option(serial_port_base::parity(serial_port_base::parity::none));
        port.set_option(serial_port_base::stop_bits(serial_port_base::stop_bits::one));
        port.set_option(serial_port_base::flow_control(serial_port_base::flow_control::hardware));
    } catch (const boost::system::system_error& failure) {
        throw std::runtime_error("cannot use " + name + " as a serial line: " + failure.code().message() +
                                 "; name a serial port that is free and that you may open");
    }
    return port;
}

} // namespace

void servePort(boost::asio::io_context& context, const std::string& name, std::uint32_t baud,
               Station& station, const Codes& codes)
{
    SerialLine<serial_port>::Kind port;
    port.open = [&context, name, baud] { return openPort(context, name, baud); };
    port.setLines = steerLines;
    port.hasFailed = [name] {
        throw std::runtime_error("the serial line " + name + " has gone; plug it in again and start anew");
    };
    std::make_shared<SerialLine<serial_port>>(context, station, codes, std::move(port))->begin();
}

} // namespace virtual_printer
