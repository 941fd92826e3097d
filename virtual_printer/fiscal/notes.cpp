// What a receipt carries beside its lines: who buys and sells, numbers to find it by, codes.
#include "virtual_printer/fiscal/deciders.h"
#include "virtual_printer/fiscal/printing.h"
#include "virtual_printer/fiscal/receipt_lines.h"
#include "virtual_printer/paper/codes.h"

#include <utility>

namespace virtual_printer {
namespace {

Refusal note(Draft& draft, std::string title, std::string value)
{
    if (value.empty()) {
        return Refusal::badText;
    }
    return addToReceipt(draft,
                        {.kind = Line::Kind::note, .text = std::move(title), .right = std::move(value)});
}

bool isLetterOrDigit(char letter)
{
    return (letter >= 'A' && letter <= 'Z') || (letter >= '0' && letter <= '9');
}

} // namespace

Refusal setClient(Draft& draft, const Fields& fields)
{
    constexpr int largestType = 9;
    if (fields.whole(1) < 0 || fields.whole(1) > largestType) {
        return Refusal::valueOutOfRange;
    }
    return note(draft, "Client", fields.text(0));
}

Refusal setInvoiceNumber(Draft& draft, const Fields& fields)
{
    draft.receipt().document.invoice = fields.text(0);
    return note(draft, "Invoice", fields.text(0));
}

Refusal setTransaction(Draft& draft, const Fields& fields)
{
    draft.receipt().document.transaction = fields.text(0);
    return note(draft, "Transaction", fields.text(0));
}

Refusal setSeller(Draft& draft, const Fields& fields)
{
    if (!isLetterOrDigit(fields.letter(1))) {
        return Refusal::valueOutOfRange;
    }
    return note(draft, "Seller", fields.text(0));
}

Refusal setVatExemption(Draft& draft, const Fields& fields)
{
    if (!isLetterOrDigit(fields.letter(0))) {
        return Refusal::valueOutOfRange;
    }
    return note(draft, "Without VAT, reason", {fields.letter(0)});
}

Refusal correctDocument(Draft& draft, const Fields& fields)
{
    return note(draft, "Correction of error", fields.text(0));
}

Refusal setV48(Draft& draft, const Fields& fields)
{
    if (!isLetterOrDigit(fields.letter(1))) {
        return Refusal::valueOutOfRange;
    }
    draft.settings().others["V48"] = fields.letter(1);
    return Refusal::none;
}

Refusal setFreeIdentifier(Draft& draft, const Fields& fields)
{
    const std::string text = fields.text(1);
    if (fields.whole(0) != 0 && fields.whole(0) != 1) {
        return Refusal::valueOutOfRange;
    }
    draft.settings().others["Free ID"] = text;
    if (fields.whole(0) == 0) {
        return Refusal::none;
    }
    if (draft.state().receipt) {
        return note(draft, "ID", text);
    }
    if (text.empty()) {
        return Refusal::badText;
    }
    draft.print({.kind = Line::Kind::note, .text = "ID", .right = text});
    return Refusal::none;
}

Refusal printBarCode(Draft& draft, const Fields& fields)
{
    const int kind = fields.whole(0);
    const std::string& text = fields.raw(1);
    if (!drawBarCode(kind, text, draft.state().settings->barCode)) {
        return Refusal::badCode;
    }
    return printHere(draft, {.kind = Line::Kind::barCode, .text = text, .number = kind});
}

} // namespace virtual_printer
