// What a line of a document looks like on the paper: lines of `columns` characters in UTF-8.
#pragma once

#include "virtual_printer/fiscal/draft.h"
#include "virtual_printer/fiscal/settings.h"

#include <string>
#include <vector>

namespace virtual_printer {

// Several lines where one does not suffice; codes and pictures in block characters where they fit.
std::vector<std::string> layout(const Line& line, std::size_t columns);
// A whole document as the journal gives it, in UTF-8, lines ended by 0D 0A.
std::string textOf(const Document& document, std::size_t columns);
// The entry of a closure in extracts of the fiscal memory.
std::vector<Line> linesOf(const Closure& closure);
std::string textOf(const Closure& closure, std::size_t columns);

// The sums of a day, of a closure or of several, as lines.
std::vector<Line> linesOf(const Sums& sums, const ByPayment& drawer, const PaymentNames& names);

} // namespace virtual_printer
