// What somebody may have meant who wrote a name that does not exist.
#pragma once

#include <span>
#include <string_view>

namespace telvofm::tools {

// Empty when none is near.
std::string_view nearestName(std::string_view wrong, std::span<const std::string_view> names);

} // namespace telvofm::tools
