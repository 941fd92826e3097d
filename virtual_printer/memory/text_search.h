// A search of the journal for a text, in steps: tills are served between them. What it finds is decided by
// the documents that there are when it begins.
#pragma once

#include "virtual_printer/memory/memory.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace virtual_printer {

class TextSearch
{
public:
    // One or two milliseconds.
    static constexpr int documentsOfAStep = 8192;

    // The query has a text.
    explicit TextSearch(const DocumentQuery& wanted);

    // The places in the journal of those found so far, in the order of the query.
    [[nodiscard]] const std::vector<std::int64_t>& found() const { return positions; }

    // For the journal, which goes over its blocks.
    [[nodiscard]] const std::string& text() const { return folded; }
    // What else is wanted of a document, if anything.
    [[nodiscard]] const std::optional<DocumentQuery>& others() const { return besideText; }
    // A journal of so many documents is begun with, unless it has been before.
    void beginAt(std::int64_t documents);
    // Nothing when there is no further one, or the page is full.
    [[nodiscard]] std::optional<std::int64_t> nextBlock() const;
    // Which documents of that block are wanted, a bit for each.
    void take(std::uint64_t documents);

private:
    [[nodiscard]] bool isFull() const { return most && static_cast<std::int64_t>(positions.size()) >= *most; }
    void take(std::int64_t position);

    std::string folded;
    std::optional<DocumentQuery> besideText;
    bool newestFirst;
    std::optional<std::int64_t> most;
    std::int64_t toSkip;
    std::optional<std::int64_t> last; // the newest document at the beginning
    std::int64_t blocksDone = 0;
    std::vector<std::int64_t> positions;
};

} // namespace virtual_printer
