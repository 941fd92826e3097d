// What the journal is searched by: for every 64 documents that follow each other the lines that they have
// among them, each once, with a bit for each document that has it. Shops sell the same goods again and again:
// this is a fraction of the documents, lies together, and is written once for 64 of them. The documents
// behind the last whole block have none yet and are read themselves.
#pragma once

#include "virtual_printer/memory/database.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace virtual_printer {

class SearchIndex
{
public:
    static constexpr std::int64_t documentsOfABlock = 64;
    static constexpr const char* table =
        "CREATE TABLE searched (block INTEGER PRIMARY KEY, lines BLOB NOT NULL)";

    explicit SearchIndex(const Database& database);

    // The document at this place is the newest of the journal.
    void add(std::int64_t position) const;
    // All whole blocks of a journal of so many documents that was kept without them.
    void makeAnew(std::int64_t documents) const;
    // The document at this place is the last one that stays.
    void cutBehind(std::int64_t position) const;
    void clear() const;

    // Which documents of a block have the folded text in a line. The lowest bit is that of the first one.
    [[nodiscard]] std::uint64_t find(std::int64_t block, std::string_view text) const;

private:
    [[nodiscard]] std::string make(std::int64_t block) const;

    Statement readContents;
    Statement readBlock;
    Statement writeBlock;
    Statement removeFrom;
};

} // namespace virtual_printer
