#include "tools/decoded_lines.h"

#include "tools/unit_words.h"

#include <algorithm>
#include <iterator>

namespace telvofm::tools {
namespace {

// What stands at a line of the log.
struct Entry
{
    int line;
    std::string text;
};

std::vector<Entry> entriesOf(const RawLog& log, const std::vector<Unit>& units, const CodePage& codePage)
{
    std::vector<Entry> entries;
    std::transform(units.begin(), units.end(), std::back_inserter(entries), [&](const Unit& unit) {
        return Entry{unit.line, (unit.isFromTill ? "till     " : "printer  ") + wordsOf(unit, codePage)};
    });
    std::transform(
        log.damages.begin(), log.damages.end(), std::back_inserter(entries), [](const Damage& damage) {
            return Entry{damage.line, "?        line " + std::to_string(damage.line) + ": " + damage.what};
        });
    std::stable_sort(entries.begin(), entries.end(),
                     [](const Entry& a, const Entry& b) { return a.line < b.line; });
    return entries;
}

} // namespace

std::vector<Damage> damagesOf(const RawLog& log, const std::vector<Unit>& units)
{
    std::vector<Damage> damages = log.damages;
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
