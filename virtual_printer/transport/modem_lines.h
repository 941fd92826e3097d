// CTS and DSR as the till at the other end of a serial cable sees them: they are the RTS and DTR of this end.
// There is one implementation per platform.
#pragma once

#include "virtual_printer/faults/steps.h"

#include <boost/asio/serial_port.hpp>

namespace virtual_printer {

// While the system steers RTS itself, for the flow of data, it may set it again.
void steerLines(boost::asio::serial_port& line, const SetLines& wanted);

} // namespace virtual_printer
