#include "virtual_printer/transport/serial_line.h"
#include "virtual_printer/transport/serial_link.h"

#include <boost/asio/posix/stream_descriptor.hpp>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <optional>
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

// A pair of ends: the printer's, and the till's with its path.
class PseudoTerminal
{
public:
    PseudoTerminal() : controller(::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC))
    {
        if (controller == -1 || ::grantpt(controller) != 0 || ::unlockpt(controller) != 0) {
            throw std::runtime_error(std::string("cannot make a pseudo-terminal: ") + std::strerror(errno) +
                                     "; check /dev/pts");
        }
        path = ::ptsname(controller);
        tillsEnd = ::open(path.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
        termios settings{};
        ::tcgetattr(tillsEnd, &settings);
        ::cfmakeraw(&settings);
        ::tcsetattr(tillsEnd, TCSANOW, &settings);
    }
    PseudoTerminal(const PseudoTerminal&) = delete;
    PseudoTerminal& operator=(const PseudoTerminal&) = delete;
    ~PseudoTerminal() { ::close(tillsEnd); }

    int controller; // whoever takes it closes it
    std::string path;

private:
    // Held open: without an open end a reading printer would fail whenever no till is there.
    int tillsEnd = -1;
};

} // namespace

void servePseudoTerminal(boost::asio::io_context& context, Station& station, const Codes& codes,
                         std::function<void(const std::string&)> tellPath)
{
    // One after the other: with a hang-up one goes, because a till that still holds its end would keep it
    // from being the same again.
    const auto terminal = std::make_shared<std::optional<PseudoTerminal>>();
    SerialLine<stream_descriptor>::Kind line;
    line.open = [&context, terminal] {
        terminal->emplace();
        return stream_descriptor(context, (*terminal)->controller);
    };
    line.announce = [terminal, tellPath = std::move(tellPath)] { tellPath((*terminal)->path); };
    line.setLines = tellLines;
    std::make_shared<SerialLine<stream_descriptor>>(context, station, codes, std::move(line))->begin();
}

} // namespace virtual_printer
