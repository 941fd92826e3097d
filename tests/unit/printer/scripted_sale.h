// A till's day without deciders: from any state the one next step, always the same, and everything that is in
// the memory after so many steps. Programs that were ended go on from what they find.
#pragma once

#include "virtual_printer/memory/memory.h"

#include <string>
#include <vector>

namespace virtual_printer::test {

inline constexpr int itemsOfSale = 5;
inline constexpr int receiptsOfDay = 2;
inline constexpr int stepsOfSale = 1 + itemsOfSale + 1 + 1; // begin, items, pay, end

inline Moment momentOf(int second)
{
    return Moment(std::chrono::sys_days(std::chrono::year(2026) / 1 / 31).time_since_epoch()) +
           std::chrono::seconds(second);
}

inline State stateWhenNew()
{
    Settings settings;
    settings.vat[0] = VatRate{.percent = 23, .reverseConstant = 18.699};
    settings.payments[1] = {.name = "Hotovost\xC5\xA5", .minimum = 1, .mayOverPay = true};
    settings.header[1] = "Potraviny";
    State state;
    state.settings = std::make_shared<const Settings>(settings);
    return state;
}

inline Document documentOf(const Standing& standing, Document::Kind kind, int number)
{
    Document document;
    document.kind = kind;
    document.number = number;
    document.closure = standing.closures + 1;
    document.moment = momentOf(standing.documents);
    return document;
}

inline void keep(Draft& draft, Document document)
{
    draft.standing().lastDocument = document.moment;
    ++draft.standing().documents;
    draft.keep(std::move(document));
}

inline void sell(Receipt& receipt)
{
    std::vector<Line>& lines = receipt.document.lines;
    const auto item = static_cast<int>(lines.size());
    if (item == itemsOfSale) { // the last takes back the one before it
        lines.back().isVoided = true;
        Line taken = lines.back();
        taken.kind = Line::Kind::itemVoid;
        receipt.document.total -= taken.sum;
        lines.push_back(taken);
        return;
    }
    Line line;
    line.kind = Line::Kind::item;
    line.text = "Chlieb " + std::to_string(receipt.document.number) + "." + std::to_string(item);
    line.vat = 'A';
    line.quantity = 1000;
    line.unitPrice = line.sum = 100 + item;
    receipt.document.total += line.sum;
    receipt.document.byVat['A'] += line.sum;
    receipt.lastItem = item;
    lines.push_back(line);
}

inline void closeDay(Draft& draft)
{
    Standing& standing = draft.standing();
    const int number = standing.closures + 1;
    keep(draft, documentOf(standing, Document::Kind::closure, number));
    Closure closure;
    closure.number = number;
    closure.moment = standing.lastDocument;
    closure.sums = standing.day;
    draft.keep(closure);
    draft.settings().header[1] = "Potraviny, day " + std::to_string(number);
    standing.ever.receipts += standing.day.receipts;
    standing.day = Sums();
    standing.closures = number;
    standing.dayIsOpen = false;
}

inline Draft nextStep(const State& state)
{
    Draft draft(state, momentOf(state.standing->documents));
    if (!state.standing->dayIsOpen) {
        draft.standing().dayIsOpen = true;
    } else if (!state.receipt && state.standing->day.receipts == receiptsOfDay) {
        closeDay(draft);
    } else if (!state.receipt) {
        Receipt receipt;
        receipt.document = documentOf(*state.standing, Document::Kind::receipt, state.standing->receipts + 1);
        receipt.document.lines.push_back({.kind = Line::Kind::heading, .text = "Potraviny"});
        draft.beginReceipt(receipt);
    } else if (state.receipt->document.lines.size() <= itemsOfSale) {
        sell(draft.receipt());
    } else if (!state.receipt->isBeingPaid) {
        draft.receipt().isBeingPaid = true;
        draft.receipt().paid = state.receipt->document.total;
        draft.receipt().document.byPayment[1] = state.receipt->document.total;
    } else {
        Document document = state.receipt->document;
        document.invoice = "F" + std::to_string(document.number);
        draft.standing().receipts = document.number;
        ++draft.standing().day.receipts;
        draft.standing().drawer[1] += document.total;
        keep(draft, document);
        draft.endReceipt();
    }
    return draft;
}

inline bool haveSameParts(const State& a, const State& b)
{
    const bool haveSameReceipt =
        (a.receipt == nullptr) == (b.receipt == nullptr) && (!a.receipt || *a.receipt == *b.receipt);
    return haveSameReceipt && *a.standing == *b.standing && *a.settings == *b.settings &&
           *a.pictures == *b.pictures;
}

// What is there after each number of steps, worked out without any memory.
class History
{
public:
    explicit History(int steps)
    {
        for (int step = 0; step < steps; ++step) {
            Draft draft = nextStep(states.back());
            // A step that touches nothing but the receipt need not be synchronised.
            synchronized.push_back(draft.next.standing != states.back().standing);
            states.push_back(draft.next);
            documents.insert(documents.end(), draft.documents.begin(), draft.documents.end());
            closures.insert(closures.end(), draft.closures.begin(), draft.closures.end());
        }
    }

    // After how many steps, at least `from` and at most `to`, the memory is like this in everything; -1 when
    // after none of them.
    [[nodiscard]] int find(const Memory& memory, int from, int to) const
    {
        const auto loaded = memory.load();
        for (int step = from; step <= to; ++step) {
            const bool isNew = step == 0 && !loaded;
            const State& expected = states[static_cast<std::size_t>(step)];
            if (isNew || (loaded && haveSameParts(*loaded, expected))) {
                return hasItsDocuments(memory, expected) ? step : -1;
            }
        }
        return -1;
    }

    [[nodiscard]] bool isSynchronized(int step) const { return synchronized[static_cast<std::size_t>(step)]; }

    std::vector<State> states = {stateWhenNew()};

private:
    [[nodiscard]] bool hasItsDocuments(const Memory& memory, const State& state) const
    {
        const std::vector<Document> kept(documents.begin(), documents.begin() + state.standing->documents);
        const std::vector<Closure> closed(closures.begin(), closures.begin() + state.standing->closures);
        bool isWhole = memory.documents({}) == kept && memory.closures({}, {}) == closed;
        for (const Closure& closure : closed) {
            isWhole = isWhole && memory.isJournalWhole(closure.number);
        }
        return isWhole;
    }

    std::vector<Document> documents;
    std::vector<Closure> closures;
    std::vector<bool> synchronized;
};

} // namespace virtual_printer::test
