// A raw log line by line, as a person reads an exchange: what the till asked, what the printer said, and
// where the log is damaged.
#pragma once

#include "tools/code_pages.h"
#include "tools/raw_log_reader.h"
#include "tools/wire_units.h"

#include <string>
#include <vector>

namespace telvofm::tools {

// In the log's order. Texts of the exchange are shown in UTF-8.
std::vector<std::string> decodedLines(const RawLog& log, const std::vector<Unit>& units,
                                      const CodePage& codePage);

// Those of the log itself and those that its units show, in the order of their lines.
std::vector<Damage> damagesOf(const RawLog& log, const std::vector<Unit>& units);

} // namespace telvofm::tools
