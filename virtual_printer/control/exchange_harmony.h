// Whether an exchange can have all that an entry of an assertion wants of it: each part is possible by
// itself.
#pragma once

#include "virtual_printer/control/possible_exchange.h"

#include <string>

namespace virtual_printer {

// Throws ControlRefusal for parts that no exchange has together. `place` is that of the entry in sentences:
// "received[0]".
void requireHarmony(const Json& expected, Stage stage, const std::string& place);

} // namespace virtual_printer
