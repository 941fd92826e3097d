// Settings and standing as lines of the form name=value.
#pragma once

#include "virtual_printer/fiscal/state.h"

#include <string>
#include <vector>

namespace virtual_printer {

// Passwords are left out, and what is not set as well.
std::vector<std::string> settingsLines(const Settings& settings);
std::vector<std::string> standingLines(const Standing& standing);

} // namespace virtual_printer
