// The description of the control interface (openapi.json), as the program serves it.
#pragma once

#include <string_view>

namespace virtual_printer {

std::string_view openApiDescription();

} // namespace virtual_printer
