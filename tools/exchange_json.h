// Exchanges of a raw log for programs.
#pragma once

#include "tools/code_pages.h"
#include "tools/exchanges.h"
#include "tools/output.h"
#include "tools/raw_log_reader.h"

#include <vector>

namespace telvofm::tools {

Json jsonOf(const std::vector<Exchange>& exchanges, const CodePage& codePage);
Json jsonOf(const std::vector<Damage>& damages);

} // namespace telvofm::tools
