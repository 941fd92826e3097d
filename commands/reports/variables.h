// Short data of the printer: its variables by code, the image of the last receipt, and extracts of the fiscal
// memory.
#pragma once

#include "device/device.h"

namespace telvofm::reports {

// The variable's text, without the line end that the printer puts behind it.
std::string variable(Device& printer, int address, std::string_view code);
std::string lastParagon(Device& printer, int address);
std::string intervalByDates(Device& printer, int address, int printType, std::string_view from,
                            std::string_view to);
std::string intervalByNumbers(Device& printer, int address, int printType, int from, int to);

} // namespace telvofm::reports
