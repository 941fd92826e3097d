// What vouchers and down payments take off the receipt.
#include "virtual_printer/fiscal/deciders.h"
#include "virtual_printer/fiscal/receipt_lines.h"
#include "virtual_printer/fiscal/vat_table.h"

#include <utility>

namespace virtual_printer {
namespace {

// What a voucher or a down payment takes off: amount times price.
Refusal takeOff(Draft& draft, const Fields& fields, Line line)
{
    enum TakeOffField : std::size_t
    {
        title,
        amount,
        vat,
        price
    };
    constexpr Cents one = 100;
    line.text = fields.text(title);
    line.vat = fields.letter(vat);
    if (line.text.empty()) {
        return Refusal::badText;
    }
    if (const Refusal refusal = checkVat(*draft.state().settings, line.vat); refusal != Refusal::none) {
        return refusal;
    }
    if (fields.money(amount) < 0 || fields.money(price) < 0) {
        return Refusal::wrongSign;
    }
    const Cents size = scaled(fields.money(amount), fields.money(price), one);
    if (size == 0) {
        return Refusal::valueOutOfRange;
    }
    if (size > sumUnder(draft.state().receipt->document, line.vat)) {
        return Refusal::discountTooLarge;
    }
    line.sum = -size;
    const char letter = line.vat;
    const Refusal refusal = addToReceipt(draft, std::move(line));
    return refusal == Refusal::none ? checkTakenAway(draft.state().receipt->document, letter) : refusal;
}

} // namespace

Refusal redeemVoucher(Draft& draft, const Fields& fields)
{
    constexpr std::size_t voucherNumber = 4;
    return takeOff(draft, fields, {.kind = Line::Kind::voucher, .right = fields.text(voucherNumber)});
}

Refusal deductDownPayment(Draft& draft, const Fields& fields)
{
    return takeOff(draft, fields, {.kind = Line::Kind::downPayment});
}

} // namespace virtual_printer
