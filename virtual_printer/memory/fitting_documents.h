// The documents that have what a query wants beside its text, read along with the blocks of a search.
#pragma once

#include "virtual_printer/memory/conditions.h"

#include <cstdint>

namespace virtual_printer {

class FittingDocuments
{
public:
    // Among so many blocks, of which this is the first one in the order of the query.
    FittingDocuments(const Database& database, const DocumentQuery& others, std::int64_t block,
                     std::int64_t blocks);

    // A bit for each document of the block. Blocks are asked for in the order of the query.
    std::uint64_t of(std::int64_t block);

private:
    DocumentQuery query;
    Conditions conditions;
    Statement select;
    Rows rows;
    bool isThere;
};

} // namespace virtual_printer
