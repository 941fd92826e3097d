// Any text as a raw log, and any bytes as one that the library has written: whatever is in it, nothing of
// what was said gets lost or changes sides on the way through units and exchanges to the lines that a person
// reads.
#include "tests/fuzz/fuzzed_bytes.h"
#include "tools/decoded_lines.h"
#include "tools/exchanges.h"

#include <algorithm>
#include <array>

namespace {

using namespace telvofm::tools;
using telvofm::fuzz::require;

// What each side has said.
template <typename Pieces>
std::array<std::string, 2> saidIn(const Pieces& pieces)
{
    std::array<std::string, 2> said;
    for (const auto& piece : pieces) {
        said[piece.isFromTill ? 1 : 0] += piece.bytes;
    }
    return said;
}

void decode(const RawLog& log, const CodePage& codePage)
{
    const std::vector<Unit> units = unitsOf(log.runs);
    require(saidIn(units) == saidIn(log.runs));
    std::size_t inExchanges = 0;
    for (const Exchange& exchange : exchangesOf(units)) {
        require(exchange.request.kind == UnitKind::request && exchange.request.isFromTill);
        inExchanges += 1 + exchange.units.size();
    }
    require(inExchanges <= units.size());
    require(damagesOf(log, units).size() >= log.damages.size());
    const auto lines = decodedLines(log, units, codePage);
    require(lines.size() >= log.damages.size() && (units.empty() || !lines.empty()));
    for (const std::string& line : lines) {
        require(line.find('\n') == std::string::npos);
    }
}

// A run begins where the side changes: each byte of the input is a byte of the dialogue below 0x80, and its
// highest bit tells whose.
RawLog writtenAndRead(std::string_view bytes)
{
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text;
    std::array<std::string, 2> said;
    int side = -1;
    for (const char byte : bytes) {
        const auto value = static_cast<unsigned char>(byte);
        const int now = value >> 7U;
        if (now != side) {
            text += text.empty() ? "" : "\n";
            text += now == 1 ? "C: " : "S: ";
            side = now;
        }
        const auto sent = static_cast<unsigned char>(value & 0x7FU);
        text += {digits[sent >> 4U], digits[sent & 0x0FU], ' '};
        said[static_cast<std::size_t>(now)] += static_cast<char>(sent);
    }
    RawLog log = readRawLog(text);
    require(log.damages.empty() && saidIn(log.runs) == said);
    return log;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    constexpr std::size_t longest = 280; // what goes beyond shows nothing new, and takes its time
    const std::string_view text(reinterpret_cast<const char*>(data), std::min(size, longest));
    decode(readRawLog(text), windows1250);
    decode(writtenAndRead(text), codePage852);
    return 0;
}
