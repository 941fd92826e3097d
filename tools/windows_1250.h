// Texts between terminals and files, which have UTF-8, and the library, which takes Windows-1250.
#pragma once

#include "tools/code_pages.h"

#include <string>
#include <string_view>

namespace telvofm::tools {

// Throws std::invalid_argument that names the first character that Windows-1250 lacks and its position.
std::string windows1250Of(std::string_view utf8);

std::string utf8Of(std::string_view bytes, const CodePage& codePage);

// The same for people: everything that is no character, but for line ends and tabs, as \xNN.
std::string readable(std::string_view bytes, const CodePage& codePage);
// As `readable`, with line ends and tabs as \xNN too.
std::string readableOnOneLine(std::string_view bytes, const CodePage& codePage);

// A sentence for one line of a terminal, whatever words of others stand in it: what is no character, ends a
// line or is no UTF-8 as the \xNN of its bytes.
std::string onOneLine(std::string_view utf8);

} // namespace telvofm::tools
