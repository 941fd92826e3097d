// The life of a receipt: begun, ended, cancelled.
#include "virtual_printer/fiscal/cash.h"
#include "virtual_printer/fiscal/deciders.h"
#include "virtual_printer/fiscal/documents.h"
#include "virtual_printer/fiscal/picture_line.h"
#include "virtual_printer/fiscal/ranges.h"
#include "virtual_printer/fiscal/receipt_lines.h"
#include "virtual_printer/fiscal/vat_table.h"

#include <algorithm>
#include <utility>

namespace virtual_printer {
namespace {

constexpr int largestKind = 9; // of the sale, the receipt ...; also the number of the last picture

// The number of a picture that is kept, or 0.
Verdict checkPicture(const State& state, const Fields& fields, std::size_t index)
{
    const int number = fields.whole(index);
    const bool isThere = number == 0 || state.pictures->contains(number);
    return firstOf(
        {checkRange(fields, index, 0, largestKind), isThere ? Refusal::none : Refusal::noSuchPicture});
}

// Nothing for the number 0, and where no picture is kept.
void printPicture(Draft& draft, int number)
{
    if (draft.state().pictures->contains(number)) {
        draft.printInReceipt(pictureLine(number, draft.state().pictures->at(number)));
    }
}

void printText(Draft& draft, const std::string& text)
{
    if (!text.empty()) {
        draft.printInReceipt({.text = text});
    }
}

void printHead(Draft& draft, int picture)
{
    constexpr int logo = 1;
    const Settings& settings = *draft.state().settings;
    const Document& document = draft.state().receipt->document;
    for (const std::string& text : settings.prelines) {
        printText(draft, text);
    }
    printPicture(draft, picture == 0 && settings.printsLogo ? logo : picture);
    for (const auto& [row, text] : settings.header) {
        draft.printInReceipt({.kind = Line::Kind::heading, .text = text});
    }
    if (settings.header.empty()) {
        draft.printInReceipt({.kind = Line::Kind::heading, .text = "TELVOFM"});
    }
    printText(draft, settings.additionalHeader);
    draft.printInReceipt({.kind = Line::Kind::pair,
                          .text = "Receipt " + std::to_string(document.number),
                          .right = onPaper(document.moment)});
    if (document.isTraining) {
        draft.printInReceipt(trainingLine());
    }
    draft.printInReceipt({.kind = Line::Kind::rule, .text = "-"});
}

void printFoot(Draft& draft, int picture)
{
    const Settings& settings = *draft.state().settings;
    if (draft.state().receipt->printsVatTable) {
        draft.printInReceipt({.kind = Line::Kind::rule, .text = "-"});
        for (Line& line : vatTable(draft.state().receipt->document.byVat, settings)) {
            draft.printInReceipt(std::move(line));
        }
    }
    for (const std::string& text : settings.postlines) {
        printText(draft, text);
    }
    printText(draft, settings.additionalFooter);
    printText(draft, settings.superFooter);
    printPicture(draft, picture);
    draft.printInReceipt({.kind = Line::Kind::rule, .text = "="});
    draft.printInReceipt({.kind = Line::Kind::cut});
}

// What the day gets of a receipt that is sold.
Sums sumsOf(const Document& receipt)
{
    Sums sums;
    sums.byVat = receipt.byVat;
    sums.byPayment = receipt.byPayment;
    sums.receipts = 1;
    for (const Line& line : receipt.lines) {
        if (line.kind == Line::Kind::discount) {
            sums.discounts -= line.sum;
        } else if (line.kind == Line::Kind::itemReturn) {
            sums.returns -= line.sum;
        }
    }
    return sums;
}

} // namespace

Verdict beginReceipt(Draft& draft, const Fields& fields)
{
    enum BeginField : std::size_t
    {
        saleType = 1,
        commType,
        paragonType,
        recapitulation,
        graphicsHeader
    };
    if (Verdict verdict = firstOf(
            {checkRange(fields, saleType, 0, largestKind), checkRange(fields, commType, 0, largestKind),
             checkRange(fields, paragonType, 0, largestKind),
             checkRange(fields, recapitulation, 0, largestKind),
             checkPicture(draft.state(), fields, graphicsHeader), mayBeginDocument(draft.state())});
        verdict != Refusal::none) {
        return verdict;
    }
    Receipt receipt;
    receipt.document = newDocument(draft, Document::Kind::receipt);
    receipt.document.number = draft.state().standing->receipts + 1;
    receipt.printsVatTable = fields.whole(recapitulation) != 0;
    draft.beginReceipt(std::move(receipt));
    printHead(draft, fields.whole(graphicsHeader));
    return Refusal::none;
}

Verdict endReceipt(Draft& draft, const Fields& fields)
{
    constexpr std::size_t graphicsHeader = 1;
    const int picture = fields.whole(graphicsHeader);
    if (Verdict verdict = checkPicture(draft.state(), fields, graphicsHeader); verdict != Refusal::none) {
        return verdict;
    }
    if (!hasSales(draft.state().receipt->document)) {
        return Refusal::nothingSold;
    }
    if (const Cents due = draft.state().receipt->due(); due != 0) {
        return {Refusal::paidTooLittle, formatCents(due) + " is due."};
    }
    if (!draft.state().receipt->isBeingPaid) {
        printTotal(draft); // of a receipt that comes to nothing
    }
    printFoot(draft, picture);
    Document document = draft.state().receipt->document;
    Standing& standing = draft.standing();
    standing.receipts = document.number;
    standing.day.add(sumsOf(document));
    for (const auto& [type, sum] : document.byPayment) {
        standing.drawer[type] += sum;
    }
    if (document.byPayment.contains(cash)) {
        draft.show(DrawerOpens{});
    }
    draft.endReceipt();
    keepDocument(draft, std::move(document));
    return Refusal::none;
}

Verdict cancelReceipt(Draft& draft, const Fields& fields)
{
    constexpr std::size_t description = 1;
    draft.printInReceipt({.kind = Line::Kind::heading, .text = "RECEIPT CANCELLED"});
    printText(draft, fields.text(description));
    draft.printInReceipt({.kind = Line::Kind::rule, .text = "="});
    draft.printInReceipt({.kind = Line::Kind::cut});
    Document document = draft.state().receipt->document;
    document.kind = Document::Kind::cancelledReceipt;
    document.number = 0;
    document.byPayment.clear(); // it is given back
    ++draft.standing().day.cancelled;
    draft.endReceipt();
    keepDocument(draft, std::move(document));
    return Refusal::none;
}

} // namespace virtual_printer
