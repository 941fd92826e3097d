// Items: sold, taken back from the receipt, returned from an earlier one, and negative.
#include "virtual_printer/fiscal/deciders.h"
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

Refusal checkItem(const Line& item, const Settings& settings)
{
    if (item.text.empty()) {
        return Refusal::badText;
    }
    if (const Refusal refusal = checkVat(settings, item.vat); refusal != Refusal::none) {
        return refusal;
    }
    if (item.quantity <= 0) {
        return Refusal::valueOutOfRange;
    }
    if (item.sum < 0 || item.unitPrice < 0) {
        return Refusal::wrongSign;
    }
    return fitsTogether(item.sum, item.quantity, item.unitPrice) ? Refusal::none : Refusal::wrongTotal;
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

Refusal sellItem(Draft& draft, const Fields& fields)
{
    Line item = readItem(fields, Line::Kind::item);
    Refusal refusal = checkItem(item, *draft.state().settings);
    if (refusal == Refusal::none) {
        refusal = addToReceipt(draft, std::move(item));
    }
    if (refusal == Refusal::none) {
        draft.receipt().lastItem = static_cast<int>(draft.receipt().document.lines.size()) - 1;
    }
    return refusal;
}

Refusal voidItem(Draft& draft, const Fields& fields)
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
        if (const Refusal refusal = addToReceipt(draft, std::move(line)); refusal != Refusal::none) {
            return refusal;
        }
    }
    // What was returned does not count against it: without the item the receipt would have been legal as
    // well.
    const Document& receipt = draft.state().receipt->document;
    return sumUnder(receipt, wanted.vat) + returnedUnder(receipt, wanted.vat) < 0 ? Refusal::vatBelowZero
                                                                                  : Refusal::none;
}

Refusal returnItem(Draft& draft, const Fields& fields)
{
    Line item = readItem(fields, Line::Kind::itemReturn);
    item.right = fields.text(receiptNumber);
    if (const Refusal refusal = checkItem(item, *draft.state().settings); refusal != Refusal::none) {
        return refusal;
    }
    if (item.right.empty()) {
        return Refusal::badText;
    }
    item.sum = -item.sum;
    return addToReceipt(draft, std::move(item));
}

Refusal sellNegativeItem(Draft& draft, const Fields& fields)
{
    Line item = readItem(fields, Line::Kind::itemNegative);
    Refusal refusal = checkItem(item, *draft.state().settings);
    if (refusal == Refusal::none) {
        item.sum = -item.sum;
        refusal = addToReceipt(draft, item);
    }
    return refusal == Refusal::none ? checkTakenAway(draft.state().receipt->document, item.vat) : refusal;
}

} // namespace virtual_printer
