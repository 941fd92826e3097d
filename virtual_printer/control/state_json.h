// What a printer stands at, as the control interface shows it.
#pragma once

#include "virtual_printer/control/controlled_printer.h"

#include <string_view>

namespace virtual_printer {

// "idle", as docs/virtual-printer.md names the situations.
std::string_view situationName(const Printer& printer);

Json stateToJson(const ControlledPrinter& printer);
Json clockToJson(const ControlledPrinter& printer);
Json hardwareToJson(const Hardware& hardware);
Json totalsToJson(const Printer& printer);
Json toJson(const Position& position);

} // namespace virtual_printer
