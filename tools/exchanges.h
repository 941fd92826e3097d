// A raw log as exchanges: each request with what came of it.
#pragma once

#include "tools/wire_units.h"

#include <string>
#include <vector>

namespace telvofm::tools {

enum class Outcome
{
    none, // the printer has said nothing that ends it
    accepted,
    refused,
    reply
};

struct Exchange
{
    Unit request;
    std::vector<Unit> units;   // everything behind the request, from both sides
    std::vector<Unit> uploads; // the till's blocks, each once
    Outcome outcome = Outcome::none;
    unsigned char refusal = 0; // the code of a refusal
    std::string reply;         // what came in good blocks
};

// Bytes before the first request are left out.
std::vector<Exchange> exchangesOf(const std::vector<Unit>& units);

} // namespace telvofm::tools
