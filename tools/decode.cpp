#include "tools/decode.h"

#include "tools/decoded_lines.h"
#include "tools/exchange_json.h"
#include "tools/paths.h"

#include <fstream>
#include <iterator>

namespace telvofm::tools {
namespace {

std::string sentenceOn(const std::vector<Damage>& damages)
{
    const std::string first = "line " + std::to_string(damages.front().line) + ": " + damages.front().what;
    return damages.size() == 1
               ? "the log is damaged in " + first
               : "the log is damaged in " + std::to_string(damages.size()) + " places, the first in " + first;
}

} // namespace

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
    for (const std::string& line : decodedLines(log, units, codePage)) {
        output.line(line);
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
