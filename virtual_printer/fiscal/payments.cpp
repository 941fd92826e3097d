// Payments of the open receipt, their change, and the paying out of one that takes back more than it sells.
#include "virtual_printer/fiscal/cash.h"
#include "virtual_printer/fiscal/deciders.h"
#include "virtual_printer/fiscal/receipt_lines.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace virtual_printer {
namespace {

enum PaymentField : std::size_t
{
    paymentNumber = 1,
    receiptTotal,
    payedAmount,
    exchangeRate,
    paymentDescription,
    totalPayedAmount
};

constexpr std::int64_t even = 10'000; // the rate of a currency to itself
constexpr std::size_t mostLines = mostReceiptLines + 100;

Rate rateOf(const Fields& fields, const Settings& settings)
{
    Rate rate = fields.rate(exchangeRate);
    if (rate.tenThousandths == 0 && fields.whole(paymentNumber) == foreignCurrency) {
        rate = {settings.euroExchangeRate, false};
    }
    return rate.tenThousandths == 0 ? Rate{even, false} : rate;
}

Cents fromForeign(Cents paid, const Rate& rate)
{
    return rate.divides ? scaled(paid, even, rate.tenThousandths) : scaled(paid, rate.tenThousandths, even);
}

Cents toForeign(Cents value, const Rate& rate)
{
    return rate.divides ? scaled(value, rate.tenThousandths, even) : scaled(value, even, rate.tenThousandths);
}

struct Payment
{
    int type = 0;
    Cents value = 0;   // in the receipt's currency
    Cents foreign = 0; // as paid; 0 in the receipt's currency
    Cents change = 0;
    Rate rate;
};

// "1 = 0.0400 EUR", or "1 EUR = 25.0000" for a rate that divides.
std::string textOf(const Rate& rate)
{
    const std::string decimals = std::to_string(even + rate.tenThousandths % even).substr(1);
    const std::string number = std::to_string(rate.tenThousandths / even) + "." + decimals;
    return rate.divides ? "1 EUR = " + number : "1 = " + number + " EUR";
}

Payment readPayment(const Fields& fields, const Settings& settings, Cents due)
{
    const Rate rate = rateOf(fields, settings);
    const Cents paid = fields.money(payedAmount);
    Payment payment;
    payment.rate = rate;
    payment.type = fields.whole(paymentNumber);
    payment.value = paid == 0 ? due : fromForeign(paid, rate);
    if (rate.tenThousandths != even) {
        payment.foreign = paid == 0 ? toForeign(due, rate) : paid;
    }
    return payment;
}

// Whether the type takes as much as is given, and gives change where it is more than is due.
Verdict settle(Payment& payment, const PaymentType& type, const State& state)
{
    const Receipt& receipt = *state.receipt;
    const Cents due = receipt.due();
    if (std::abs(payment.value) > largestReceiptSum) {
        return {Refusal::valueOutOfRange,
                "A payment counts at most " + formatCents(largestReceiptSum) + " in the receipt's currency."};
    }
    if (payment.value == 0 || std::abs(payment.value) < type.minimum) {
        return {Refusal::paymentTooSmall,
                "It is at least " + formatCents(std::max<Cents>(type.minimum, 1)) + "."};
    }
    const auto inDrawer = [&](int ofType) {
        return contentOf(state.standing->drawer, ofType) + contentOf(receipt.document.byPayment, ofType) +
               (ofType == payment.type ? payment.value : 0);
    };
    if (std::abs(payment.value) > std::abs(due)) {
        if (due < 0 || !type.mayOverPay) {
            return {Refusal::overPayment, formatCents(due) + " is due."};
        }
        payment.change = payment.value - due;
    }
    if (const Cents left = inDrawer(payment.type); left < 0) {
        return missingInDrawer(state, payment.type, -payment.value, left - payment.value);
    }
    if (inDrawer(cash) < payment.change) {
        return {Refusal::drawerTooEmpty, "The change of " + formatCents(payment.change) +
                                             " is given in cash, of which " + formatCents(inDrawer(cash)) +
                                             " is there."};
    }
    return {};
}

void takeIn(Draft& draft, const Payment& payment, std::string title)
{
    if (!draft.state().receipt->isBeingPaid) {
        printTotal(draft);
    }
    Receipt& receipt = draft.receipt();
    receipt.isBeingPaid = true;
    receipt.paid += payment.value - payment.change;
    receipt.document.byPayment[payment.type] += payment.value;
    if (payment.foreign != 0) {
        draft.printInReceipt(
            {.kind = Line::Kind::pair, .text = "Exchange rate", .right = textOf(payment.rate)});
    }
    draft.printInReceipt({.kind = Line::Kind::payment,
                          .text = std::move(title),
                          .number = payment.type,
                          .sum = payment.value,
                          .foreign = payment.foreign});
    if (payment.change != 0) {
        receipt.document.byPayment[cash] -= payment.change;
        draft.printInReceipt({.kind = Line::Kind::change, .text = "Change", .sum = payment.change});
    }
}

// Whether a payment is wanted at all, and whether till and printer agree on what is due.
Verdict checkDue(const Receipt& receipt, const Fields& fields)
{
    if (!hasSales(receipt.document)) {
        return Refusal::nothingSold;
    }
    const Cents due = receipt.due();
    if (due == 0) {
        return Refusal::alreadyPaid;
    }
    if (receipt.document.lines.size() >= mostLines) {
        return Refusal::receiptTooLong;
    }
    if (fields.money(receiptTotal) != receipt.document.total && fields.money(receiptTotal) != due) {
        return {Refusal::paymentWrongTotal, "The receipt's total is " + formatCents(receipt.document.total) +
                                                ", and " + formatCents(due) + " is due."};
    }
    const Cents paid = fields.money(payedAmount);
    return (due > 0 && paid < 0) || (due < 0 && paid > 0)
               ? fields.refused(Refusal::wrongSign, payedAmount, "the sign of what is due")
               : Verdict();
}

} // namespace

Verdict pay(Draft& draft, const Fields& fields)
{
    const State& state = draft.state();
    if (Verdict verdict = checkDue(*state.receipt, fields); verdict != Refusal::none) {
        return verdict;
    }
    const auto type = state.settings->payments.find(fields.whole(paymentNumber));
    if (type == state.settings->payments.end()) {
        return Refusal::unknownPayment;
    }
    Payment payment = readPayment(fields, *state.settings, state.receipt->due());
    if (Verdict verdict = settle(payment, type->second, state); verdict != Refusal::none) {
        return verdict;
    }
    std::string title = fields.text(paymentDescription);
    if (title.empty()) {
        title = type->second.name;
    }
    takeIn(draft, payment, std::move(title));
    return Refusal::none;
}

// The sum that the till says is what was given so far, the change not taken off.
Verdict payWithTotal(Draft& draft, const Fields& fields)
{
    const Cents before = draft.state().receipt->paid;
    if (Verdict verdict = pay(draft, fields); verdict != Refusal::none) {
        return verdict;
    }
    const std::vector<Line>& lines = draft.state().receipt->document.lines;
    const Line& payment = lines.back().kind == Line::Kind::change ? lines[lines.size() - 2] : lines.back();
    const Cents said = fields.money(totalPayedAmount);
    const Cents given = before + payment.sum;
    return said == 0 || said == given ? Verdict()
                                      : Verdict(Refusal::paymentWrongTotal,
                                                "With this payment " + formatCents(given) + " is given.");
}

} // namespace virtual_printer
