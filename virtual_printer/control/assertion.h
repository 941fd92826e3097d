// What a test expects of a printer, held against what it has received, executed, acknowledged and committed:
// each by itself, because the trouble of a till lies between them.
#pragma once

#include "virtual_printer/control/controlled_printer.h"

#include <string>
#include <vector>

namespace virtual_printer {

// {"received": [{"name": "payment", "count": 2}], "executed": ..., "acknowledged": ...,
//  "committed": [{"kind": "receipt", "total": "12.50"}], "repeated": 0, "situation": "idle", "since": {...}}
//
// Each entry of received, executed and acknowledged is a part of an exchange as the trace shows it, its
// fields by name, and how many there are of it, 1 when it does not say. `committed` are the documents
// themselves, in their order: of the kinds that it names these and no others, of all kinds when it is empty.
// `repeated` counts the requests that repeat an earlier one. Empty when all is so; otherwise a sentence for
// each difference. Throws ControlRefusal: it is not understood, or asks for what the trace no longer has.
std::vector<std::string> check(const Json& assertion, const ControlledPrinter& printer);

} // namespace virtual_printer
