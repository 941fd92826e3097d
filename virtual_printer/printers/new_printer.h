// What a printer is like that has no memory yet.
#pragma once

#include "virtual_printer/fiscal/state.h"

namespace virtual_printer {

// Fiscalized and set up: a till can sell as soon as the day is open.
State readyToSell();
// In training, without VAT rates, and with cash as its only payment.
State factoryNew();

} // namespace virtual_printer
