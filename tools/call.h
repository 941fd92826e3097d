// `telvofm call`: calls functions of the library by their names.
#pragma once

#include "tools/ending.h"
#include "tools/output.h"
#include "tools/printer_session.h"

#include <string>
#include <vector>

namespace telvofm::tools {

// Function names, each with its arguments behind it, in UTF-8; between two calls stands `--then`. The calls
// share a session, and one that fails is the last.
Ending callFunctions(const PrinterOptions& printer, const std::vector<std::string>& words, Output& output);

// All functions with the arguments that they are given.
Ending listFunctions(Output& output);

// How a command ends after a call that has returned this code.
Ending endingOf(int code);

} // namespace telvofm::tools
