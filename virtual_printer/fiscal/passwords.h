// The passwords that commands carry, in one place: no decider sees a request whose password is wrong.
#pragma once

#include "virtual_printer/fiscal/settings.h"
#include "virtual_printer/language/commands.h"

#include <span>
#include <string>

namespace virtual_printer {

// Fields named "password" hold the till's password, those named "servicePassword" the one of the service. The
// two of setPassword are its own matter.
Refusal checkPasswords(std::span<const Field> kinds, std::span<const std::string> fields,
                       const Settings& settings);

} // namespace virtual_printer
