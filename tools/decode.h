// `telvofm decode`: turns a raw log into exchanges that a person or, as JSON, a program can read. The log may
// be broken off or damaged anywhere; each such place is named.
#pragma once

#include "tools/code_pages.h"
#include "tools/ending.h"
#include "tools/output.h"

#include <string>

namespace telvofm::tools {

Ending decode(const std::string& file, const CodePage& codePage, Output& output);

// The contents of a file that a person has named.
std::string readNamedFile(const std::string& file);

} // namespace telvofm::tools
