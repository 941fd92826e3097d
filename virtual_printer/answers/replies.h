// What requests read out of the memories: variables, the last receipt, extracts, look-ups and images. The
// command that prints an extract and the one that reads it select alike.
#pragma once

#include "virtual_printer/fiscal/state.h"
#include "virtual_printer/fiscal/verdict.h"
#include "virtual_printer/language/commands.h"
#include "virtual_printer/language/fields.h"
#include "virtual_printer/memory/memory.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace virtual_printer {

struct Reply
{
    Verdict verdict{};
    std::string data{};        // UTF-8; of a rule that wants a reply
    std::vector<Line> lines{}; // of a rule that wants printing
    // What follows the data, piece by piece, each a bounded piece of work; none where it is all. Throws
    // MemoryDamaged.
    std::function<std::optional<std::string>()> further{};
};

// For a request that was found legal; its rule says whether it wants a verdict, a reply or a printing.
Reply replyTo(const CommandRule& rule, const Fields& fields, const State& state, const Memory& memory,
              Moment now);

} // namespace virtual_printer
