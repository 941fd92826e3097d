// An argument as it is written on the command line, in the form in which the table of exports takes it.
#pragma once

#include "tools/export_table.h"

#include <string>

namespace telvofm::tools {

// Texts go from UTF-8 to Windows-1250, bytes come from hexadecimal pairs or a file. Throws a Failure that
// names the parameter when that cannot be; numbers are the table's matter.
std::string textFor(const Parameter& parameter, const std::string& text);

} // namespace telvofm::tools
