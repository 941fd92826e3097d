// What vouchers and down payments take off the receipt.
#include "virtual_printer/fiscal/deciders.h"
#include "virtual_printer/fiscal/ranges.h"
#include "virtual_printer/fiscal/receipt_lines.h"
#include "virtual_printer/fiscal/vat_table.h"

#include <utility>

namespace virtual_printer {
namespace {

// What a voucher or a down payment takes off: amount times price.
Verdict takeOff(Draft& draft, const Fields& fields, Line line)
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
    if (Verdict verdict =
            firstOf({checkNotEmpty(fields, title), checkVat(*draft.state().settings, line.vat)});
        verdict != Refusal::none) {
        return verdict;
    }
    if (fields.money(amount) < 0 || fields.money(price) < 0) {
        return fields.refused(Refusal::wrongSign, fields.money(amount) < 0 ? amount : price,
                              "no amount below zero");
    }
    const Cents size = scaled(fields.money(amount), fields.money(price), one);
    if (size == 0) {
        return {Refusal::valueOutOfRange, "Amount times price is at least 0.01."};
    }
    if (const Cents base = sumUnder(draft.state().receipt->document, line.vat); size > base) {
        return {Refusal::discountTooLarge, "It is on " + formatCents(base) + "."};
    }
    line.sum = -size;
    const char letter = line.vat;
    Verdict verdict = addToReceipt(draft, std::move(line));
    return verdict == Refusal::none ? checkTakenAway(draft.state().receipt->document, letter) : verdict;
}

} // namespace

Verdict redeemVoucher(Draft& draft, const Fields& fields)
{
    constexpr std::size_t voucherNumber = 4;
    return takeOff(draft, fields, {.kind = Line::Kind::voucher, .right = fields.text(voucherNumber)});
}

Verdict deductDownPayment(Draft& draft, const Fields& fields)
{
    return takeOff(draft, fields, {.kind = Line::Kind::downPayment});
}

} // namespace virtual_printer
