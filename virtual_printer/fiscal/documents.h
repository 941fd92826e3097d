// How documents begin, and how they get into the journal: what is alike for all their kinds.
#pragma once

#include "virtual_printer/fiscal/draft.h"
#include "virtual_printer/fiscal/refusal.h"

#include <string>

namespace virtual_printer {

// The most documents that the journal holds before it is initialized. A closure always finds room.
inline constexpr int largestJournal = 1'000'000;

// Whether paper and cover let something be printed that does not belong to a document that has begun.
Refusal mayPrint(const State& state);
// And whether the journal has room for a document.
Refusal mayBeginDocument(const State& state);

// A document of this day and moment, without lines.
Document newDocument(const Draft& draft, Document::Kind kind);

// The line of every document until the printer is fiscalized.
Line trainingLine();

// A title at the left edge of the paper, and its value at the right one.
Line pairOf(std::string title, std::string value);

// The document is done: the journal keeps it, and the clock does not go back behind it.
void keepDocument(Draft& draft, Document document);

} // namespace virtual_printer
