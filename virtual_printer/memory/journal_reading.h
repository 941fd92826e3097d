// A reading of the journal that goes on where it was: each document is fetched when it is asked for, and
// between two of them only places are held: of few documents all of them, of many a page at a time, so that
// the first one is there at once however long the journal is. It has the documents that there were at its
// beginning, whatever is added meanwhile. Users: extracts, which a till reads block by block.
#pragma once

#include "virtual_printer/memory/memory.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace virtual_printer {

class JournalReading
{
public:
    // The query has no text, no positions, no order and no page. The memory must live as long.
    JournalReading(const Memory& readMemory, DocumentQuery query);

    // Nothing behind the last one. Throws MemoryDamaged, also when the journal has been cleared or replaced
    // since: what is left of it would be taken for all.
    std::optional<Document> next();

private:
    static constexpr std::int64_t page = 1000;

    bool turnPage(); // false behind the last one

    const Memory* memory;
    std::uint64_t journal;
    DocumentQuery wanted;
    std::int64_t lastPlace;
    bool hasFurtherPages = false;
    std::vector<PlacesInARow> places;
    std::size_t row = 0;
    std::int64_t rowDone = 0; // so many places of the row
};

} // namespace virtual_printer
