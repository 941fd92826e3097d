// Faults as JSON: what arms them, what says how they stand, and the files of scenarios.
#pragma once

#include "virtual_printer/faults/faults.h"

#include <filesystem>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

namespace virtual_printer {

// Throws std::runtime_error with one sentence about what is wrong.
Fault faultFromJson(const nlohmann::ordered_json& json);
nlohmann::ordered_json toJson(const Fault& fault);
// With what it has done so far.
nlohmann::ordered_json toJson(const Armed& armed);

// Faults that together are a trouble in a shop.
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
