// A raw log as the runs of bytes that it records. It may be broken off or damaged anywhere: each damaged
// place is named, and the reading goes on behind it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace telvofm::tools {

// The bytes of one line, all in one direction.
struct Run
{
    int line;
    bool isFromTill;
    std::string bytes;
};

struct Damage
{
    int line;
    std::string what;
};

struct RawLog
{
    std::vector<Run> runs;
    std::vector<Damage> damages;
};

RawLog readRawLog(std::string_view text);

} // namespace telvofm::tools
