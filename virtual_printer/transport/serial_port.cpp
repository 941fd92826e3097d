#include "virtual_printer/transport/connection.h"
#include "virtual_printer/transport/modem_lines.h"
#include "virtual_printer/transport/serial_link.h"

#include <boost/asio/serial_port.hpp>
#include <stdexcept>

namespace virtual_printer {

using boost::asio::serial_port;
using boost::asio::serial_port_base;

void servePort(boost::asio::io_context& context, const std::string& name, std::uint32_t baud,
               Station& station, const Codes& codes, std::function<void()> afterwards)
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
    LinkActions<serial_port> actions;
    actions.setLines = steerLines;
    const auto till = std::make_shared<Connection<serial_port>>(std::move(port), station, CodePage::cp852,
                                                                codes, std::move(actions));
    station.faults.watch([till](const Armed& /*one*/, Faults::Event event) {
        if (event == Faults::Event::disarmed) {
            till->restoreLines();
        }
    });
    till->start([&till = *till, afterwards = std::move(afterwards)] {
        if (!till.isAbandoned()) { // otherwise the line stays, and nobody listens
            afterwards();
        }
    });
}

} // namespace virtual_printer
