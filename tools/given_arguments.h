// The arguments of a call as they are given on a command line: buffers, result objects and sizes are the
// tool's matter and left out, texts are in UTF-8.
#pragma once

#include "tools/export_table.h"

#include <span>
#include <string>
#include <vector>

namespace telvofm::tools {

// Large enough for every reply: a buffer that is too small ends the process.
inline constexpr std::size_t bufferSize = 16UL << 20U;

// The parameters that are given, in order.
std::vector<Parameter> givenParameters(const Export& function);

// "itemSale DEVICE ROW ...", for people.
std::string usageOf(const Export& function);

// All arguments, as the table takes them. Throws a Failure that names the one that does not fit.
std::vector<Argument> argumentsOf(const Export& function, std::span<const std::string> given);

// The same with arguments that are as the library takes them, one for each parameter that is given.
std::vector<Argument> withHidden(const Export& function, std::span<const std::string> given);

// Throws a Failure that names the nearest function when there is none of this name.
const Export& exportNamed(const std::string& name);

} // namespace telvofm::tools
