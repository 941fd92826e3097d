#include "tools/wire_units.h"

#include <algorithm>
#include <numeric>
#include <string_view>

namespace telvofm::tools {
namespace {

constexpr char requestStart = 0x1C;
constexpr char requestEnd = 0x04;
constexpr char blockStart = 0x3A;
constexpr char lastOfReply = 0x03;
constexpr char refusal = 0x15;
constexpr char probeByte = 0x11;

std::string checksumOf(std::string_view bytes)
{
    const char sum = std::accumulate(bytes.begin(), bytes.end(), '\0',
                                     [](char all, char byte) { return static_cast<char>(all ^ byte); });
    return {sum};
}

// The bytes of one side, taken piece by piece.
class UnitReader
{
public:
    UnitReader(std::string_view bytes, bool fromTill, int lineOfBytes)
        : rest(bytes), isFromTill(fromTill), line(lineOfBytes)
    {
    }

    [[nodiscard]] bool isAtEnd() const { return rest.empty(); }

    Unit next()
    {
        Unit unit{line, isFromTill, UnitKind::unknown, {}, true, Checksum::none, {}, {}, {}};
        if (rest.front() == requestStart && isFromTill) {
            takeRequest(unit);
        } else if (rest.front() == blockStart) {
            takeBlock(unit);
        } else {
            takeSingle(unit);
        }
        return unit;
    }

private:
    void takeSingle(Unit& unit)
    {
        unit.bytes = take(1);
        unit.kind = kindOf(unit.bytes.front());
        if (unit.kind == UnitKind::refused) {
            unit.data = take(1);
            unit.bytes += unit.data;
            unit.isWhole = !unit.data.empty();
        }
    }

    [[nodiscard]] UnitKind kindOf(char byte) const
    {
        switch (byte) {
        case 0x06:
            return UnitKind::accepted;
        case lastOfReply:
            return isFromTill ? UnitKind::lastBlockReceived : UnitKind::enough;
        case requestEnd:
            return UnitKind::noMoreData;
        case refusal:
            return isFromTill ? UnitKind::onceMore : UnitKind::refused;
        case probeByte:
            return isFromTill ? UnitKind::probe : UnitKind::ready;
        case 0x13:
            return UnitKind::busy;
        default:
            return UnitKind::unknown;
        }
    }

    void takeRequest(Unit& unit)
    {
        constexpr std::size_t headSize = 3;
        unit.kind = UnitKind::request;
        std::size_t end = headSize;
        while (end < rest.size() && rest[end] != requestEnd) {
            const std::size_t fieldEnd = rest.find('\0', end);
            if (fieldEnd == std::string_view::npos) {
                break;
            }
            unit.fields.emplace_back(rest.substr(end, fieldEnd - end));
            end = fieldEnd + 1;
        }
        unit.isWhole = end < rest.size() && rest[end] == requestEnd;
        unit.bytes = take(unit.isWhole ? end + 1 : rest.size());
        takeChecksum(unit);
    }

    void takeBlock(Unit& unit)
    {
        unit.kind = UnitKind::block;
        const std::size_t size = rest.size() < 2 ? 0 : static_cast<unsigned char>(rest[1]) + std::size_t{1};
        const std::size_t unitSize = 2 + size + 1;
        unit.isWhole = size != 0 && rest.size() >= unitSize;
        unit.bytes = take(unit.isWhole ? unitSize : rest.size());
        if (unit.isWhole) {
            unit.data = unit.bytes.substr(2, size);
            unit.kind = unit.bytes.back() == lastOfReply ? UnitKind::lastBlock : UnitKind::block;
        }
        takeChecksum(unit);
    }

    void takeChecksum(Unit& unit)
    {
        if (!unit.isWhole) {
            return;
        }
        const std::string expected = checksumOf(unit.bytes);
        const std::string checksum(take(1));
        unit.bytes += checksum;
        if (checksum.empty()) {
            unit.checksum = Checksum::missing;
        } else if (checksum == expected) {
            unit.checksum = Checksum::right;
        } else {
            unit.checksum = Checksum::wrong;
            unit.expectedChecksum = expected;
        }
    }

    std::string_view take(std::size_t count)
    {
        const std::string_view taken = rest.substr(0, count);
        rest.remove_prefix(taken.size());
        return taken;
    }

    std::string_view rest;
    bool isFromTill;
    int line;
};

bool isUnfinished(const Unit& unit)
{
    return unit.kind != UnitKind::request && (!unit.isWhole || unit.checksum == Checksum::missing);
}

bool hasProbesOnly(const Run& run)
{
    return run.isFromTill && run.bytes.find_first_not_of(probeByte) == std::string::npos;
}

} // namespace

std::vector<Unit> unitsOf(const std::vector<Run>& runs)
{
    std::vector<Unit> units;
    std::string unfinished; // what the printer had sent of a unit when the till began to ask
    for (std::size_t i = 0; i < runs.size(); ++i) {
        const std::string bytes = unfinished + runs[i].bytes;
        unfinished.clear();
        for (UnitReader reader(bytes, runs[i].isFromTill, runs[i].line); !reader.isAtEnd();) {
            units.push_back(reader.next());
        }
        const bool goesOn = i + 2 < runs.size() && hasProbesOnly(runs[i + 1]) && !runs[i + 2].isFromTill &&
                            !units.empty() && !units.back().isFromTill && isUnfinished(units.back());
        if (goesOn) {
            unfinished = units.back().bytes;
            units.pop_back();
            for (UnitReader reader(runs[i + 1].bytes, true, runs[i + 1].line); !reader.isAtEnd();) {
                units.push_back(reader.next());
            }
            ++i;
        }
    }
    return units;
}

} // namespace telvofm::tools
