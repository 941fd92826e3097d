#include "tools/unit_words.h"

#include "tools/command_names.h"
#include "tools/hexadecimal.h"
#include "tools/windows_1250.h"

#include <numeric>

namespace telvofm::tools {
namespace {

std::string numberOf(char byte)
{
    return std::to_string(static_cast<unsigned char>(byte));
}

std::string quoted(std::string_view text, const CodePage& codePage)
{
    return "\"" + readableOnOneLine(text, codePage) + "\"";
}

std::string wordsOf(UnitKind kind, bool isFromTill)
{
    switch (kind) {
    case UnitKind::accepted:
        return isFromTill ? "block received, go on" : "accepted";
    case UnitKind::lastBlockReceived:
        return "last block received";
    case UnitKind::enough:
        return "enough";
    case UnitKind::noMoreData:
        return "no more data";
    case UnitKind::onceMore:
        return "block damaged, once more";
    case UnitKind::probe:
        return "are you there?";
    case UnitKind::ready:
        return "ready";
    case UnitKind::busy:
        return "busy";
    default:
        return "unknown byte";
    }
}

std::string wordsOfChecksum(const Unit& unit)
{
    switch (unit.checksum) {
    case Checksum::right:
        return ", checksum ok";
    case Checksum::missing:
        return ", the checksum is missing";
    case Checksum::wrong:
        return ", checksum wrong, " + hexadecimal(unit.expectedChecksum) + " expected";
    case Checksum::none:
        break;
    }
    return {};
}

std::string wordsOfRequest(const Unit& unit, const CodePage& codePage)
{
    if (!unit.isWhole) {
        return "a request that is broken off: " + hexadecimal(unit.bytes);
    }
    const std::string start = commandOf(unit) + " to device " + numberOf(unit.bytes[1]);
    return std::accumulate(unit.fields.begin(), unit.fields.end(), start,
                           [&](const std::string& words, const std::string& field) {
                               return words + " " + quoted(field, codePage);
                           }) +
           wordsOfChecksum(unit);
}

std::string wordsOfBlock(const Unit& unit, const CodePage& codePage)
{
    if (!unit.isWhole) {
        return "a block that is broken off: " + hexadecimal(unit.bytes);
    }
    return (unit.kind == UnitKind::lastBlock ? "last block " : "block ") + quoted(unit.data, codePage) +
           wordsOfChecksum(unit);
}

} // namespace

std::string commandOf(const Unit& request)
{
    const std::string name(commandName(static_cast<unsigned char>(request.bytes[2])));
    return name.empty() ? "unknown command " + hexadecimal(request.bytes.substr(2, 1)) : name;
}

std::string wordsOf(const Unit& unit, const CodePage& codePage)
{
    switch (unit.kind) {
    case UnitKind::request:
        return wordsOfRequest(unit, codePage);
    case UnitKind::block:
    case UnitKind::lastBlock:
        return wordsOfBlock(unit, codePage);
    case UnitKind::refused:
        return unit.isWhole ? "refused with error " + numberOf(unit.data.front())
                            : "refused, the error code is missing";
    case UnitKind::unknown:
        return "unknown byte " + hexadecimal(unit.bytes);
    default:
        return wordsOf(unit.kind, unit.isFromTill);
    }
}

std::string damageOf(const Unit& unit)
{
    const std::string what = unit.kind == UnitKind::request   ? "request"
                             : unit.kind == UnitKind::refused ? "refusal"
                                                              : "block";
    if (!unit.isWhole) {
        return "a " + what + " is broken off";
    }
    return unit.checksum == Checksum::missing ? "the checksum of a " + what + " is missing" : "";
}

} // namespace telvofm::tools
