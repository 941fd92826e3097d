// Arguments for an export of the typed table out of the fuzzer's input: any number, any text, but buffers
// with room for what the printer can say, sizes that are right, and files that nobody minds.
#pragma once

#include "tests/fuzz/fuzzed_bytes.h"
#include "tools/export_table.h"

#include <vector>

namespace telvofm::fuzz {

std::vector<tools::Argument> argumentsFrom(FuzzedBytes& input, const tools::Export& function);

// Of the links that an open export can be told, none of them real.
std::string linkFrom(FuzzedBytes& input);

} // namespace telvofm::fuzz
