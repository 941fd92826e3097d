// Turns a raw log into an exchange that a person can read, line by line: what the till asked, what the
// printer said. The log may be broken off anywhere; what cannot be understood is shown in hexadecimal.
#pragma once

#include "tools/code_pages.h"

#include <string>
#include <string_view>

namespace telvofm::tools {

// Texts of the exchange are shown in UTF-8.
std::string decodeRawLog(std::string_view rawLog, const CodePage& codePage);

} // namespace telvofm::tools
