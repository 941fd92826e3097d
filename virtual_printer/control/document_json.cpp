#include "virtual_printer/control/document_json.h"

#include "virtual_printer/paper/layout.h"

#include <algorithm>
#include <array>

namespace virtual_printer {
namespace {

struct KindOfDocument
{
    Document::Kind kind;
    std::string_view name;
};

constexpr std::array kinds = {KindOfDocument{Document::Kind::receipt, "receipt"},
                              KindOfDocument{Document::Kind::cancelledReceipt, "cancelledReceipt"},
                              KindOfDocument{Document::Kind::drawer, "drawer"},
                              KindOfDocument{Document::Kind::closure, "closure"},
                              KindOfDocument{Document::Kind::report, "report"}};

// Of what counts in the total; empty for all other lines.
std::string_view nameOf(Line::Kind kind)
{
    switch (kind) {
    case Line::Kind::item:
        return "sale";
    case Line::Kind::itemVoid:
        return "void";
    case Line::Kind::itemReturn:
        return "return";
    case Line::Kind::itemNegative:
        return "negative";
    case Line::Kind::discount:
        return "discount";
    case Line::Kind::voucher:
        return "voucher";
    case Line::Kind::downPayment:
        return "downPayment";
    default:
        return {};
    }
}

Json itemToJson(const Line& line)
{
    Json item = {{"kind", nameOf(line.kind)},
                 {"name", line.text},
                 {"vat", std::string(line.vat == 0 ? 0U : 1U, line.vat)},
                 {"sum", formatCents(line.sum)}};
    if (line.quantity != 0) {
        item["quantity"] = formatThousandths(line.quantity);
        item["unit"] = line.unit;
        item["unitPrice"] = formatCents(line.unitPrice);
        item["voided"] = line.isVoided;
    }
    if (!line.right.empty()) {
        item["number"] = line.right;
    }
    return item;
}

Json vatToJson(const ByVat& sums)
{
    Json byLetter = Json::object();
    for (const auto& [letter, sum] : sums) {
        byLetter[std::string(1, letter)] = formatCents(sum);
    }
    return byLetter;
}

} // namespace

std::string_view nameOf(Document::Kind kind)
{
    return kinds.at(static_cast<std::size_t>(kind)).name;
}

std::optional<Document::Kind> documentKindCalled(std::string_view name)
{
    const auto* found = std::find_if(kinds.begin(), kinds.end(),
                                     [name](const KindOfDocument& kind) { return kind.name == name; });
    return found == kinds.end() ? std::nullopt : std::optional(found->kind);
}

PaymentNames namesIn(const Settings& settings)
{
    PaymentNames names;
    for (const auto& [number, type] : settings.payments) {
        names[number] = type.name;
    }
    return names;
}

Json paymentsToJson(const ByPayment& payments, const PaymentNames& names)
{
    Json list = Json::array();
    for (const auto& [type, sum] : payments) {
        const auto name = names.find(type);
        list.push_back(
            {{"type", type}, {"name", name == names.end() ? "" : name->second}, {"sum", formatCents(sum)}});
    }
    return list;
}

Json toJson(const Document& document, const Settings& settings, std::int64_t position)
{
    Json items = Json::array();
    Json text = Json::array();
    for (const Line& line : document.lines) {
        if (!nameOf(line.kind).empty()) {
            items.push_back(itemToJson(line));
        }
        for (const std::string& printed : layout(line, static_cast<std::size_t>(settings.columns))) {
            text.push_back(printed);
        }
    }
    return {{"kind", nameOf(document.kind)},
            {"position", position},
            {"number", document.number},
            {"closure", document.closure},
            {"training", document.isTraining},
            {"moment", toText(document.moment)},
            {"total", formatCents(document.total)},
            {"items", std::move(items)},
            {"vat", vatToJson(document.byVat)},
            {"payments", paymentsToJson(document.byPayment, namesIn(settings))},
            {"invoice", document.invoice},
            {"transaction", document.transaction},
            {"text", std::move(text)}};
}

Json toJson(const Sums& sums, const PaymentNames& names)
{
    return {{"turnover", formatCents(sums.turnover())},
            {"vat", vatToJson(sums.byVat)},
            {"payments", paymentsToJson(sums.byPayment, names)},
            {"receipts", sums.receipts},
            {"cancelled", sums.cancelled},
            {"discounts", formatCents(sums.discounts)},
            {"returns", formatCents(sums.returns)},
            {"drawerMovements", sums.drawerMovements}};
}

Json toJson(const Closure& closure)
{
    return {{"number", closure.number},
            {"moment", toText(closure.moment)},
            {"sums", toJson(closure.sums, closure.paymentNames)},
            {"drawer", paymentsToJson(closure.drawer, closure.paymentNames)}};
}

} // namespace virtual_printer
