// Whether what the command line asks for can be done at all, before anything is done.
#pragma once

#include "tools/command_line.h"

namespace telvofm::tools {

// Throws a Failure with a sentence when it cannot.
void requirePossible(const Task& task);

} // namespace telvofm::tools
