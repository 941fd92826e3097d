// A reading of the journal that goes on where it was: each document is fetched when it is asked for, and
// between two of them only their places are held. It has the documents that there were at its beginning,
// whatever is added meanwhile. Users: replies, which a till reads block by block.
#pragma once

#include "virtual_printer/memory/memory.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace virtual_printer {

class JournalReading
{
public:
    // The query has no text. The memory must live as long.
    JournalReading(const Memory& readMemory, const DocumentQuery& query);

    // Nothing behind the last one. Throws MemoryDamaged, also when the journal has been cleared or replaced
    // since: what is left of it would be taken for all.
    std::optional<Document> next();

private:
    const Memory* memory;
    std::uint64_t journal;
    std::vector<PlacesInARow> places;
    std::size_t row = 0;
    std::int64_t rowDone = 0; // so many places of the row
};

} // namespace virtual_printer
