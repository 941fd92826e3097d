// A call log as calls that can be made again. The log may be broken off or damaged anywhere: each damaged
// place is named, and the reading goes on behind it.
#pragma once

#include "tools/export_table.h"
#include "tools/raw_log_reader.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace telvofm::tools {

struct LoggedCall
{
    int line;
    const Export* function;
    // One for each parameter that is given, in Windows-1250; nothing where the log does not hold it.
    std::vector<std::optional<std::string>> given;
    std::optional<std::string> result; // where the log holds what came back
    bool isRounded = false;            // a number may have had more digits than the log holds
};

struct CallLogContents
{
    std::vector<LoggedCall> calls;
    std::vector<Damage> damages;
};

CallLogContents readCallLog(std::string_view text);

} // namespace telvofm::tools
