// The invalid-parameter failure: what the C runtime raises when a checked copy does not fit. It ends the host
// program unless that has installed a handler that returns. There is one implementation per platform.
#pragma once

namespace telvofm {

// Returns only when an installed handler does.
void raiseInvalidParameter();

} // namespace telvofm
