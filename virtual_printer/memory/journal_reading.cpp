#include "virtual_printer/memory/journal_reading.h"

namespace virtual_printer {

JournalReading::JournalReading(const Memory& readMemory, DocumentQuery query)
    : memory(&readMemory), journal(memory->journalNumber()), wanted(std::move(query)),
      lastPlace(memory->lastPlace())
{
    if (lastPlace == 0) {
        return;
    }
    if (wanted == DocumentQuery()) { // they need not be looked for
        places = {{1, lastPlace}};
    } else if (auto few = memory->fewPlacesOf(wanted, page)) {
        places = std::move(*few);
    } else {
        hasFurtherPages = true;
    }
}

std::optional<Document> JournalReading::next()
{
    if (journal != memory->journalNumber()) {
        throw MemoryDamaged("The journal was cleared while it was read; read it again.");
    }
    while (row < places.size() || turnPage()) {
        const auto [first, last] = places[row];
        const std::int64_t place = first + rowDone;
        ++rowDone;
        if (place == last) {
            ++row;
            rowDone = 0;
        }
        if (auto document = memory->documentAt(place)) { // none where somebody has removed it
            return document;
        }
    }
    return std::nullopt;
}

bool JournalReading::turnPage()
{
    if (hasFurtherPages) {
        const std::int64_t done = places.empty() ? 0 : places.back().second;
        wanted.positions = {done + 1, lastPlace};
        wanted.most = page;
        places = memory->nextPlacesOf(wanted);
        row = 0;
        hasFurtherPages = !places.empty();
    }
    return hasFurtherPages;
}

} // namespace virtual_printer
