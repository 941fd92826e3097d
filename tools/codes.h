// `telvofm codes`: what the returned codes mean.
#pragma once

#include "tools/code_meanings.h"
#include "tools/ending.h"
#include "tools/output.h"

#include <string>

namespace telvofm::tools {

// One code as it was given on the command line; all without one.
Ending showCodes(const std::string& code, Output& output);

// `code` may be one of a range.
Json jsonOf(int code, const CodeMeaning& meaning);

} // namespace telvofm::tools
