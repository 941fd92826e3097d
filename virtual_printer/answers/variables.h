// The variables that tills can read, by their names: what the printer has counted, summed up and set, so that
// a till that has lost an answer can find out what was carried out.
#pragma once

#include "virtual_printer/answers/question.h"

#include <optional>
#include <string>
#include <string_view>

namespace virtual_printer {

// Nothing when there is no such variable.
std::optional<std::string> variableText(std::string_view name, const Question& question);

} // namespace virtual_printer
