#include "tools/decode.h"

#include "tools/exchange_json.h"
#include "tools/paths.h"
#include "tools/unit_words.h"

#include <algorithm>
#include <fstream>
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

std::string sentenceOn(const std::vector<Damage>& damages)
{
    const std::string first = "line " + std::to_string(damages.front().line) + ": " + damages.front().what;
    return damages.size() == 1
               ? "the log is damaged in " + first
               : "the log is damaged in " + std::to_string(damages.size()) + " places, the first in " + first;
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

std::string decodeRawLog(std::string_view rawLog, const CodePage& codePage)
{
    const RawLog log = readRawLog(rawLog);
    std::string text;
    for (const Entry& entry : entriesOf(log, unitsOf(log.runs), codePage)) {
        text += entry.text + "\n";
    }
    return text;
}

std::string readNamedFile(const std::string& file)
{
    std::error_code ignored;
    std::ifstream stream(pathOf(file), std::ios::binary);
    if (!stream || std::filesystem::is_directory(pathOf(file), ignored)) {
        throw Failure(Ending::noFile, file + " cannot be read; name a log that is there");
    }
    return {std::istreambuf_iterator<char>(stream), {}};
}

Ending decode(const std::string& file, const CodePage& codePage, Output& output)
{
    const RawLog log = readRawLog(readNamedFile(file));
    const std::vector<Unit> units = unitsOf(log.runs);
    if (units.empty()) {
        throw Failure(Ending::noFile, file + " is no raw log; name a file that setRawLogginOn has made");
    }
    for (const Entry& entry : entriesOf(log, units, codePage)) {
        output.line(entry.text);
    }
    output.document["exchanges"] = jsonOf(exchangesOf(units), codePage);
    const std::vector<Damage> damages = damagesOf(log, units);
    output.document["damages"] = jsonOf(damages);
    if (damages.empty()) {
        return Ending::done;
    }
    std::fprintf(stderr, "telvofm: %s\n", sentenceOn(damages).c_str());
    return Ending::trouble;
}

} // namespace telvofm::tools
