#include "virtual_printer/transport/connection.h"
#include "virtual_printer/transport/modem_lines.h"
#include "virtual_printer/transport/serial_link.h"

#include <boost/asio/post.hpp>
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

// One port, opened anew after each hang-up.
class PortLine : public std::enable_shared_from_this<PortLine>
{
public:
    PortLine(boost::asio::io_context& shared, std::string path, std::uint32_t speed, Station& at,
             const Codes& refusals)
        : context(shared), name(std::move(path)), baud(speed), station(at), codes(refusals)
    {
    }

    void serve()
    {
        LinkActions<serial_port> actions;
        actions.setLines = steerLines;
        till = std::make_shared<Connection<serial_port>>(openPort(context, name, baud), station,
                                                         CodePage::cp852, codes, std::move(actions));
        till->start([self = shared_from_this()] { self->goOn(); });
    }
    void endFault(std::uint64_t number) { till->endFault(number); }

private:
    void goOn()
    {
        if (till->hasFailed()) {
            throw std::runtime_error("the serial line " + name +
                                     " has gone; plug it in again and start anew");
        }
        if (!till->isAbandoned()) { // otherwise the line stays, and nobody listens
            boost::asio::post(context, [self = shared_from_this()] { self->serve(); });
        }
    }

    boost::asio::io_context& context;
    std::string name;
    std::uint32_t baud;
    Station& station;
    const Codes& codes;
    std::shared_ptr<Connection<serial_port>> till;
};

} // namespace

void servePort(boost::asio::io_context& context, const std::string& name, std::uint32_t baud,
               Station& station, const Codes& codes)
{
    const auto line = std::make_shared<PortLine>(context, name, baud, station, codes);
    line->serve();
    station.faults.watch([line](const Armed& one, Faults::Event event) {
        if (event == Faults::Event::disarmed) {
            line->endFault(one.number);
        }
    });
}

} // namespace virtual_printer
