// The settings as one JSON object, and back.
#pragma once

#include "virtual_printer/control/message.h"
#include "virtual_printer/fiscal/settings.h"

namespace virtual_printer {

// Without the passwords.
Json toJson(const Settings& settings);

// `before` with the members of `changes` in place of its own; null takes an entry of a list away (RFC 7396).
// Holds what tills may set to the same ranges. Throws ControlRefusal with a sentence that names the member.
Settings changed(const Settings& before, const Json& changes);

} // namespace virtual_printer
