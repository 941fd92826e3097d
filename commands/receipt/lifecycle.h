// Opening and closing the selling day and the receipt. The printer keeps the receipt and judges the order of
// calls.
#pragma once

#include "device/device.h"

namespace telvofm::receipt {

void begin(Device& printer, int address, int row, int saleType, int commType, int paragonType,
           int recapitulation, int graphicsHeader);
void end(Device& printer, int address, int row, int graphicsHeader);
void beginSellingDay(Device& printer, int address, int saleMode);
void destroy(Device& printer, int address, int row, std::string_view description);
void repeat(Device& printer, int address);
void cancelPrintJob(Device& printer, int address);
void confirmNote(Device& printer, int address);

} // namespace telvofm::receipt
