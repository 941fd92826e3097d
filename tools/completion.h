// `telvofm completion`: what completes the tool's words in a shell.
#pragma once

#include "tools/ending.h"
#include "tools/output.h"

namespace telvofm::tools {

// From the tables of commands, functions and codes.
Ending writeBashCompletion(Output& output);

} // namespace telvofm::tools
