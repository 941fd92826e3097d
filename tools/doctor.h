// `telvofm doctor`: looks for what keeps a till from its printer, and says in plain sentences what to do.
#pragma once

#include "tools/ending.h"
#include "tools/finding.h"
#include "tools/printer_session.h"

#include <string>

namespace telvofm::tools {

class Output;

// The library first, then the way to the printer if one is named.
Ending examine(const PrinterOptions& printer, Output& output);

// "HOST" or "HOST:PORT".
Findings examineHost(const std::string& address);

// There is one implementation of these per platform. `name` begins with COM or \\.\COM.
Findings examineSerialPort(const std::string& name);
std::vector<std::string> serialPorts();

} // namespace telvofm::tools
