#include "virtual_printer/memory/journal_reading.h"

namespace virtual_printer {

JournalReading::JournalReading(const Memory& readMemory, const DocumentQuery& query)
    : memory(&readMemory), journal(memory->journalNumber()), places(memory->placesOf(query))
{
}

std::optional<Document> JournalReading::next()
{
    if (journal != memory->journalNumber()) {
        throw MemoryDamaged("The journal was cleared while it was read; read it again.");
    }
    std::optional<Document> document;
    while (!document && row < places.size()) {
        const auto [first, last] = places[row];
        document = memory->documentAt(first + rowDone); // none where somebody has removed it
        ++rowDone;
        if (first + rowDone > last) {
            ++row;
            rowDone = 0;
        }
    }
    return document;
}

} // namespace virtual_printer
