// The page on which a person watches the printers. It is made of files that are the same for everybody;
// everything else it asks the control interface, as any other client does.
#pragma once

#include "virtual_printer/control/message.h"

#include <optional>

namespace virtual_printer {

// Nothing when the request is for something else.
std::optional<HttpAnswer> pageAnswer(const HttpRequest& request);

} // namespace virtual_printer
