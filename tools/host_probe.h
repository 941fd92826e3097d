// One look at an address on the network: whether something listens there and answers as a printer does. There
// is one implementation per platform.
#pragma once

#include "link/socket.h"

namespace telvofm::tools {

enum class HostState
{
    answers, // the probe is answered with "ready" or "busy"
    silent,  // connected, and nothing comes
    closes,  // connected, and closed at once
    refused, // the host is there, and nothing listens
    unreachable
};

// Waits for the connection and for the answer, three seconds each.
HostState probeHost(const SocketAddress& address);

} // namespace telvofm::tools
