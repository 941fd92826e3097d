#include "virtual_printer/memory/search_index.h"

#include "virtual_printer/memory/members.h"
#include "virtual_printer/memory/record.h"
#include "virtual_printer/memory/searched_lines.h"

#include <algorithm>
#include <array>
#include <map>

namespace virtual_printer {
namespace {

// The bytes of a block are its lines, each with this behind it, a zero, and for each line its bits.
constexpr char endOfLine = '\n';
constexpr char endOfLines = '\0';
constexpr std::size_t bytesOfBits = 8;
constexpr std::size_t bitsOfAByte = 8;

void appendBits(std::string& block, std::uint64_t bits)
{
    for (std::size_t byte = 0; byte < bytesOfBits; ++byte) {
        block.push_back(static_cast<char>(bits >> byte * bitsOfAByte));
    }
}

std::uint64_t bitsAt(std::string_view block, std::size_t place)
{
    std::uint64_t bits = 0;
    for (std::size_t byte = 0; byte < bytesOfBits && place + byte < block.size(); ++byte) {
        bits |= std::uint64_t{static_cast<unsigned char>(block[place + byte])} << byte * bitsOfAByte;
    }
    return bits;
}

std::uint64_t findIn(std::string_view block, std::string_view text)
{
    const std::string_view lines = block.substr(0, block.find(endOfLines));
    std::uint64_t found = 0;
    std::size_t line = 0;
    std::size_t counted = 0;
    for (std::size_t at = lines.find(text); at < lines.size(); at = lines.find(text, counted)) {
        line +=
            static_cast<std::size_t>(std::count(lines.begin() + static_cast<std::ptrdiff_t>(counted),
                                                lines.begin() + static_cast<std::ptrdiff_t>(at), endOfLine));
        found |= bitsAt(block, lines.size() + 1 + line * bytesOfBits);
        counted = lines.find(endOfLine, at) + 1;
        ++line;
    }
    return found;
}

} // namespace

SearchIndex::SearchIndex(const Database& database)
    : readContents(database.prepare("SELECT id, content FROM contents WHERE id BETWEEN ? AND ?")),
      readBlock(database.prepare("SELECT lines FROM searched WHERE block = ?")),
      writeBlock(database.prepare("INSERT OR REPLACE INTO searched VALUES (?, ?)")),
      removeFrom(database.prepare("DELETE FROM searched WHERE block >= ?"))
{
}

void SearchIndex::add(std::int64_t position) const
{
    if (position % documentsOfABlock == 0) {
        const std::int64_t block = position / documentsOfABlock - 1;
        writeBlock.run({block, Bytes{make(block)}});
    }
}

void SearchIndex::makeAnew(std::int64_t documents) const
{
    for (std::int64_t position = documentsOfABlock; position <= documents; position += documentsOfABlock) {
        add(position);
    }
}

void SearchIndex::cutBehind(std::int64_t position) const
{
    removeFrom.run({position / documentsOfABlock});
}

void SearchIndex::clear() const
{
    cutBehind(0);
}

std::uint64_t SearchIndex::find(std::int64_t block, std::string_view text) const
{
    const Parameter number = block;
    Rows rows = readBlock.rows(std::span(&number, 1));
    return rows.next() ? findIn(rows.bytes(0), text) : findIn(make(block), text);
}

std::string SearchIndex::make(std::int64_t block) const
{
    const std::int64_t first = block * documentsOfABlock + 1;
    std::map<std::string, std::uint64_t> documentsByLine;
    const std::array<Parameter, 2> bounds = {first, first + documentsOfABlock - 1};
    Rows rows = readContents.rows(bounds);
    while (rows.next()) {
        const std::uint64_t bit = std::uint64_t{1} << static_cast<unsigned>(rows.whole(0) - first);
        for (std::string& line : searchedLines(fromBytes<Document>(rows.bytes(1)))) {
            documentsByLine[std::move(line)] |= bit;
        }
    }
    std::string bytes;
    std::string bits;
    for (const auto& [line, documents] : documentsByLine) {
        bytes.append(line).push_back(endOfLine);
        appendBits(bits, documents);
    }
    bytes.push_back(endOfLines);
    return bytes + bits;
}

} // namespace virtual_printer
