#include "virtual_printer/memory/text_search.h"

#include "virtual_printer/memory/search_index.h"
#include "virtual_printer/memory/searched_lines.h"

namespace virtual_printer {

namespace {

constexpr std::int64_t sizeOfBlock = SearchIndex::documentsOfABlock;

} // namespace

TextSearch::TextSearch(const DocumentQuery& wanted)
    : folded(foldedText(wanted.text.value_or(""))), newestFirst(wanted.newestFirst || wanted.onlyLast),
      most(wanted.onlyLast ? std::optional<std::int64_t>(1) : wanted.most), toSkip(wanted.skip)
{
    DocumentQuery others = wanted;
    others.text.reset();
    others.most.reset();
    others.skip = 0;
    others.newestFirst = others.onlyLast = false;
    if (others != DocumentQuery()) {
        others.newestFirst = newestFirst;
        besideText = std::move(others);
    }
}

void TextSearch::beginAt(std::int64_t documents)
{
    if (!last) {
        last = documents;
    }
}

std::optional<std::int64_t> TextSearch::nextBlock() const
{
    const std::int64_t blocks = (*last + sizeOfBlock - 1) / sizeOfBlock;
    if (isFull() || blocksDone == blocks) {
        return std::nullopt;
    }
    return newestFirst ? blocks - 1 - blocksDone : blocksDone;
}

void TextSearch::take(std::uint64_t documents)
{
    const std::int64_t first = *nextBlock() * sizeOfBlock + 1;
    ++blocksDone;
    for (std::int64_t i = 0; i < sizeOfBlock && documents != 0; ++i) {
        const std::int64_t offset = newestFirst ? sizeOfBlock - 1 - i : i;
        if ((documents >> static_cast<unsigned>(offset) & 1U) != 0) {
            take(first + offset);
        }
    }
}

void TextSearch::take(std::int64_t position)
{
    if (position > *last || isFull()) {
        return;
    }
    if (toSkip > 0) {
        --toSkip;
    } else {
        positions.push_back(position);
    }
}

} // namespace virtual_printer
