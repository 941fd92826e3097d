// `telvofm decode`: turns a raw log into exchanges that a person or, as JSON, a program can read: what the
// till asked, what the printer said. The log may be broken off or damaged anywhere; each such place is named.
#pragma once

#include "tools/code_pages.h"
#include "tools/ending.h"
#include "tools/output.h"
#include "tools/raw_log_reader.h"
#include "tools/wire_units.h"

#include <string>
#include <string_view>
#include <vector>

namespace telvofm::tools {

Ending decode(const std::string& file, const CodePage& codePage, Output& output);

// Line by line, in the log's order. Texts of the exchange are shown in UTF-8.
std::string decodeRawLog(std::string_view rawLog, const CodePage& codePage);

// Those of the log itself and those that its units show, in the order of their lines.
std::vector<Damage> damagesOf(const RawLog& log, const std::vector<Unit>& units);

// The contents of a file that a person has named.
std::string readNamedFile(const std::string& file);

} // namespace telvofm::tools
