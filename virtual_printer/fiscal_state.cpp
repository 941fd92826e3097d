#include "virtual_printer/fiscal_state.h"

#include "virtual_printer/money.h"
#include "virtual_printer/reports.h"

#include <utility>

namespace virtual_printer {
namespace {

constexpr int cents = 2;

} // namespace

Refusal FiscalState::beginDay()
{
    dayIsOpen = true;
    return Refusal::none;
}

Refusal FiscalState::closeDay()
{
    if (state != State::closed) {
        return Refusal::receiptIsOpen;
    }
    FiscalMemory& memory = storage.fiscalMemory;
    Document closure = {.kind = Document::Kind::closure,
                        .number = memory.nextClosure(),
                        .day = memory.nextClosure(),
                        .moment = now(),
                        .text = {},
                        .invoice = {},
                        .transaction = {}};
    paper.takeCopy(); // the closure's own text begins here
    printDay(paper, memory, "DAILY CLOSURE " + std::to_string(closure.number), closure.moment);
    closure.text = paper.takeCopy();
    memory.closeDay(closure.moment);
    storage.journal.add(std::move(closure));
    dayIsOpen = false;
    return Refusal::none;
}

Refusal FiscalState::beginReceipt()
{
    if (!dayIsOpen) {
        return Refusal::noSellingDay;
    }
    if (state != State::closed) {
        return Refusal::receiptIsOpen;
    }
    state = State::open;
    document.number = storage.journal.nextReceipt();
    document.day = storage.fiscalMemory.nextClosure();
    document.moment = now();
    paper.takeCopy(); // the receipt's own text begins here
    paper.center("TELVOFM");
    paper.print("Receipt " + std::to_string(document.number), document.moment);
    paper.rule('-');
    return Refusal::none;
}

Refusal FiscalState::endReceipt()
{
    if (state == State::closed) {
        return Refusal::noReceipt;
    }
    if (paid < total) {
        return Refusal::paidTooLittle;
    }
    if (state == State::open) {
        paper.rule('-');
        printTotal("TOTAL EUR");
    }
    if (paid > total) {
        paper.print("Change", formatCents(paid - total));
    }
    paper.rule('-');
    for (const auto& [vat, sum] : totals) {
        paper.print(std::string("VAT ") + vat, formatCents(sum));
    }
    paper.rule('=');
    document.text = paper.takeCopy();
    storage.journal.add(std::move(document));
    storage.fiscalMemory.addReceipt(totals);
    forgetReceipt();
    return Refusal::none;
}

Refusal FiscalState::cancelReceipt(const std::string& description)
{
    if (state == State::closed) {
        return Refusal::noReceipt;
    }
    paper.center("RECEIPT CANCELLED");
    paper.print(description);
    paper.rule('=');
    storage.fiscalMemory.addCancelled();
    forgetReceipt();
    return Refusal::none;
}

Refusal FiscalState::drawer(const Request& request)
{
    constexpr std::size_t description = 1;
    constexpr std::size_t amount = 3;
    if (!dayIsOpen) {
        return Refusal::noSellingDay;
    }
    if (request.fields.size() <= amount) {
        return Refusal::wrongFields;
    }
    const auto sum = parseDecimal(request.fields[amount], cents);
    if (!sum) {
        return Refusal::badNumber;
    }
    paper.print("DRAWER " + request.fields[description], formatCents(*sum));
    storage.fiscalMemory.addToDrawer(*sum);
    return Refusal::none;
}

Refusal FiscalState::printCopyOfLast()
{
    if (state != State::closed) {
        return Refusal::receiptIsOpen;
    }
    const Document* last = storage.journal.lastReceipt();
    if (last == nullptr) {
        return Refusal::nothingSold;
    }
    printCopy(paper, last->text);
    return Refusal::none;
}

void FiscalState::forgetReceipt()
{
    state = State::closed;
    document = {};
    items.clear();
    totals.clear();
    total = 0;
    paid = 0;
}

} // namespace virtual_printer
