#include "tools/decoded_lines.h"

#include "tools/unit_words.h"

#include <algorithm>
#include <iterator>
#include <optional>

namespace telvofm::tools {
namespace {

// What stands at a line of the log.
struct Entry
{
    int line;
    std::string text;
};

// What leaves a reply as far as it was; the till's 06 asks for the next block.
bool leavesReplyOpen(const Unit& unit)
{
    switch (unit.kind) {
    case UnitKind::accepted:
    case UnitKind::onceMore:
        return unit.isFromTill;
    case UnitKind::probe:
    case UnitKind::ready:
    case UnitKind::busy:
        return true;
    default:
        return false;
    }
}

// Each unit is whole then, and more was to come all the same.
std::optional<Damage> damageAtEnd(const RawLog& log, const std::vector<Unit>& units)
{
    const auto last = std::find_if_not(units.rbegin(), units.rend(), leavesReplyOpen);
    const bool isInReply =
        last != units.rend() && last->kind == UnitKind::block && !last->isFromTill && damageOf(*last).empty();
    const int line = log.runs.empty() ? 0 : log.runs.back().line;
    const bool isNamed = !log.damages.empty() && log.damages.back().line >= line;
    if (!isInReply || isNamed) {
        return std::nullopt;
    }
    return Damage{line, "the log ends inside a reply"};
}

// Those that no unit tells of.
std::vector<Damage> damagesBesideUnits(const RawLog& log, const std::vector<Unit>& units)
{
    std::vector<Damage> damages = log.damages;
    if (auto end = damageAtEnd(log, units)) {
        damages.push_back(*std::move(end));
    }
    return damages;
}

std::vector<Entry> entriesOf(const RawLog& log, const std::vector<Unit>& units, const CodePage& codePage)
{
    std::vector<Entry> entries;
    std::transform(units.begin(), units.end(), std::back_inserter(entries), [&](const Unit& unit) {
        return Entry{unit.line, (unit.isFromTill ? "till     " : "printer  ") + wordsOf(unit, codePage)};
    });
    const std::vector<Damage> damages = damagesBesideUnits(log, units);
    std::transform(damages.begin(), damages.end(), std::back_inserter(entries), [](const Damage& damage) {
        return Entry{damage.line, "?        line " + std::to_string(damage.line) + ": " + damage.what};
    });
    std::stable_sort(entries.begin(), entries.end(),
                     [](const Entry& a, const Entry& b) { return a.line < b.line; });
    return entries;
}

} // namespace

std::vector<Damage> damagesOf(const RawLog& log, const std::vector<Unit>& units)
{
    std::vector<Damage> damages = damagesBesideUnits(log, units);
    for (const Unit& unit : units) {
        if (const std::string damage = damageOf(unit); !damage.empty()) {
            damages.push_back({unit.line, damage});
        }
    }
    std::stable_sort(damages.begin(), damages.end(),
                     [](const Damage& a, const Damage& b) { return a.line < b.line; });
    return damages;
}

std::vector<std::string> decodedLines(const RawLog& log, const std::vector<Unit>& units,
                                      const CodePage& codePage)
{
    std::vector<std::string> lines;
    for (Entry& entry : entriesOf(log, units, codePage)) {
        lines.push_back(std::move(entry.text));
    }
    return lines;
}

} // namespace telvofm::tools
