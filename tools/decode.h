// Turns a raw log into an exchange that a person can read, line by line: what the till asked, what the
// printer said. The log may be broken off anywhere; what cannot be understood is shown in hexadecimal.
#pragma once

#include <string>
#include <string_view>

namespace telvofm::tools {

// Texts of the exchange are shown in UTF-8; they are taken for Windows-1250, the encoding of TCP links.
std::string decodeRawLog(std::string_view rawLog);

} // namespace telvofm::tools
