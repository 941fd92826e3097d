// The selling day: it begins, is looked at, and ends with the daily closure.
#include "virtual_printer/fiscal/decide.h"
#include "virtual_printer/fiscal/deciders.h"
#include "virtual_printer/fiscal/documents.h"
#include "virtual_printer/fiscal/ranges.h"
#include "virtual_printer/fiscal/vat_table.h"

#include <utility>

namespace virtual_printer {
namespace {

constexpr char dailyClosure = 'Z';

bool isEmpty(const Sums& day)
{
    return day.receipts == 0 && day.cancelled == 0 && day.drawerMovements == 0;
}

std::string nameOf(const Settings& settings, int paymentType)
{
    const auto type = settings.payments.find(paymentType);
    return type == settings.payments.end() ? "Payment " + std::to_string(paymentType) : type->second.name;
}

std::vector<Line> linesOfDay(const Draft& draft, std::string title)
{
    const Standing& standing = *draft.state().standing;
    const Settings& settings = *draft.state().settings;
    const Sums& day = standing.day;
    std::vector<Line> lines = {Line{.kind = Line::Kind::rule, .text = "="},
                               Line{.kind = Line::Kind::heading, .text = std::move(title)}};
    if (standing.life == Life::training) {
        lines.push_back(trainingLine());
    }
    lines.push_back(pairOf("Time", onPaper(draft.now)));
    lines.push_back(pairOf("Registration code", standing.dkp));
    for (Line& line : vatTable(day.byVat, settings)) {
        lines.push_back(std::move(line));
    }
    for (const auto& [type, sum] : day.byPayment) {
        lines.push_back(pairOf(nameOf(settings, type), formatCents(sum)));
    }
    lines.push_back(pairOf("Discounts", formatCents(day.discounts)));
    lines.push_back(pairOf("Returns", formatCents(day.returns)));
    lines.push_back(pairOf("Receipts", std::to_string(day.receipts)));
    lines.push_back(pairOf("Cancelled receipts", std::to_string(day.cancelled)));
    lines.push_back(pairOf("Drawer movements", std::to_string(day.drawerMovements)));
    for (const auto& [type, sum] : standing.drawer) {
        lines.push_back(pairOf("Drawer " + nameOf(settings, type), formatCents(sum)));
    }
    lines.push_back(pairOf("Turnover EUR", formatCents(day.turnover())));
    Sums ever = standing.ever;
    ever.add(day);
    lines.push_back(pairOf("Turnover ever EUR", formatCents(ever.turnover())));
    return lines;
}

void print(Draft& draft, Document document)
{
    document.lines.push_back({.kind = Line::Kind::rule, .text = "="});
    document.lines.push_back({.kind = Line::Kind::cut});
    for (const Line& line : document.lines) {
        draft.print(line);
    }
    keepDocument(draft, std::move(document));
}

// The closures of a printer in training make no entry in the fiscal memory, and its sales no turnover.
void enterIntoFiscalMemory(Draft& draft, Document& document)
{
    constexpr int warningFrom = 1'970;
    Standing& standing = draft.standing();
    document.number = ++standing.closures;
    standing.ever.add(standing.day);
    PaymentNames names;
    for (const auto& [type, sum] : standing.day.byPayment) {
        names[type] = nameOf(*draft.state().settings, type);
    }
    draft.keep(Closure{standing.closures, draft.now, standing.day, standing.drawer, std::move(names)});
    if (standing.closures >= warningFrom) {
        document.lines.push_back(Line{.kind = Line::Kind::heading,
                                      .text = "WARNING: ROOM FOR " +
                                              std::to_string(mostClosures - standing.closures) +
                                              " MORE CLOSURES"});
    }
}

Verdict closeDay(Draft& draft)
{
    const Standing& before = *draft.state().standing;
    // A day that has become too long is closed even when it is empty: nothing else would end it.
    if (isEmpty(before.day) && situationOf(draft.state(), draft.now) != Situation::overdue) {
        return Refusal::nothingToClose;
    }
    const bool isTraining = before.life == Life::training;
    Document document = newDocument(draft, Document::Kind::closure);
    document.lines = linesOfDay(draft, isTraining ? "DAILY CLOSURE"
                                                  : "DAILY CLOSURE " + std::to_string(before.closures + 1));
    if (!isTraining) {
        enterIntoFiscalMemory(draft, document);
    }
    draft.standing().day = Sums();
    draft.standing().dayIsOpen = false;
    print(draft, std::move(document));
    return Refusal::none;
}

Verdict printDay(Draft& draft, const Fields& fields)
{
    const char letter = fields.letter(0);
    if (letter < 'A' || letter > 'Z') {
        return fields.refused(Refusal::unknownOperation, 0, "A to Z");
    }
    if (situationOf(draft.state(), draft.now) == Situation::overdue) {
        return Refusal::dayTooLong;
    }
    if (Verdict verdict = mayBeginDocument(draft.state()); verdict != Refusal::none) {
        return verdict;
    }
    Document document = newDocument(draft, Document::Kind::report);
    document.lines = linesOfDay(draft, std::string("DAILY REPORT ") + letter);
    print(draft, std::move(document));
    return Refusal::none;
}

} // namespace

Verdict beginDay(Draft& draft, const Fields& fields)
{
    const bool isFull = draft.state().standing->closures >= mostClosures;
    Verdict verdict = firstOf({checkRange(fields, 0, 0, 0), isFull ? Refusal::memoryFull : Refusal::none});
    if (verdict == Refusal::none) {
        Standing& standing = draft.standing();
        standing.dayIsOpen = true;
        standing.dayBegan = draft.now;
        standing.saleMode = fields.whole(0);
    }
    return verdict;
}

Verdict report(Draft& draft, const Fields& fields)
{
    constexpr int largestNumber = 9999;
    Verdict verdict = checkRange(fields, 1, 0, largestNumber);
    if (verdict != Refusal::none) {
        return verdict;
    }
    return fields.letter(0) == dailyClosure ? closeDay(draft) : printDay(draft, fields);
}

} // namespace virtual_printer
