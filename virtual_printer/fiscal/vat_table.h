// The VAT rates at work: under which letters can be sold, and what part of a sum is VAT.
#pragma once

#include "virtual_printer/fiscal/document.h"
#include "virtual_printer/fiscal/refusal.h"
#include "virtual_printer/fiscal/settings.h"

#include <vector>

namespace virtual_printer {

// Whether the letter is one, and has a rate.
Refusal checkVat(const Settings& settings, char letter);

// What a sum with VAT is without it.
Cents withoutVat(Cents sum, int percent);

// A line for each letter of the sums.
std::vector<Line> vatTable(const ByVat& sums, const Settings& settings);

} // namespace virtual_printer
