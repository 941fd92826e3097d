// The lines of the open receipt: how they come onto it, and what they add up to.
#pragma once

#include "virtual_printer/fiscal/draft.h"
#include "virtual_printer/fiscal/verdict.h"

namespace virtual_printer {

// Room for lines before the payment; the receipt's head counts.
inline constexpr std::size_t mostReceiptLines = 500;
// The largest sum of a receipt and of a VAT letter in it, so that the fields of a payment have room for it.
inline constexpr Cents largestReceiptSum = 999'999'999;

// Whether lines of this kind make up the total.
bool countsInTotal(Line::Kind kind);
bool hasSales(const Document& document);
// What came back under this VAT letter; not below zero.
Cents returnedUnder(const Document& receipt, char vat);
// 0 when nothing was sold under the letter.
Cents sumUnder(const Document& receipt, char vat);

// A line of any kind on the open receipt, which counts in the total when its kind does. Refused when the
// receipt is full, or the sum too large.
Verdict addToReceipt(Draft& draft, Line line);

// The total, with which payment begins.
void printTotal(Draft& draft);

// Of a negative item, a voucher and a down payment: whether the one that was added last has taken away more
// than there was.
Verdict checkTakenAway(const Document& receipt, char vat);

} // namespace virtual_printer
