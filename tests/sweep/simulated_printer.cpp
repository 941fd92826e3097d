#include "tests/sweep/simulated_printer.h"

#include <algorithm>
#include <array>

namespace telvofm::test::sweep {
namespace {

constexpr Byte requestStart = 0x1C;
constexpr Byte requestEnd = 0x04;
constexpr Byte blockBegins = 0x3A;
constexpr Byte accepted = 0x06;
constexpr Byte refusedAnswer = 0x15;
constexpr Byte furtherBlocks = 0x17;
constexpr Byte finalBlock = 0x03;
constexpr Byte nothingMore = 0x04;
constexpr Byte probe = 0x11;
constexpr Byte isReady = 0x11;
constexpr Byte isBusy = 0x13;

Byte byteAt(std::string_view text, std::size_t index)
{
    return static_cast<Byte>(text[index]);
}

Byte sumOf(std::string_view unit)
{
    Byte sum = 0;
    for (const char byte : unit) {
        sum = static_cast<Byte>(sum ^ static_cast<Byte>(byte));
    }
    return sum;
}

// A request ends with 0x04 where a field would begin.
bool isWholeRequest(std::string_view unit)
{
    constexpr std::size_t head = 3; // the start, the address and the command
    return unit.size() > head && byteAt(unit, unit.size() - 1) == requestEnd &&
           (unit.size() == head + 1 || unit[unit.size() - 2] == '\0');
}

bool isWholeBlock(std::string_view unit)
{
    constexpr std::size_t frame = 3; // ":", the length and the terminator
    return unit.size() > 1 && unit.size() == frame + byteAt(unit, 1) + 1;
}

// Commands that are answered with data.
bool fetches(Byte command)
{
    constexpr auto codes =
        std::to_array<Byte>({0x79, 0x7B, 0x92, 0x93, 0x97, 0x98, 0x99, 0x9A, 0x9B, 0x9C, 0x9D, 0x9F, 0xAF});
    return std::find(codes.begin(), codes.end(), command) != codes.end();
}

// Commands that announce data blocks.
bool announcesUpload(Byte command)
{
    constexpr auto codes = std::to_array<Byte>({0xD0, 0xD1, 0xD2, 0xDE, 0xED});
    return std::find(codes.begin(), codes.end(), command) != codes.end();
}

} // namespace

// Each piece begins with the number of its request, so that no two replies are the same, and holds the bytes
// that mean something outside of blocks. The extract of a single document is empty, and the printer says
// that of the intervals by numbers only behind their one piece.
std::vector<std::string> SimulatedPrinter::replyOf(int number, Byte command)
{
    constexpr Byte extractU = 0x99;
    constexpr Byte intervalByNumbers = 0x9D;
    if (command == extractU) {
        return {};
    }
    const std::string start = "#" + std::to_string(number) + ".";
    const std::string meaningful = "\x11\x13\x06\x15\x3A\x04\x03\x17\x1C";
    if (command == intervalByNumbers) {
        return {start + "a" + meaningful + "end"};
    }
    return {start + "a" + meaningful, start + "b" + meaningful + "middle", start + "c end"};
}

void SimulatedPrinter::hear(Byte byte, Milliseconds now)
{
    if (state != State::idle && now - lastHeard > longestPause) {
        state = State::idle; // what does not go on is given up
    }
    lastHeard = now;
    switch (state) {
    case State::idle:
        hearBetweenUnits(byte, now);
        return;
    case State::request:
        unit.push_back(static_cast<char>(byte));
        state = isWholeRequest(unit) ? State::requestChecksum : State::request;
        return;
    case State::requestChecksum:
        state = State::idle;
        ++units;
        endRequest(byte, now);
        return;
    case State::block:
        unit.push_back(static_cast<char>(byte));
        state = isWholeBlock(unit) ? State::blockChecksum : State::block;
        return;
    case State::blockChecksum:
        state = State::idle;
        ++units;
        endUploadedBlock(byte);
        return;
    }
}

void SimulatedPrinter::hearBetweenUnits(Byte byte, Milliseconds now)
{
    if (byte == requestStart || (byte == blockBegins && takesUpload)) {
        unit.assign(1, static_cast<char>(byte));
        state = byte == requestStart ? State::request : State::block;
        if (byte == requestStart) {
            awaitsBlockAnswer = false;
            takesUpload = false;
        }
    } else if (awaitsBlockAnswer && (byte == accepted || byte == refusedAnswer || byte == finalBlock)) {
        if (byte == refusedAnswer) {
            sendPiece();
            return;
        }
        awaitsBlockAnswer = false;
        if (byte == accepted) {
            ++piece;
            sendPiece();
        }
    } else if (byte == probe && probes != Probes::unknown) {
        if (now < busyUntil) {
            say(isBusy, Role::flow);
        } else if (probes == Probes::answersAlways || !awaitsBlockAnswer) {
            say(isReady, Role::flow);
        }
    }
}

void SimulatedPrinter::endRequest(Byte checksum, Milliseconds now)
{
    HeardRequest request{static_cast<int>(requests.size()) + 1, unit, std::nullopt, {}, {}, now};
    const Byte address = byteAt(unit, 1);
    const Byte command = byteAt(unit, 2);
    if (checksum != sumOf(unit)) {
        request.refusal = damagedUnit;
    } else if (const auto refusal = refusals.find(address); refusal != refusals.end()) {
        request.refusal = refusal->second;
    }
    pieces.clear();
    if (!request.refusal && fetches(command)) {
        pieces = replyOf(request.number, command);
        for (const std::string& one : pieces) {
            request.reply += one;
        }
    }
    const auto refusal = request.refusal;
    requests.push_back(std::move(request));
    if (refusal) {
        sayRefusal(*refusal);
    } else if (fetches(command)) {
        piece = 0;
        sendPiece();
    } else {
        takesUpload = announcesUpload(command);
        say(accepted, Role::answer);
    }
}

void SimulatedPrinter::endUploadedBlock(Byte checksum)
{
    const Byte terminator = byteAt(unit, unit.size() - 1);
    if (checksum != sumOf(unit) || (terminator != furtherBlocks && terminator != finalBlock)) {
        sayRefusal(damagedUnit);
        return;
    }
    requests.back().uploaded.push_back(unit);
    say(accepted, Role::answer);
}

void SimulatedPrinter::sendPiece()
{
    if (piece >= pieces.size()) {
        say(nothingMore, Role::answer);
        return;
    }
    constexpr Byte intervalByNumbers = 0x9D;
    const bool isFinal = piece + 1 == pieces.size() && byteAt(requests.back().bytes, 2) != intervalByNumbers;
    const std::string& data = pieces[piece];
    std::string block = ":";
    block.push_back(static_cast<char>(data.size() - 1));
    block += data;
    block.push_back(static_cast<char>(isFinal ? finalBlock : furtherBlocks));
    say(blockBegins, Role::blockStart);
    say(byteAt(block, 1), Role::blockLength);
    for (const char byte : data) {
        say(static_cast<Byte>(byte), Role::blockData);
    }
    say(byteAt(block, block.size() - 1), Role::blockTerminator);
    say(sumOf(block), Role::blockChecksum);
    awaitsBlockAnswer = true;
}

void SimulatedPrinter::say(int value, Role role)
{
    said.push_back({static_cast<Byte>(value), role, static_cast<int>(units)});
}

void SimulatedPrinter::sayRefusal(int code)
{
    refusalsSaid.push_back(code);
    say(refusedAnswer, Role::answer);
    say(code, Role::errorCode);
}

} // namespace telvofm::test::sweep
