// The printer's backup pages and memory image. Their passwords go out byte for byte, never converted.
#pragma once

#include "device/device.h"

namespace telvofm::reports {

void restoreBackup(Device& printer, int address, std::string_view password);
Request backupPage(Device& printer, int address, std::string_view password, int page);
Request memoryImage(Device& printer, int address, std::string_view password);

} // namespace telvofm::reports
