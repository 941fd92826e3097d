// Discounts and surcharges on an item or the subtotal.
#include "virtual_printer/fiscal/deciders.h"
#include "virtual_printer/fiscal/ranges.h"
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
Verdict readDiscount(const Fields& fields, Cents base, Cents& brings)
{
    constexpr Cents wholePercent = 10'000; // in hundredths of a percent
    if (Verdict verdict = checkRange(fields, operation, 0, static_cast<int>(Operation::percentSurcharge),
                                     Refusal::unknownOperation);
        verdict != Refusal::none) {
        return verdict;
    }
    const Operation kind{fields.whole(operation)};
    const Cents given = fields.money(value);
    if (given < 0) {
        return fields.refused(Refusal::wrongSign, value, "no amount below zero");
    }
    if (given == 0 || (isPercent(kind) && given > wholePercent)) {
        return fields.refused(Refusal::valueOutOfRange, value,
                              isPercent(kind) ? "0.01 to 100.00 percent" : "at least 0.01");
    }
    const Cents size = isPercent(kind) ? scaled(base, given, wholePercent) : given;
    if (!isSurcharge(kind) && size > base) {
        return {Refusal::discountTooLarge, "It is on " + formatCents(base) + "."};
    }
    brings = isSurcharge(kind) ? size : -size;
    return Refusal::none;
}

// The letter may be left out.
Verdict checkGivenVat(const Draft& draft, char vat)
{
    return vat == 0 ? Refusal::none : checkVat(*draft.state().settings, vat);
}

// Whether a till that says what is left agrees; 0 says nothing.
Verdict checkResult(Cents said, Cents result)
{
    return said == 0 || std::abs(said - result) <= 1
               ? Verdict()
               : Verdict(Refusal::wrongTotal, "Behind it " + formatCents(result) + " is left.");
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

Verdict discountLastItem(Draft& draft, const Fields& fields, char vat, Cents saidResult)
{
    const Receipt& receipt = *draft.state().receipt;
    const int item = receipt.lastItem;
    if (item < 0) {
        return Refusal::nothingToDiscount;
    }
    const char ofItem = receipt.document.lines[static_cast<std::size_t>(item)].vat;
    if (Verdict verdict = checkGivenVat(draft, vat); verdict != Refusal::none) {
        return verdict;
    }
    if (vat != 0 && vat != ofItem) {
        return {Refusal::nothingToDiscount, std::string("The item is under ") + ofItem + "."};
    }
    const Cents base = sumOfLast(receipt);
    if (base <= 0) {
        return Refusal::nothingToDiscount;
    }
    Cents brings = 0;
    Verdict verdict = readDiscount(fields, base, brings);
    if (verdict == Refusal::none) {
        verdict = checkResult(saidResult, base + brings);
    }
    if (verdict != Refusal::none) {
        return verdict;
    }
    verdict = addToReceipt(draft, {.kind = Line::Kind::discount,
                                   .text = titleOf(fields),
                                   .vat = ofItem,
                                   .number = 1, // on the item in front of it
                                   .sum = brings});
    draft.receipt().lastItem = item; // another one may follow
    return verdict;
}

Verdict discountWhole(Draft& draft, const Fields& fields, char vat, Cents saidResult)
{
    const Document& before = draft.state().receipt->document;
    if (Verdict verdict = checkGivenVat(draft, vat); verdict != Refusal::none) {
        return verdict;
    }
    const Cents base = vat == 0 ? before.total : sumUnder(before, vat);
    if (base <= 0) {
        return Refusal::nothingToDiscount;
    }
    Cents brings = 0;
    Verdict verdict = readDiscount(fields, base, brings);
    if (verdict == Refusal::none) {
        verdict = checkResult(saidResult, base + brings);
    }
    if (verdict != Refusal::none) {
        return verdict;
    }
    const ByVat shares = vat == 0 ? shareOut(brings, before.byVat) : ByVat{{vat, brings}};
    for (const auto& [letter, share] : shares) {
        verdict = addToReceipt(
            draft, {.kind = Line::Kind::discount, .text = titleOf(fields), .vat = letter, .sum = share});
        if (verdict != Refusal::none) {
            return verdict;
        }
    }
    return brings < 0 && draft.state().receipt->document.total < 0 ? Refusal::totalWouldBeNegative
                                                                   : Refusal::none;
}

} // namespace

Verdict discountItem(Draft& draft, const Fields& fields)
{
    return discountLastItem(draft, fields, fields.letter(value + 1), 0);
}

Verdict discountItemWithTotal(Draft& draft, const Fields& fields)
{
    return discountLastItem(draft, fields, fields.letter(value + 1), fields.money(value + 2));
}

Verdict printSubtotal(Draft& draft, const Fields& fields)
{
    if (Verdict verdict = checkRange(fields, operation, 0, 0, Refusal::unknownOperation);
        verdict != Refusal::none) {
        return verdict;
    }
    std::string title = fields.text(description);
    if (title.empty()) {
        title = "Subtotal";
    }
    return addToReceipt(draft, {.kind = Line::Kind::subtotal,
                                .text = std::move(title),
                                .sum = draft.state().receipt->document.total});
}

Verdict discountSubtotal(Draft& draft, const Fields& fields)
{
    return discountWhole(draft, fields, fields.letter(value + 1), 0);
}

// Here the letter stands behind the total; in the discount of an item it stands in front of it. This is
// meant.
Verdict discountSubtotalWithTotal(Draft& draft, const Fields& fields)
{
    return discountWhole(draft, fields, fields.letter(value + 2), fields.money(value + 1));
}

} // namespace virtual_printer
