// Which programs have a port open.
#pragma once

#include "tools/finding.h"

namespace telvofm::tools {

// Programs of other users are seen by root only.
Finding examineHolders(const std::string& path);

} // namespace telvofm::tools
