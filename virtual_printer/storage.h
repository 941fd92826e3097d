// What the printer remembers, as long as it runs.
#pragma once

#include "virtual_printer/fiscal_memory.h"
#include "virtual_printer/journal.h"

#include <map>
#include <string>

namespace virtual_printer {

struct Storage
{
    Journal journal;
    FiscalMemory fiscalMemory;
    std::map<std::string, std::string> settings;

    // The settings, one a line.
    [[nodiscard]] std::string settingsText() const;
};

} // namespace virtual_printer
