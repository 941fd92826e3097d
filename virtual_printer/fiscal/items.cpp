// Items: sold, taken back from the receipt, returned from an earlier one, and negative.
#include "virtual_printer/fiscal/deciders.h"
#include "virtual_printer/fiscal/ranges.h"
#include "virtual_printer/fiscal/receipt_lines.h"
#include "virtual_printer/fiscal/vat_table.h"

#include <algorithm>
#include <cstdlib>

namespace virtual_printer {
namespace {

enum ItemField : std::size_t
{
    name = 1,
    total,
    vat,
    quantity,
    unitPrice,
    unit,
    receiptNumber
};

// Whether the total is quantity times price within one cent.
bool fitsTogether(Cents sum, Thousandths amount, Cents price)
{
    constexpr Thousandths one = 1000;
    return std::abs(sum * one - amount * price) <= one;
}

Line readItem(const Fields& fields, Line::Kind kind)
{
    Line line;
    line.kind = kind;
    line.text = fields.text(name);
    line.unit = fields.text(unit);
    line.vat = fields.letter(vat);
    line.quantity = fields.quantity(quantity);
    line.unitPrice = fields.money(unitPrice);
    line.sum = fields.money(total);
    return line;
}

Verdict checkItem(const Fields& fields, const Line& item, const Settings& settings)
{
    if (Verdict verdict = firstOf({checkNotEmpty(fields, name), checkVat(settings, item.vat)});
        verdict != Refusal::none) {
        return verdict;
    }
    if (item.quantity <= 0) {
        return fields.refused(Refusal::valueOutOfRange, quantity, "at least 0.001");
    }
    if (item.sum < 0 || item.unitPrice < 0) {
        return fields.refused(Refusal::wrongSign, item.sum < 0 ? total : unitPrice, "no amount below zero");
    }
    return fitsTogether(item.sum, item.quantity, item.unitPrice)
               ? Verdict()
               : fields.refused(Refusal::wrongTotal, total,
                                formatThousandths(item.quantity) + " x " + formatCents(item.unitPrice));
}

bool isSoldAs(const Line& line, const Line& wanted)
{
    return line.kind == Line::Kind::item && !line.isVoided && line.text == wanted.text &&
           line.sum == wanted.sum && line.vat == wanted.vat && line.quantity == wanted.quantity &&
           line.unitPrice == wanted.unitPrice;
}

// The item and the discounts on it, taken back.
std::vector<Line> takenBack(const std::vector<Line>& lines, std::size_t item)
{
    std::vector<Line> taken = {lines[item]};
    taken.front().kind = Line::Kind::itemVoid;
    for (std::size_t next = item + 1; next < lines.size(); ++next) {
        const Line& line = lines[next];
        if (line.kind == Line::Kind::discount && line.number == 1) {
            taken.push_back(line);
        } else if (line.kind != Line::Kind::powerLost) {
            break;
        }
    }
    for (Line& line : taken) {
        line.sum = -line.sum;
    }
    return taken;
}

} // namespace

Verdict sellItem(Draft& draft, const Fields& fields)
{
    Line item = readItem(fields, Line::Kind::item);
    Verdict verdict = checkItem(fields, item, *draft.state().settings);
    if (verdict == Refusal::none) {
        verdict = addToReceipt(draft, std::move(item));
    }
    if (verdict == Refusal::none) {
        draft.receipt().lastItem = static_cast<int>(draft.receipt().document.lines.size()) - 1;
    }
    return verdict;
}

Verdict voidItem(Draft& draft, const Fields& fields)
{
    const Line wanted = readItem(fields, Line::Kind::item);
    std::vector<Line>& lines = draft.receipt().document.lines;
    const auto found =
        std::find_if(lines.rbegin(), lines.rend(), [&](const Line& line) { return isSoldAs(line, wanted); });
    if (found == lines.rend()) {
        return Refusal::nothingToVoid;
    }
    std::vector<Line> taken =
        takenBack(lines, static_cast<std::size_t>(std::distance(found, lines.rend())) - 1);
    taken.front().right = fields.text(receiptNumber);
    found->isVoided = true;
    for (Line& line : taken) {
        if (Verdict verdict = addToReceipt(draft, std::move(line)); verdict != Refusal::none) {
            return verdict;
        }
    }
    // What was returned does not count against it: without the item the receipt would have been legal as
    // well.
    const Document& receipt = draft.state().receipt->document;
    return sumUnder(receipt, wanted.vat) + returnedUnder(receipt, wanted.vat) < 0 ? Refusal::vatBelowZero
                                                                                  : Refusal::none;
}

Verdict returnItem(Draft& draft, const Fields& fields)
{
    Line item = readItem(fields, Line::Kind::itemReturn);
    item.right = fields.text(receiptNumber);
    if (Verdict verdict =
            firstOf({checkItem(fields, item, *draft.state().settings), checkNotEmpty(fields, receiptNumber)});
        verdict != Refusal::none) {
        return verdict;
    }
    item.sum = -item.sum;
    return addToReceipt(draft, std::move(item));
}

Verdict sellNegativeItem(Draft& draft, const Fields& fields)
{
    Line item = readItem(fields, Line::Kind::itemNegative);
    Verdict verdict = checkItem(fields, item, *draft.state().settings);
    if (verdict == Refusal::none) {
        item.sum = -item.sum;
        verdict = addToReceipt(draft, item);
    }
    return verdict == Refusal::none ? checkTakenAway(draft.state().receipt->document, item.vat) : verdict;
}

} // namespace virtual_printer
