// Who may open a port.
#pragma once

#include "tools/finding.h"

namespace telvofm::tools {

Finding examineRights(const std::string& path);

} // namespace telvofm::tools
