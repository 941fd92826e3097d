// One character of a code page, as the platform knows it. There is one implementation per platform.
#pragma once

#include "virtual_printer/language/code_page.h"

#include <string>

namespace virtual_printer {

// In UTF-8; empty when the code page has no such character.
std::string characterOf(unsigned char byte, CodePage codePage);

} // namespace virtual_printer
