// The drawer outside receipts: money is put in or taken out.
#include "virtual_printer/fiscal/cash.h"
#include "virtual_printer/fiscal/deciders.h"
#include "virtual_printer/fiscal/documents.h"
#include "virtual_printer/fiscal/ranges.h"

#include <utility>

namespace virtual_printer {
namespace {

enum DrawerField : std::size_t
{
    movementDescription = 1,
    operationType,
    amount,
    movedPayment
};

// What the drawer gets: negative for what is taken out.
Verdict readMovement(const Fields& fields, const State& state, Cents& movement)
{
    constexpr int in = 0;
    constexpr int out = 1;
    const int operation = fields.whole(operationType);
    const int type = fields.whole(movedPayment);
    if (Verdict verdict = checkRange(fields, operationType, in, out, Refusal::unknownOperation);
        verdict != Refusal::none) {
        return verdict;
    }
    if (!state.settings->payments.contains(type)) {
        return Refusal::unknownPayment;
    }
    if (fields.money(amount) < 0) {
        return fields.refused(Refusal::wrongSign, amount, "no amount below zero");
    }
    if (fields.money(amount) == 0) {
        return fields.refused(Refusal::valueOutOfRange, amount, "at least 0.01");
    }
    movement = operation == in ? fields.money(amount) : -fields.money(amount);
    const Cents content = contentOf(state.standing->drawer, type);
    return content + movement < 0 ? missingInDrawer(state, type, -movement, content) : Verdict();
}

} // namespace

Verdict moveDrawer(Draft& draft, const Fields& fields)
{
    Cents movement = 0;
    if (Verdict verdict = readMovement(fields, draft.state(), movement); verdict != Refusal::none) {
        return verdict;
    }
    if (Verdict verdict = mayBeginDocument(draft.state()); verdict != Refusal::none) {
        return verdict;
    }
    const int type = fields.whole(movedPayment);
    Document document = newDocument(draft, Document::Kind::drawer);
    document.total = movement;
    document.byPayment[type] = movement;
    document.lines = {{.kind = Line::Kind::pair,
                       .text = movement > 0 ? "DRAWER IN" : "DRAWER OUT",
                       .right = onPaper(document.moment)}};
    if (document.isTraining) {
        document.lines.push_back(trainingLine());
    }
    if (const std::string text = fields.text(movementDescription); !text.empty()) {
        document.lines.push_back({.text = text});
    }
    document.lines.push_back({.kind = Line::Kind::payment,
                              .text = draft.state().settings->payments.at(type).name,
                              .number = type,
                              .sum = movement});
    document.lines.push_back({.kind = Line::Kind::rule, .text = "="});
    document.lines.push_back({.kind = Line::Kind::cut});
    for (const Line& line : document.lines) {
        draft.print(line);
    }
    draft.show(DrawerOpens{});
    Standing& standing = draft.standing();
    standing.drawer[type] += movement;
    ++standing.day.drawerMovements;
    keepDocument(draft, std::move(document));
    return Refusal::none;
}

} // namespace virtual_printer
