#include "virtual_printer/transport/connection.h"
#include "virtual_printer/transport/serial_link.h"

#include <boost/asio/posix/stream_descriptor.hpp>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <stdexcept>
#include <termios.h>

namespace virtual_printer {

using boost::asio::posix::stream_descriptor;

std::string servePseudoTerminal(boost::asio::io_context& context, Station& station, const Codes& codes,
                                std::function<void()> afterwards)
{
    const int controller = ::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (controller == -1 || ::grantpt(controller) != 0 || ::unlockpt(controller) != 0) {
        throw std::runtime_error(std::string("cannot make a pseudo-terminal: ") + std::strerror(errno) +
                                 "; check /dev/pts");
    }
    stream_descriptor line(context, controller);
    std::string path = ::ptsname(controller);
    // Held open for good: without an open end a reading printer would fail whenever no till is there.
    const int tillsEnd = ::open(path.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    termios settings{};
    ::tcgetattr(tillsEnd, &settings);
    ::cfmakeraw(&settings);
    ::tcsetattr(tillsEnd, TCSANOW, &settings);
    std::make_shared<Connection<stream_descriptor>>(std::move(line), station, CodePage::cp852, codes,
                                                    [](stream_descriptor&) {})
        ->start(std::move(afterwards));
    return path;
}

} // namespace virtual_printer
