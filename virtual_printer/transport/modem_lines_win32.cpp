#include "virtual_printer/transport/modem_lines.h"

namespace virtual_printer {

void steerLines(boost::asio::serial_port& line, const SetLines& wanted)
{
    ::EscapeCommFunction(line.native_handle(), wanted.clearToSend ? SETRTS : CLRRTS);
    ::EscapeCommFunction(line.native_handle(), wanted.dataSetReady ? SETDTR : CLRDTR);
}

} // namespace virtual_printer
