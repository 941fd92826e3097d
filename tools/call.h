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

// These functions with the arguments that they are given; all when none is named.
Ending listFunctions(const std::vector<std::string>& names, Output& output);

} // namespace telvofm::tools
