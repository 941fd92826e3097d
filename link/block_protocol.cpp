#include "link/block_protocol.h"

#include "link/standard_output.h"

#include <algorithm>
#include <array>
#include <exception>
#include <numeric>
#include <utility>

namespace telvofm {
namespace {

using Byte = LinkDriver::Byte;

constexpr Byte acknowledge = 0x06;
constexpr Byte negative = 0x15;
constexpr Byte blockStart = 0x3A;
constexpr Byte moreBlocksFollow = 0x17;
constexpr Byte lastBlock = 0x03;
constexpr Byte noMoreData = 0x04;

constexpr int tries = 3;
constexpr std::size_t largestPiece = 256;

bool isLastTry(int attempt)
{
    return attempt + 1 == tries;
}

// ":", the length less one, the piece and the terminator.
std::string_view buildBlock(std::array<char, largestPiece + 3>& storage, std::string_view piece,
                            Byte terminator)
{
    storage[0] = static_cast<char>(blockStart);
    storage[1] = static_cast<char>(piece.size() - 1);
    std::copy(piece.begin(), piece.end(), storage.begin() + 2);
    storage[piece.size() + 2] = static_cast<char>(terminator);
    return {storage.data(), piece.size() + 3};
}

} // namespace

Byte checksum(std::string_view bytes)
{
    return std::accumulate(bytes.begin(), bytes.end(), Byte{0}, [](Byte sum, char byte) {
        return static_cast<Byte>(sum ^ static_cast<Byte>(byte));
    });
}

BlockProtocol::BlockProtocol(std::string connectionText, const ProtocolRules& linkRules)
    : LinkDriver(std::move(connectionText)), rules(linkRules)
{
}

// Runs an exchange; what the standard library throws in it becomes a code of our own.
template <typename Run>
auto BlockProtocol::translated(std::int32_t runtimeFailureCode, Run run)
{
    try {
        return run();
    } catch (const Telvo06FMException&) {
        throw;
    } catch (const std::exception& failure) {
        if (rules.printsRuntimeFailure) {
            writeLine(failure.what());
        }
        throw Telvo06FMException(runtimeFailureCode);
    }
}

void BlockProtocol::endIfInterrupted() const
{
    if (mustEnd()) {
        throw Telvo06FMException(rules.closedLink);
    }
}

Byte BlockProtocol::sendCommand(std::string_view request)
{
    return translated(rules.commandRuntimeFailure, [&] { return runCommand(request); });
}

Byte BlockProtocol::runCommand(std::string_view request)
{
    const Byte requestChecksum = checksum(request);
    Byte errorCode = 0;
    for (int attempt = 0; attempt < tries; ++attempt) {
        const auto answer = ask(request, requestChecksum, Exchange::command, attempt);
        if (!answer) {
            continue;
        }
        if (*answer == acknowledge) {
            return *answer;
        }
        if (*answer != negative && !rules.anyByteRefusesRequest) {
            throw Telvo06FMException(code::unexpectedAnswer);
        }
        errorCode = readErrorCode();
    }
    throw Telvo06FMException(errorCode);
}

void BlockProtocol::sendBlocks(std::string_view data, bool lastPart)
{
    translated(rules.runtimeFailure, [&] { runUpload(data, lastPart); });
}

void BlockProtocol::runUpload(std::string_view data, bool lastPart)
{
    std::array<char, largestPiece + 3> storage;
    while (!data.empty()) {
        const std::string_view piece = data.substr(0, largestPiece);
        data.remove_prefix(piece.size());
        const Byte terminator = data.empty() && lastPart ? lastBlock : moreBlocksFollow;
        if (!sendBlock(buildBlock(storage, piece, terminator))) {
            return;
        }
    }
}

// False: the printer wants no more, although pieces may remain.
bool BlockProtocol::sendBlock(std::string_view block)
{
    const Byte blockChecksum = checksum(block);
    for (int attempt = 0; attempt < tries; ++attempt) {
        const auto answer = ask(block, blockChecksum, Exchange::upload, attempt);
        if (!answer) {
            continue;
        }
        if (*answer == acknowledge) {
            return true;
        }
        if (*answer == lastBlock || *answer == noMoreData) {
            return false;
        }
        if (*answer == negative || rules.anyByteRefusesRequest) {
            readErrorCode();
        }
    }
    throw Telvo06FMException(rules.uploadFailure);
}

std::string BlockProtocol::query(std::string_view request)
{
    return translated(rules.runtimeFailure, [&] { return runQuery(request, Exchange::query); });
}

std::string BlockProtocol::queryStrict(std::string_view request)
{
    return translated(rules.runtimeFailure, [&] { return runQuery(request, Exchange::strictQuery); });
}

std::string BlockProtocol::runQuery(std::string_view request, Exchange exchange)
{
    const bool skipsStrayBytes = exchange == Exchange::query && rules.querySkipsStrayBytes;
    const Byte requestChecksum = checksum(request);
    Byte errorCode = 0;
    for (int attempt = 0; attempt < tries; ++attempt) {
        const auto first = ask(request, requestChecksum, exchange, attempt);
        if (!first) {
            continue;
        }
        Byte answer = *first;
        while (answer != blockStart && answer != noMoreData && answer != negative) {
            if (!skipsStrayBytes) {
                throw Telvo06FMException(code::unexpectedAnswer);
            }
            endIfInterrupted();
            answer = readAnswerByte();
        }
        if (answer == blockStart) {
            return receiveBlocks(exchange);
        }
        if (answer == noMoreData) {
            return {};
        }
        errorCode = readErrorCode();
    }
    throw Telvo06FMException(errorCode);
}

// Sends a unit with its checksum byte and reads the first answer byte; nothing when silence may cost another
// try.
std::optional<Byte> BlockProtocol::ask(std::string_view unit, Byte unitChecksum, Exchange exchange,
                                       int attempt)
{
    endIfInterrupted(); // also an exchange that had to wait for its turn
    beginTry(exchange);
    writeRaw(unit);
    writeProtocolByte(unitChecksum);
    try {
        return readAnswerByte();
    } catch (const Telvo06FMException& failure) {
        if (failure.code == code::timeout && rules.silenceCostsTry && !isLastTry(attempt)) {
            return std::nullopt;
        }
        throw;
    }
}

// The byte after a negative reply; it is data, whatever its value.
Byte BlockProtocol::readErrorCode()
{
    char errorCode = 0;
    readData(&errorCode, 1);
    if (rules.negativeReplyEndsExchange) {
        throw Telvo06FMException(static_cast<Byte>(errorCode));
    }
    return static_cast<Byte>(errorCode);
}

std::string BlockProtocol::receiveBlocks(Exchange exchange)
{
    std::string reply;
    while (receiveBlock(reply, exchange)) {
        endIfInterrupted();
    }
    return reply;
}

// Receives one block, with repeats of a damaged one; true when another block follows. Its ":" has been read.
bool BlockProtocol::receiveBlock(std::string& reply, Exchange exchange)
{
    constexpr std::size_t head = 2; // ":" and the length byte
    std::array<char, head + largestPiece + 2> block;
    block[0] = static_cast<char>(blockStart);
    for (int attempt = 0; attempt < tries; ++attempt) {
        readData(&block[1], 1);
        const std::size_t dataLength = static_cast<Byte>(block[1]) + std::size_t{1};
        readData(&block[head], dataLength + 2);
        const std::string_view checked(block.data(), head + dataLength + 1);
        if (checksum(checked) == static_cast<Byte>(block[head + dataLength + 1])) {
            reply.append(checked.substr(head, dataLength));
            const auto terminator = static_cast<Byte>(checked.back());
            if (terminator == moreBlocksFollow) {
                writeProtocolByte(acknowledge);
                return anotherBlockFollows();
            }
            if (terminator == lastBlock) {
                // A good last block is answered with its own terminator, not with an acknowledge: this is
                // meant.
                writeProtocolByte(lastBlock);
                return false;
            }
            // A good block with an unknown terminator counts as damaged although its data stays: this is
            // meant.
            if (exchange == Exchange::query && rules.queryReportsUnknownTerminator) {
                writeLine("Odpoved na potvrdenie prijatia bloku: ");
            }
        }
        writeProtocolByte(negative);
        const Byte answer = readAnswerToDamage(attempt);
        if (answer == noMoreData) {
            return false;
        }
        if (answer != blockStart) {
            throw Telvo06FMException(code::unexpectedAnswer);
        }
    }
    throw Telvo06FMException(code::unexpectedAnswer);
}

bool BlockProtocol::anotherBlockFollows()
{
    Byte answer = readAnswerByte();
    while (answer != blockStart && answer != noMoreData) {
        endIfInterrupted();
        answer = readAnswerByte();
    }
    return answer == blockStart;
}

// A block that came damaged three times has decided the exchange: what goes wrong after that changes no code
// but for a link that is being closed.
Byte BlockProtocol::readAnswerToDamage(int attempt)
{
    try {
        return readAnswerByte();
    } catch (const Telvo06FMException&) {
        endIfInterrupted();
        if (isLastTry(attempt)) {
            throw Telvo06FMException(code::unexpectedAnswer);
        }
        throw;
    }
}

} // namespace telvofm
