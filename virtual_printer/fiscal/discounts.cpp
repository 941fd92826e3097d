// Discounts and surcharges on an item or the subtotal.
#include "virtual_printer/fiscal/deciders.h"
#include "virtual_printer/fiscal/receipt_lines.h"
#include "virtual_printer/fiscal/subtotal_shares.h"
#include "virtual_printer/fiscal/vat_table.h"

#include <algorithm>
#include <cstdlib>

namespace virtual_printer {
namespace {

enum DiscountField : std::size_t
{
    description = 1,
    operation,
    value
};

enum class Operation
{
    discount,
    percentDiscount,
    surcharge,
    percentSurcharge
};

bool isSurcharge(Operation kind)
{
    return kind == Operation::surcharge || kind == Operation::percentSurcharge;
}

bool isPercent(Operation kind)
{
    return kind == Operation::percentDiscount || kind == Operation::percentSurcharge;
}

std::string titleOf(const Fields& fields)
{
    std::string title = fields.text(description);
    if (title.empty()) {
        title = isSurcharge(Operation{fields.whole(operation)}) ? "Surcharge" : "Discount";
    }
    return title;
}

// What the discount brings when it is on `base`: negative, or positive for a surcharge.
Refusal readDiscount(const Fields& fields, Cents base, Cents& brings)
{
    constexpr Cents wholePercent = 10'000; // in hundredths of a percent
    if (fields.whole(operation) < 0 ||
        fields.whole(operation) > static_cast<int>(Operation::percentSurcharge)) {
        return Refusal::unknownOperation;
    }
    const Operation kind{fields.whole(operation)};
    const Cents given = fields.money(value);
    if (given < 0) {
        return Refusal::wrongSign;
    }
    if (given == 0 || (isPercent(kind) && given > wholePercent)) {
        return Refusal::valueOutOfRange;
    }
    const Cents size = isPercent(kind) ? scaled(base, given, wholePercent) : given;
    if (!isSurcharge(kind) && size > base) {
        return Refusal::discountTooLarge;
    }
    brings = isSurcharge(kind) ? size : -size;
    return Refusal::none;
}

// Whether a till that says what is left agrees; 0 says nothing.
Refusal checkResult(Cents said, Cents result)
{
    return said == 0 || std::abs(said - result) <= 1 ? Refusal::none : Refusal::wrongTotal;
}

// What the item brings with the discounts that are on it; nothing stands behind them.
Cents sumOfLast(const Receipt& receipt)
{
    Cents sum = 0;
    for (auto line = receipt.document.lines.begin() + receipt.lastItem; line != receipt.document.lines.end();
         ++line) {
        sum += line->sum;
    }
    return sum;
}

Refusal discountLastItem(Draft& draft, const Fields& fields, char vat, Cents saidResult)
{
    const Receipt& receipt = *draft.state().receipt;
    const int item = receipt.lastItem;
    if (item < 0) {
        return Refusal::nothingToDiscount;
    }
    const char ofItem = receipt.document.lines[static_cast<std::size_t>(item)].vat;
    if (vat != 0 && vat != ofItem) {
        return Refusal::unknownVat;
    }
    const Cents base = sumOfLast(receipt);
    Cents brings = 0;
    Refusal refusal = readDiscount(fields, base, brings);
    if (refusal == Refusal::none) {
        refusal = checkResult(saidResult, base + brings);
    }
    if (refusal != Refusal::none) {
        return refusal;
    }
    refusal = addToReceipt(draft, {.kind = Line::Kind::discount,
                                   .text = titleOf(fields),
                                   .vat = ofItem,
                                   .number = 1, // on the item in front of it
                                   .sum = brings});
    draft.receipt().lastItem = item; // another one may follow
    return refusal;
}

Refusal discountWhole(Draft& draft, const Fields& fields, char vat, Cents saidResult)
{
    const Document& before = draft.state().receipt->document;
    if (vat != 0) {
        if (const Refusal refusal = checkVat(*draft.state().settings, vat); refusal != Refusal::none) {
            return refusal;
        }
    }
    const Cents base = vat == 0 ? before.total : sumUnder(before, vat);
    if (base <= 0) {
        return Refusal::nothingToDiscount;
    }
    Cents brings = 0;
    Refusal refusal = readDiscount(fields, base, brings);
    if (refusal == Refusal::none) {
        refusal = checkResult(saidResult, base + brings);
    }
    if (refusal != Refusal::none) {
        return refusal;
    }
    const ByVat shares = vat == 0 ? shareOut(brings, before.byVat) : ByVat{{vat, brings}};
    for (const auto& [letter, share] : shares) {
        refusal = addToReceipt(
            draft, {.kind = Line::Kind::discount, .text = titleOf(fields), .vat = letter, .sum = share});
        if (refusal != Refusal::none) {
            return refusal;
        }
    }
    return brings < 0 && draft.state().receipt->document.total < 0 ? Refusal::totalWouldBeNegative
                                                                   : Refusal::none;
}

} // namespace

Refusal discountItem(Draft& draft, const Fields& fields)
{
    return discountLastItem(draft, fields, fields.letter(value + 1), 0);
}

Refusal discountItemWithTotal(Draft& draft, const Fields& fields)
{
    return discountLastItem(draft, fields, fields.letter(value + 1), fields.money(value + 2));
}

Refusal printSubtotal(Draft& draft, const Fields& fields)
{
    if (fields.whole(operation) != 0) {
        return Refusal::unknownOperation;
    }
    std::string title = fields.text(description);
    if (title.empty()) {
        title = "Subtotal";
    }
    return addToReceipt(draft, {.kind = Line::Kind::subtotal,
                                .text = std::move(title),
                                .sum = draft.state().receipt->document.total});
}

Refusal discountSubtotal(Draft& draft, const Fields& fields)
{
    return discountWhole(draft, fields, fields.letter(value + 1), 0);
}

// Here the letter stands behind the total; in the discount of an item it stands in front of it. This is
// meant.
Refusal discountSubtotalWithTotal(Draft& draft, const Fields& fields)
{
    return discountWhole(draft, fields, fields.letter(value + 2), fields.money(value + 1));
}

} // namespace virtual_printer
