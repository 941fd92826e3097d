// Faults that together are a trouble in a shop, and the files that they come from.
#pragma once

#include "virtual_printer/faults/fault.h"

#include <filesystem>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

namespace virtual_printer {

struct Scenario
{
    std::string trouble; // in words
    std::vector<Fault> faults;
};

// {"trouble": "...", "seed": 7, "faults": [...]}. A fault without a seed has the scenario's. Both throw
// std::runtime_error with one sentence about what is wrong.
Scenario scenarioFromJson(const nlohmann::ordered_json& json);
Scenario readScenario(const std::filesystem::path& file);

} // namespace virtual_printer
