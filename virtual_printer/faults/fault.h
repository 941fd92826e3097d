// A trouble that a printer has on request: which, with what parameters, upon which requests, and for how
// long.
#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace virtual_printer {

enum class FaultKind
{
    refuse,
    requestLost,
    silence,
    acknowledgeLost,
    acknowledgeLate,
    acknowledgeTwice,
    executedNotAcknowledged,
    acknowledgedNotExecuted,
    wrongChecksum,
    flippedBit,
    cut,
    extraBytes,
    noise,
    staleAnswer,
    blockRepeated,
    wrongTerminator,
    wrongLength,
    busy,
    slow,
    split,
    connectionRefused,
    connectionClosed,
    connectionReset,
    halfOpen,
    powerLoss,
    diskFull,
    paperOut,
    ctsOff,
    dsrOff
};

// When a link or the power is lost.
enum class FaultMoment
{
    connection, // as a till connects
    request,    // nothing is carried out
    answer,     // it is carried out, and the till does not hear of it
    afterwards  // the till has its answer
};

// What a waiting till hears upon its probes.
enum class Probes
{
    ready,
    busy,
    ignored
};

// Selects the blocks of uploads, whatever command they belong to.
inline constexpr std::string_view nameOfBlocks = "block";

struct Fault
{
    FaultKind kind = FaultKind::refuse;

    // Which requests: all, or those of a command, by its name or its code, the blocks of its upload included.
    std::string commandName{};
    std::optional<unsigned char> commandCode{};
    // From the so-manieth request and the so-manieth whole call on; what a link sends again by itself is a
    // request, but no call.
    int fromRequest = 1;
    int fromCall = 1;
    // It ends after so many requests, and after so many whole calls; with neither after one request.
    std::optional<int> requests{};
    std::optional<int> calls{};
    double probability = 1;
    std::optional<std::uint32_t> seed{}; // of the chance; 1 when none is given

    unsigned char code = 0; // of a refusal
    std::optional<std::chrono::milliseconds> duration{};
    std::size_t byte = 0;
    int bit = 0;
    std::string bytes{};
    int blocks = 1; // of a reply that are hit, repeats counted
    std::optional<FaultMoment> at{};
    std::optional<Probes> probes{};
};

// What a kind may be told beyond the selection, as bits.
enum Parameter : unsigned
{
    needsCode = 1U << 0U,
    needsDuration = 1U << 1U,
    takesDuration = 1U << 2U,
    needsByte = 1U << 3U,
    takesBit = 1U << 4U,
    needsBytes = 1U << 5U,
    takesBlocks = 1U << 6U,
    takesMoment = 1U << 7U,
    takesProbes = 1U << 8U,
    hasNoSelection = 1U << 9U
};

struct FaultRule
{
    FaultKind kind;
    std::string_view name;
    unsigned parameters;
    std::string_view deed; // what it does to an exchange, for the trace and the documentation
};

// In the order of the kinds.
inline constexpr std::array faultRules = {
    FaultRule{FaultKind::refuse, "refuse", needsCode, "the request was refused and not carried out"},
    FaultRule{FaultKind::requestLost, "requestLost", takesProbes,
              "the request was neither carried out nor answered"},
    FaultRule{FaultKind::silence, "silence", 0,
              "the request was neither carried out nor answered, nor were the probes after it"},
    FaultRule{FaultKind::acknowledgeLost, "acknowledgeLost", takesProbes, "the answer was lost"},
    FaultRule{FaultKind::acknowledgeLate, "acknowledgeLate", needsDuration | takesProbes,
              "the answer came late"},
    FaultRule{FaultKind::acknowledgeTwice, "acknowledgeTwice", takesDuration, "the answer came twice"},
    FaultRule{FaultKind::executedNotAcknowledged, "executedNotAcknowledged", needsCode,
              "the request was carried out and answered with a refusal"},
    FaultRule{FaultKind::acknowledgedNotExecuted, "acknowledgedNotExecuted", 0,
              "the request was accepted and not carried out"},
    FaultRule{FaultKind::wrongChecksum, "wrongChecksum", takesBlocks, "a block had a wrong checksum"},
    FaultRule{FaultKind::flippedBit, "flippedBit", needsByte | takesBit | takesBlocks,
              "a bit of the answer was flipped"},
    FaultRule{FaultKind::cut, "cut", needsByte, "the answer was cut off"},
    FaultRule{FaultKind::extraBytes, "extraBytes", needsBytes, "bytes followed the answer"},
    FaultRule{FaultKind::noise, "noise", needsBytes, "noise came before the answer"},
    FaultRule{FaultKind::staleAnswer, "staleAnswer", 0, "the answer before was sent instead"},
    FaultRule{FaultKind::blockRepeated, "blockRepeated", takesBlocks, "a block was sent twice"},
    FaultRule{FaultKind::wrongTerminator, "wrongTerminator", takesBlocks, "a block had a wrong terminator"},
    FaultRule{FaultKind::wrongLength, "wrongLength", takesBlocks, "a block had a wrong length"},
    FaultRule{FaultKind::busy, "busy", takesDuration, "the printer was busy before it answered"},
    FaultRule{FaultKind::slow, "slow", needsDuration, "the answer came byte by byte"},
    FaultRule{FaultKind::split, "split", needsByte | needsDuration, "the answer came in two pieces"},
    FaultRule{FaultKind::connectionRefused, "connectionRefused", needsDuration | hasNoSelection,
              "connections were refused"},
    FaultRule{FaultKind::connectionClosed, "connectionClosed", takesMoment, "the printer closed the link"},
    FaultRule{FaultKind::connectionReset, "connectionReset", takesMoment, "the printer reset the connection"},
    FaultRule{FaultKind::halfOpen, "halfOpen", takesMoment, "the printer was gone without a word"},
    FaultRule{FaultKind::powerLoss, "powerLoss", takesMoment | takesDuration, "the printer lost its power"},
    FaultRule{FaultKind::diskFull, "diskFull", 0, "the printer's disk was full"},
    FaultRule{FaultKind::paperOut, "paperOut", 0, "the paper was out"},
    FaultRule{FaultKind::ctsOff, "ctsOff", needsDuration, "CTS went off"},
    FaultRule{FaultKind::dsrOff, "dsrOff", needsDuration, "DSR went off"},
};

constexpr const FaultRule& ruleOf(FaultKind kind)
{
    return faultRules[static_cast<std::size_t>(kind)];
}

} // namespace virtual_printer
