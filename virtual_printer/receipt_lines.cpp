// The lines of an open receipt: what is sold, taken back, taken off, noted and paid.
#include "virtual_printer/fiscal_state.h"
#include "virtual_printer/money.h"

#include <algorithm>

namespace virtual_printer {
namespace {

constexpr int cents = 2;

// The fields of an item request.
enum ItemField
{
    itemName = 1,
    itemTotal,
    itemVat,
    itemAmount,
    itemUnitPrice,
    itemUnit,
    itemFieldCount
};

std::string trimmed(std::string text)
{
    text.erase(text.find_last_not_of(' ') + 1);
    return text;
}

} // namespace

Refusal FiscalState::addItem(const Request& request, int sign)
{
    if (const Refusal refusal = requireOpen(); refusal != Refusal::none) {
        return refusal;
    }
    if (request.fields.size() < itemFieldCount) {
        return Refusal::wrongFields;
    }
    const auto sum = parseDecimal(request.fields[itemTotal], cents);
    const auto amount = parseDecimal(request.fields[itemAmount], 3);
    const auto price = parseDecimal(request.fields[itemUnitPrice], cents);
    if (!sum || !amount || !price) {
        return Refusal::badNumber;
    }
    const char vat = request.fields[itemVat].empty() ? ' ' : request.fields[itemVat].front();
    const Item item = {trimmed(request.fields[itemName]), sign * *sum, vat};
    paper.print(item.name);
    paper.print("  " + request.fields[itemAmount] + " " + trimmed(request.fields[itemUnit]) + " x " +
                    formatCents(*price),
                formatCents(item.total) + " " + vat);
    items.push_back(item);
    totals[vat] += item.total;
    total += item.total;
    return Refusal::none;
}

Refusal FiscalState::voidItem(const Request& request)
{
    if (const Refusal refusal = requireOpen(); refusal != Refusal::none) {
        return refusal;
    }
    if (request.fields.size() < itemFieldCount) {
        return Refusal::wrongFields;
    }
    const auto sum = parseDecimal(request.fields[itemTotal], cents);
    if (!sum) {
        return Refusal::badNumber;
    }
    const std::string name = trimmed(request.fields[itemName]);
    const auto sold = std::find_if(items.begin(), items.end(),
                                   [&](const Item& item) { return item.name == name && item.total == *sum; });
    if (sold == items.end()) {
        return Refusal::nothingToVoid;
    }
    const char vat = sold->vat;
    items.erase(sold);
    paper.print("VOID " + name, formatCents(-*sum) + " " + vat);
    totals[vat] -= *sum;
    total -= *sum;
    return Refusal::none;
}

Refusal FiscalState::addDiscount(const std::string& description, const std::string& value)
{
    if (const Refusal refusal = requireOpen(); refusal != Refusal::none) {
        return refusal;
    }
    const auto sum = parseDecimal(value, cents);
    if (!sum) {
        return Refusal::badNumber;
    }
    const char vat = items.empty() ? ' ' : items.back().vat;
    paper.print(description.empty() ? "Discount" : description, formatCents(-*sum) + " " + vat);
    totals[vat] -= *sum;
    total -= *sum;
    return Refusal::none;
}

Refusal FiscalState::printSubtotal()
{
    if (const Refusal refusal = requireOpen(); refusal != Refusal::none) {
        return refusal;
    }
    printTotal("Subtotal");
    return Refusal::none;
}

Refusal FiscalState::pay(const Request& request)
{
    enum
    {
        paymentSum = 2,
        paymentPayed,
        paymentRate,
        paymentDescription,
        paymentFieldCount
    };
    if (state == State::closed) {
        return Refusal::noReceipt;
    }
    if (request.fields.size() < paymentFieldCount) {
        return Refusal::wrongFields;
    }
    auto payed = parseDecimal(request.fields[paymentPayed], cents);
    if (!payed || !parseDecimal(request.fields[paymentSum], cents)) {
        return Refusal::badNumber;
    }
    if (state == State::open) {
        paper.rule('-');
        printTotal("TOTAL EUR");
        state = State::paying;
    }
    if (*payed == 0) {
        payed = std::max<std::int64_t>(total - paid, 0); // without a sum of its own it settles what is left
    }
    paid += *payed;
    paper.print(trimmed(request.fields[paymentDescription]), formatCents(*payed));
    return Refusal::none;
}

Refusal FiscalState::note(const std::string& text, std::string Document::*identifier)
{
    if (state == State::closed) {
        return Refusal::noReceipt;
    }
    paper.print(text);
    if (identifier != nullptr) {
        document.*identifier = text;
    }
    return Refusal::none;
}

Refusal FiscalState::requireOpen() const
{
    switch (state) {
    case State::closed:
        return Refusal::noReceipt;
    case State::paying:
        return Refusal::receiptIsBeingPaid;
    case State::open:
        break;
    }
    return Refusal::none;
}

void FiscalState::printTotal(std::string_view label)
{
    paper.print(label, formatCents(total));
}

} // namespace virtual_printer
