#include "virtual_printer/language/exchange.h"

#include <algorithm>
#include <numeric>
#include <stdexcept>
#include <utility>

namespace virtual_printer {
namespace {

constexpr unsigned char requestStart = 0x1C;
constexpr unsigned char blockStart = 0x3A;
constexpr unsigned char accepted = 0x06;
constexpr unsigned char refused = 0x15;
constexpr unsigned char lastBlock = 0x03;
constexpr unsigned char moreBlocks = 0x17;
constexpr unsigned char noData = 0x04;
constexpr unsigned char ready = 0x11;
constexpr unsigned char busy = 0x13;
constexpr int triesOfABlock = 3;

unsigned char checksumOf(std::string_view bytes)
{
    return std::accumulate(bytes.begin(), bytes.end(), static_cast<unsigned char>(0),
                           [](unsigned char sum, char byte) {
                               return static_cast<unsigned char>(sum ^ static_cast<unsigned char>(byte));
                           });
}

// What a block has of its reply.
std::string_view dataOf(std::string_view block)
{
    constexpr std::size_t head = 2; // ":" and the length
    constexpr std::size_t tail = 2; // the terminator and the checksum byte
    return block.substr(head, block.size() - head - tail);
}

std::string single(unsigned char byte)
{
    return {static_cast<char>(byte)};
}

} // namespace

Incoming Exchange::take(unsigned char byte)
{
    switch (expecting) {
    case Expecting::request:
    case Expecting::requestChecksum:
        return takeOfRequest(byte);
    case Expecting::block:
        return takeOfBlock(byte);
    case Expecting::repeatedBlock:
        if (static_cast<unsigned char>(lastBlockTaken[repeated]) == byte) {
            return takeOfRepeatedBlock();
        }
        break; // it was noise
    case Expecting::answerToReply:
        if (byte != requestStart) {
            return takeAnswerToReply(byte);
        }
        endReply(); // the till has given it up: this begins its next request
        break;
    case Expecting::start:
        break;
    }
    expecting = Expecting::start;
    if (byte == requestStart) {
        reader = RequestReader();
        expecting = Expecting::request;
    } else if (byte == blockStart && blocksAreExpected) {
        incomingBlock = single(byte);
        expecting = Expecting::block;
    } else if (byte == blockStart && !lastBlockTaken.empty()) {
        repeated = 0;
        return takeOfRepeatedBlock();
    } else if (byte == ready) {
        return Probe{};
    }
    return Nothing{};
}

Incoming Exchange::takeOfRequest(unsigned char byte)
{
    if (expecting == Expecting::request) {
        if (reader.take(byte)) {
            expecting = Expecting::requestChecksum;
        } else if (reader.isTooLong()) {
            expecting = Expecting::start; // noise
        }
        return Nothing{};
    }
    expecting = Expecting::start;
    if (byte != reader.checksum()) {
        return DamagedRequest{};
    }
    incomingBlock.clear();
    lastBlockTaken.clear();
    return reader.request();
}

Incoming Exchange::takeOfBlock(unsigned char byte)
{
    constexpr std::size_t frame = 4; // ":", the length, the terminator, the checksum byte
    incomingBlock.push_back(static_cast<char>(byte));
    const std::size_t dataSize = static_cast<unsigned char>(incomingBlock[1]) + std::size_t{1};
    if (incomingBlock.size() < dataSize + frame) {
        return Nothing{};
    }
    expecting = Expecting::start;
    const std::string_view checked(incomingBlock.data(), dataSize + frame - 1);
    const auto terminator = static_cast<unsigned char>(checked.back());
    if (checksumOf(checked) != byte || (terminator != lastBlock && terminator != moreBlocks)) {
        return DamagedBlock{};
    }
    return Block{std::string(checked.substr(2, dataSize)), terminator == lastBlock};
}

// Only these very bytes: anything else that begins as a block is noise here.
Incoming Exchange::takeOfRepeatedBlock()
{
    ++repeated;
    expecting = repeated < lastBlockTaken.size() ? Expecting::repeatedBlock : Expecting::start;
    return expecting == Expecting::start ? Incoming(RepeatedBlock{}) : Incoming(Nothing{});
}

void Exchange::expectBlocks(bool areExpected)
{
    if (blocksAreExpected && !areExpected) {
        lastBlockTaken = std::exchange(incomingBlock, {}); // empty when a request has ended the upload
    }
    blocksAreExpected = areExpected;
}

Incoming Exchange::takeAnswerToReply(unsigned char byte)
{
    if (byte == refused && ++tries < triesOfABlock) {
        return MoreOfReply{lastSent};
    }
    if (byte == refused) {
        endReply();
        return MoreOfReply{single(noData)};
    }
    if (byte != accepted && byte != lastBlock) {
        return Nothing{}; // a probe of an impatient till, or noise
    }
    try {
        MoreOfReply more{.bytes = nextBlock()};
        if (replyIsFetched && !more.bytes.empty()) {
            more.fetched = dataOf(more.bytes);
        }
        return more;
    } catch (const std::runtime_error&) {
        endReply();
        return MoreOfReply{.bytes = {}, .isLost = true};
    }
}

void Exchange::forgetUnfinished()
{
    if (expecting != Expecting::answerToReply) {
        expecting = Expecting::start;
    }
}

std::string Exchange::beginReply(ReplyData data)
{
    reply = std::move(data);
    replyIsFetched = !reply.isAllFetched();
    std::string first = nextBlock();
    return first.empty() ? single(noData) : first;
}

void Exchange::endReply()
{
    reply = ReplyData();
    expecting = Expecting::start;
}

std::string Exchange::nextBlock()
{
    reply.fetch();
    const std::string_view piece = reply.takeBlock();
    if (piece.empty()) {
        endReply();
        return {};
    }
    lastSent = {static_cast<char>(blockStart), static_cast<char>(piece.size() - 1)};
    lastSent.append(piece).append(single(reply.fetched().empty() ? lastBlock : moreBlocks));
    lastSent.append(single(checksumOf(lastSent)));
    tries = 0;
    expecting = Expecting::answerToReply;
    return lastSent;
}

std::string Exchange::acceptance()
{
    return single(accepted);
}

std::string Exchange::refusal(unsigned char code)
{
    return single(refused) + single(code);
}

std::string Exchange::readiness()
{
    return single(ready);
}

std::string Exchange::business()
{
    return single(busy);
}

} // namespace virtual_printer
