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

namespace {

// A pseudo-terminal has no modem lines: a till that is given some finds how they stand in the file that
// MODEM_LINES names, for the printer as for the till. Without the file nothing happens.
void tellLines(stream_descriptor& /*line*/, const SetLines& wanted)
{
    constexpr unsigned cts = 1;
    constexpr unsigned dsr = 2;
    const char* const path = std::getenv("MODEM_LINES");
    const int file = path == nullptr ? -1 : ::open(path, O_WRONLY | O_CLOEXEC);
    if (file == -1) {
        return;
    }
    const auto lines =
        static_cast<unsigned char>((wanted.clearToSend ? cts : 0) | (wanted.dataSetReady ? dsr : 0));
    if (::write(file, &lines, 1) != 1) {
        std::perror(path);
    }
    ::close(file);
}

} // namespace

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
    LinkActions<stream_descriptor> actions;
    actions.setLines = tellLines;
    const auto till = std::make_shared<Connection<stream_descriptor>>(
        std::move(line), station, CodePage::cp852, codes, std::move(actions));
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
    return path;
}

} // namespace virtual_printer
