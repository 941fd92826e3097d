// An exchange as JSON, for the control interface and for files: one object, whose bytes are written as the
// raw log writes them, so that they can be played again.
#pragma once

#include "virtual_printer/trace/exchanged.h"

#include <nlohmann/json_fwd.hpp>

namespace virtual_printer {

// Fields that are passwords are shown as "****"; the bytes are as they came.
nlohmann::ordered_json toJson(const Exchanged& exchanged);

} // namespace virtual_printer
