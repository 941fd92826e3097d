// How documents begin, and how they get into the journal: what is alike for all their kinds.
#pragma once

#include "virtual_printer/fiscal/draft.h"
#include "virtual_printer/fiscal/refusal.h"

namespace virtual_printer {

// The most documents that the journal holds before it is initialized. A closure always finds room.
inline constexpr int largestJournal = 1'000'000;

// Whether paper, cover and journal let a document begin.
Refusal mayBeginDocument(const State& state);

// A document of this day and moment, without lines.
Document newDocument(const Draft& draft, Document::Kind kind);

// The document is done: the journal keeps it, and the clock does not go back behind it.
void keepDocument(Draft& draft, Document document);

} // namespace virtual_printer
