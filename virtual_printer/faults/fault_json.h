// Faults as JSON: what arms them, and what says how they stand.
#pragma once

#include "virtual_printer/faults/faults.h"

#include <nlohmann/json_fwd.hpp>

namespace virtual_printer {

// Throws std::runtime_error with one sentence about what is wrong.
Fault faultFromJson(const nlohmann::ordered_json& json);
nlohmann::ordered_json toJson(const Fault& fault);
// With what it has done so far.
nlohmann::ordered_json toJson(const Armed& armed);

} // namespace virtual_printer
