// Which part of its memories a request asks for. Commands that print an extract and commands that read it
// select alike.
#pragma once

#include "virtual_printer/device_language.h"
#include "virtual_printer/refusal.h"
#include "virtual_printer/storage.h"

#include <string>

namespace virtual_printer {

struct Extract
{
    Refusal refusal = Refusal::none;
    std::string text; // empty when nothing lies within the bounds
};

// The journal: whole, by the number of its day, by dates or by the numbers of its documents.
Extract extractFromJournal(const Journal& journal, const Request& request);
// The closures, by dates or by numbers.
Extract extractFromFiscalMemory(const FiscalMemory& memory, const Request& request);
// The numbers of the receipts that something identifies, one a line.
Extract findReceipts(const Journal& journal, const Request& request);

} // namespace virtual_printer
