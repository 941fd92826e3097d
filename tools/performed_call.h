// A call of one function of the library, performed: what it returned and what it handed over.
#pragma once

#include "tools/export_table.h"
#include "tools/output.h"

#include <optional>
#include <string>

namespace telvofm::tools {

struct PerformedCall
{
    std::string name;
    std::string returned;            // as the table gives it
    std::optional<int> code;         // of functions that return one
    std::optional<std::string> data; // what came into a buffer or a result object

    // By its code, or as a function without one tells it.
    [[nodiscard]] bool hasFailed() const;
};

// Throws a Failure when an argument does not fit.
PerformedCall perform(const Export& function, std::span<const Argument> arguments, CallContext& context);

// What the returned code means: a word, and for a failure the sentences behind it; of functions without a
// code only a failure means anything.
std::string meaningOf(const PerformedCall& call);
Json jsonOf(const PerformedCall& call);

} // namespace telvofm::tools
