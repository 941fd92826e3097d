// What a receipt carries beside its lines: who buys and sells, numbers to find it by, codes.
#include "virtual_printer/fiscal/deciders.h"
#include "virtual_printer/fiscal/printing.h"
#include "virtual_printer/fiscal/ranges.h"
#include "virtual_printer/fiscal/receipt_lines.h"
#include "virtual_printer/paper/codes.h"

#include <utility>

namespace virtual_printer {
namespace {

Verdict note(Draft& draft, std::string title, std::string value)
{
    return addToReceipt(draft,
                        {.kind = Line::Kind::note, .text = std::move(title), .right = std::move(value)});
}

// The text of a field, which must not be empty.
Verdict noteText(Draft& draft, std::string title, const Fields& fields, std::size_t index)
{
    Verdict verdict = checkNotEmpty(fields, index);
    return verdict == Refusal::none ? note(draft, std::move(title), fields.text(index)) : verdict;
}

Verdict checkLetterOrDigit(const Fields& fields, std::size_t index)
{
    const char letter = fields.letter(index);
    return (letter >= 'A' && letter <= 'Z') || (letter >= '0' && letter <= '9')
               ? Verdict()
               : fields.refused(Refusal::valueOutOfRange, index, "A to Z or 0 to 9");
}

} // namespace

Verdict setClient(Draft& draft, const Fields& fields)
{
    constexpr int largestType = 9;
    Verdict verdict = checkRange(fields, 1, 0, largestType);
    return verdict == Refusal::none ? noteText(draft, "Client", fields, 0) : verdict;
}

Verdict setInvoiceNumber(Draft& draft, const Fields& fields)
{
    draft.receipt().document.invoice = fields.text(0);
    return noteText(draft, "Invoice", fields, 0);
}

Verdict setTransaction(Draft& draft, const Fields& fields)
{
    draft.receipt().document.transaction = fields.text(0);
    return noteText(draft, "Transaction", fields, 0);
}

Verdict setSeller(Draft& draft, const Fields& fields)
{
    Verdict verdict = checkLetterOrDigit(fields, 1);
    return verdict == Refusal::none ? noteText(draft, "Seller", fields, 0) : verdict;
}

Verdict setVatExemption(Draft& draft, const Fields& fields)
{
    Verdict verdict = checkLetterOrDigit(fields, 0);
    return verdict == Refusal::none ? note(draft, "Without VAT, reason", {fields.letter(0)}) : verdict;
}

Verdict correctDocument(Draft& draft, const Fields& fields)
{
    return noteText(draft, "Correction of error", fields, 0);
}

Verdict setV48(Draft& draft, const Fields& fields)
{
    Verdict verdict = checkLetterOrDigit(fields, 1);
    if (verdict == Refusal::none) {
        draft.settings().others["V48"] = fields.letter(1);
    }
    return verdict;
}

Verdict setFreeIdentifier(Draft& draft, const Fields& fields)
{
    const std::string text = fields.text(1);
    const bool isPrinted = fields.whole(0) != 0;
    Verdict verdict =
        firstOf({checkRange(fields, 0, 0, 1), isPrinted ? checkNotEmpty(fields, 1) : Verdict()});
    if (verdict != Refusal::none) {
        return verdict;
    }
    draft.settings().others["Free ID"] = text;
    return isPrinted ? printHere(draft, {.kind = Line::Kind::note, .text = "ID", .right = text}) : verdict;
}

Verdict printBarCode(Draft& draft, const Fields& fields)
{
    const int kind = fields.whole(0);
    const std::string& text = fields.raw(1);
    if (!drawBarCode(kind, text, draft.state().settings->barCode)) {
        return Refusal::badCode;
    }
    return printHere(draft, {.kind = Line::Kind::barCode, .text = text, .number = kind});
}

} // namespace virtual_printer
