// The printer's table of VAT rates: one rate by its letter, or the whole table at once. Rates are sent as
// whole percents. A reverse constant keeps its fraction when one rate is set, and has none in the table.
#pragma once

#include "device/device.h"

#include <span>

namespace telvofm::config {

// Rate and reverse constant in turn: five pairs (A to E), or eight (A to H) with a date.
using FivePairs = std::span<const int, 10>;
using EightPairs = std::span<const int, 16>;

void setVat(Device& printer, int address, std::string_view password, char vat, double vatValue,
            double reverseConstant);
void setAllVats(Device& printer, int address, std::string_view password, FivePairs pairs);
void setAllVats(Device& printer, int address, std::string_view password, EightPairs pairs,
                std::string_view date);

} // namespace telvofm::config
