// Runs the printers of the command line until they are asked to end.
#pragma once

#include "virtual_printer/options.h"

namespace virtual_printer {

// The exit code of the process. Throws std::runtime_error with a sentence for the user.
int serve(const Options& options);

} // namespace virtual_printer
