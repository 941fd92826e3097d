// The journal of all documents and the fiscal memory of all closures in the database. A document is never
// changed; each has a checksum that goes on from the document before it of the same day, so that the one of
// the last is that of the whole day, and a closure keeps it.
#pragma once

#include "virtual_printer/memory/database.h"
#include "virtual_printer/memory/search_index.h"
#include "virtual_printer/memory/text_search.h"

#include <vector>

namespace virtual_printer {

class Journal
{
public:
    // The last document and the last closure; 0 when there is none.
    struct Ends
    {
        std::int64_t document = 0;
        std::int64_t closure = 0;
    };

    explicit Journal(const Database& shared);

    void keep(const Document& document) const;
    void keep(const Closure& closure) const;
    // The closures then have nothing left to be compared with.
    void clearDocuments() const;
    // The documents then belong to no closure: their numbers are used again.
    void clearClosures() const;
    [[nodiscard]] Ends ends() const;
    void cutBehind(const Ends& last) const;

    void read(const DocumentQuery& query, const DocumentReader& reader) const;
    [[nodiscard]] std::optional<std::vector<PlacesInARow>> fewPlacesOf(const DocumentQuery& query,
                                                                       std::size_t most) const;
    [[nodiscard]] std::vector<PlacesInARow> nextPlacesOf(const DocumentQuery& query) const;
    [[nodiscard]] std::optional<Document> documentAt(std::int64_t place) const;
    // False when there is a further step.
    bool goOn(TextSearch& search) const;
    [[nodiscard]] std::vector<int> numbersOf(const DocumentQuery& query) const;
    [[nodiscard]] std::vector<Closure> closures(std::optional<std::pair<int, int>> numbers,
                                                std::optional<std::pair<Moment, Moment>> moments) const;
    [[nodiscard]] bool isWhole(int closure) const;

private:
    [[nodiscard]] std::int64_t checksumOfDay(int closure) const;
    [[nodiscard]] bool hasMany(const std::pair<Moment, Moment>& period) const;
    void readFound(const DocumentQuery& query, const DocumentReader& reader) const;

    const Database& database;
    Statement writeDocument;
    Statement writeContent;
    Statement readChecksum;
    Statement readDocument;
    Statement writeClosure;
    SearchIndex index;
};

} // namespace virtual_printer
