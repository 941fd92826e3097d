#include "virtual_printer/transport/modem_lines.h"

#include <sys/ioctl.h>

namespace virtual_printer {

void steerLines(boost::asio::serial_port& line, const SetLines& wanted)
{
    const auto set = [&line](int which, bool isOn) {
        ::ioctl(line.native_handle(), isOn ? TIOCMBIS : TIOCMBIC, &which);
    };
    set(TIOCM_RTS, wanted.clearToSend);
    set(TIOCM_DTR, wanted.dataSetReady);
}

} // namespace virtual_printer
