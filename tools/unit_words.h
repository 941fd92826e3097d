// A unit of an exchange in words.
#pragma once

#include "tools/code_pages.h"
#include "tools/wire_units.h"

#include <string>

namespace telvofm::tools {

std::string wordsOf(const Unit& unit, const CodePage& codePage);

// What a request asks for: the name of its command.
std::string commandOf(const Unit& request);

// What the log lacks of it; empty for a unit that is whole. What was wrong on the line is no damage.
std::string damageOf(const Unit& unit);

} // namespace telvofm::tools
