// Receipts by what identifies them.
#include "virtual_printer/extracts.h"
#include "virtual_printer/moments.h"
#include "virtual_printer/money.h"

namespace virtual_printer {
namespace {

// Which receipts have what the input tells; `refusal` says why nothing is looked up.
Journal::Wanted identifiedBy(const std::string& type, const std::string& input, Refusal& refusal)
{
    const auto number = parseDecimal(input, 0);
    const auto from = parseMoment(input, Edge::first);
    const auto to = parseMoment(input, Edge::last);
    const auto needed = [&](bool isThere, Refusal otherwise) {
        refusal = isThere || input.empty() ? Refusal::none : otherwise;
    };
    if (type == "N") {
        needed(number.has_value(), Refusal::badNumber);
        return [=](const Document& receipt) { return number == receipt.number; };
    }
    if (type == "Z") {
        needed(number.has_value(), Refusal::badNumber);
        return [=](const Document& receipt) { return number == receipt.day; };
    }
    if (type == "D") {
        needed(from.has_value(), Refusal::badDate);
        return [=](const Document& receipt) { return from <= receipt.moment && to >= receipt.moment; };
    }
    if (type == "I") {
        return [=](const Document& receipt) { return receipt.invoice == input; };
    }
    if (type == "T") {
        return [=](const Document& receipt) { return receipt.transaction == input; };
    }
    refusal = Refusal::unknownIdentifier;
    return {};
}

} // namespace

Extract findReceipts(const Journal& journal, const Request& request)
{
    if (request.fields.size() < 2) {
        return {.refusal = Refusal::wrongFields, .text = {}};
    }
    const std::string& input = request.fields[1];
    Extract extract;
    const Journal::Wanted isIdentified = identifiedBy(request.fields.front(), input, extract.refusal);
    if (extract.refusal != Refusal::none) {
        return extract;
    }
    const auto found = journal.all([&](const Document& document) {
        return document.kind == Document::Kind::receipt && (input.empty() || isIdentified(document));
    });
    for (const Document* receipt : found) {
        extract.text += std::to_string(receipt->number) + "\r\n";
    }
    return extract;
}

} // namespace virtual_printer
