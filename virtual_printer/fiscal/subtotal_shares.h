// How a discount or surcharge on the whole receipt is shared over its VAT letters.
#pragma once

#include "virtual_printer/fiscal/document.h"

namespace virtual_printer {

// `amount` in proportion to the sums above zero, of which there is one; what is left of a cent goes to the
// largest. No letter gives more than it has: where the largest has no room, the next one gives.
ByVat shareOut(Cents amount, const ByVat& sums);

} // namespace virtual_printer
