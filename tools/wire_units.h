// What the bytes of an exchange are: requests, blocks and single bytes, each from one side.
#pragma once

#include "tools/raw_log_reader.h"

#include <string>
#include <vector>

namespace telvofm::tools {

enum class UnitKind
{
    request,
    block,
    lastBlock,
    accepted, // 06: a request or a block
    lastBlockReceived,
    enough, // of an upload
    noMoreData,
    refused, // by the printer, with a code
    onceMore,
    probe,
    ready,
    busy,
    unknown
};

enum class Checksum
{
    none, // this unit has none
    right,
    wrong,
    missing
};

struct Unit
{
    int line;
    bool isFromTill;
    UnitKind kind;
    std::string bytes; // with the checksum byte
    bool isWhole = true;
    Checksum checksum = Checksum::none;
    std::string expectedChecksum; // when it is wrong
    std::string data;             // of a block; of a refusal its code, if it came
    std::vector<std::string> fields;
};

// In the order in which they began. A block that the till's probes interrupt is one unit all the same.
std::vector<Unit> unitsOf(const std::vector<Run>& runs);

} // namespace telvofm::tools
