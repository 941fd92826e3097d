// The library's one session: the current link driver and the device object, both absent while nothing is
// open.
#pragma once

#include "device/device.h"
#include "link/link_driver.h"

#include <memory>

namespace telvofm {

// Null while nothing is open. The caller's share keeps the object alive when another thread closes meanwhile.
std::shared_ptr<Device> openDevice();
std::shared_ptr<LinkDriver> currentDriver();

} // namespace telvofm
