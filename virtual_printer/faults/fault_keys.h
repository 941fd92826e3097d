// The keys that a fault has as JSON beside its kind: for which kinds each is, and what it says.
#pragma once

#include "virtual_printer/faults/fault.h"

#include <nlohmann/json_fwd.hpp>
#include <span>
#include <string_view>

namespace virtual_printer {

struct FaultKey
{
    std::string_view name;
    unsigned allowedBy; // one of these bits of the kind
    unsigned neededBy;
    void (*read)(Fault&, const nlohmann::ordered_json&);
};

std::span<const FaultKey> faultKeys();
bool takes(const FaultRule& rule, const FaultKey& key);

} // namespace virtual_printer
