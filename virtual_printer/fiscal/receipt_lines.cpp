#include "virtual_printer/fiscal/receipt_lines.h"

#include <algorithm>
#include <cstdlib>

namespace virtual_printer {

bool countsInTotal(Line::Kind kind)
{
    switch (kind) {
    case Line::Kind::item:
    case Line::Kind::itemVoid:
    case Line::Kind::itemReturn:
    case Line::Kind::itemNegative:
    case Line::Kind::discount:
    case Line::Kind::voucher:
    case Line::Kind::downPayment:
        return true;
    default:
        return false;
    }
}

bool hasSales(const Document& document)
{
    return std::any_of(document.lines.begin(), document.lines.end(),
                       [](const Line& line) { return countsInTotal(line.kind); });
}

Cents returnedUnder(const Document& receipt, char vat)
{
    Cents sum = 0;
    for (const Line& line : receipt.lines) {
        if (line.kind == Line::Kind::itemReturn && line.vat == vat) {
            sum -= line.sum;
        }
    }
    return sum;
}

Cents sumUnder(const Document& receipt, char vat)
{
    const auto found = receipt.byVat.find(vat);
    return found == receipt.byVat.end() ? 0 : found->second;
}

Verdict addToReceipt(Draft& draft, Line line)
{
    Document& document = draft.receipt().document;
    if (document.lines.size() >= mostReceiptLines) {
        return Refusal::receiptTooLong;
    }
    if (countsInTotal(line.kind)) {
        Cents& ofLetter = document.byVat[line.vat];
        ofLetter += line.sum;
        document.total += line.sum;
        if (std::abs(ofLetter) > largestReceiptSum || std::abs(document.total) > largestReceiptSum) {
            return {Refusal::valueOutOfRange, "Total and VAT sums of a receipt are at most " +
                                                  formatCents(largestReceiptSum) + " to either side."};
        }
    }
    draft.printInReceipt(std::move(line));
    return Refusal::none;
}

void printTotal(Draft& draft)
{
    draft.printInReceipt({.kind = Line::Kind::rule, .text = "-"});
    draft.printInReceipt(
        {.kind = Line::Kind::total, .text = "TOTAL EUR", .sum = draft.state().receipt->document.total});
}

Verdict checkTakenAway(const Document& receipt, char vat)
{
    if (sumUnder(receipt, vat) < 0) {
        return Refusal::vatBelowZero;
    }
    return receipt.total < 0 ? Refusal::totalWouldBeNegative : Refusal::none;
}

} // namespace virtual_printer
