// Where lines go that a till may print at any time: onto the receipt that is open, or just onto the paper.
#pragma once

#include "virtual_printer/fiscal/draft.h"
#include "virtual_printer/fiscal/verdict.h"

namespace virtual_printer {

// Refused when the open receipt has no room for the line.
Verdict printHere(Draft& draft, Line line);

} // namespace virtual_printer
