#include "virtual_printer/fiscal/documents.h"

#include <utility>

namespace virtual_printer {

Refusal mayPrint(const State& state)
{
    if (state.hardware->paperIsOut) {
        return Refusal::outOfPaper;
    }
    return state.hardware->coverIsOpen ? Refusal::coverIsOpen : Refusal::none;
}

Refusal mayBeginDocument(const State& state)
{
    if (const Refusal refusal = mayPrint(state); refusal != Refusal::none) {
        return refusal;
    }
    return state.standing->documents < largestJournal ? Refusal::none : Refusal::journalFull;
}

Document newDocument(const Draft& draft, Document::Kind kind)
{
    const Standing& standing = *draft.state().standing;
    Document document;
    document.kind = kind;
    document.closure = standing.closures + 1;
    document.isTraining = standing.life == Life::training;
    document.moment = draft.now;
    return document;
}

Line trainingLine()
{
    return {.kind = Line::Kind::notFiscal, .text = "TRAINING, NO FISCAL DOCUMENT"};
}

Line pairOf(std::string title, std::string value)
{
    return Line{.kind = Line::Kind::pair, .text = std::move(title), .right = std::move(value)};
}

void keepDocument(Draft& draft, Document document)
{
    Standing& standing = draft.standing();
    ++standing.documents;
    standing.lastDocument = draft.now;
    draft.keep(std::move(document));
}

} // namespace virtual_printer
