#include "virtual_printer/memory/fitting_documents.h"

#include "virtual_printer/memory/search_index.h"

#include <algorithm>

namespace virtual_printer {
namespace {

std::int64_t firstOf(std::int64_t block)
{
    return block * SearchIndex::documentsOfABlock + 1;
}

DocumentQuery within(DocumentQuery others, std::int64_t block, std::int64_t blocks)
{
    const auto [begin, end] =
        others.newestFirst ? std::pair(block + 1 - blocks, block + 1) : std::pair(block, block + blocks);
    const std::pair bounds(firstOf(begin), firstOf(end) - 1);
    const auto wanted = others.positions.value_or(bounds);
    others.positions = {std::max(bounds.first, wanted.first), std::min(bounds.second, wanted.second)};
    return others;
}

} // namespace

// Without an index: the documents are read in their order, and never more than those of the blocks.
FittingDocuments::FittingDocuments(const Database& database, const DocumentQuery& others, std::int64_t block,
                                   std::int64_t blocks)
    : query(within(others, block, blocks)), conditions(query),
      select(database.prepare("SELECT id FROM documents NOT INDEXED" + conditions.text())),
      rows(select.rows(conditions.parameters())), isThere(rows.next())
{
}

std::uint64_t FittingDocuments::of(std::int64_t block)
{
    const std::int64_t first = firstOf(block);
    const std::int64_t last = firstOf(block + 1) - 1;
    std::uint64_t bits = 0;
    for (; isThere; isThere = rows.next()) {
        const std::int64_t position = rows.whole(0);
        if (query.newestFirst ? position < first : position > last) {
            break; // of a block that comes later
        }
        if (position >= first && position <= last) {
            bits |= std::uint64_t{1} << static_cast<unsigned>(position - first);
        }
    }
    return bits;
}

} // namespace virtual_printer
