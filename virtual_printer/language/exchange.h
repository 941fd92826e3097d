// The device's side of the block protocol, without a socket: bytes of the till go in one by one, and what
// they mean comes out. Data goes to the till in blocks that it acknowledges; uploads come in in blocks.
#pragma once

#include "virtual_printer/language/reply_data.h"
#include "virtual_printer/language/request.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <variant>

namespace virtual_printer {

// What the byte that was taken last has completed.
struct Nothing
{
};
struct DamagedRequest // its checksum byte does not fit
{
};
struct Block // of an upload that was announced
{
    std::string data;
    bool isLast = false;
};
struct DamagedBlock
{
};
struct RepeatedBlock // the one that has ended an upload comes again: the till has not heard of its acceptance
{
};
struct Probe // the till asks whether somebody is there
{
};
struct MoreOfReply // the till wants the next block, or the last one again
{
    std::string bytes; // to send; empty when the reply is complete, or its rest is lost
    bool isLost = false;
    std::string fetched{}; // the data of this block, where it was not there when the reply began
};
using Incoming =
    std::variant<Nothing, Request, DamagedRequest, Block, DamagedBlock, RepeatedBlock, Probe, MoreOfReply>;

class Exchange
{
public:
    Incoming take(unsigned char byte);

    // Nothing has begun: a byte that was taken last and completed nothing was noise.
    [[nodiscard]] bool isBetween() const { return expecting == Expecting::start; }

    // A request or block that has begun and is not whole; a reply that is not acknowledged stays.
    void forgetUnfinished();

    // Blocks of an upload are taken only while they are expected; otherwise they are noise, but for the last
    // one until the next request comes.
    void expectBlocks(bool areExpected);
    // The first bytes of a reply with this data. A till that does not acknowledge it and asks something else
    // has given it up. Enough of the data for the first block is fetched; the rest is as the till asks for
    // it, and nothing more is said when it cannot be: an end would make half a reply a whole one.
    std::string beginReply(ReplyData data);

    // The bytes of the short answers.
    static std::string acceptance();
    static std::string refusal(unsigned char code);
    static std::string readiness();
    static std::string business();

private:
    Incoming takeOfRequest(unsigned char byte);
    Incoming takeOfBlock(unsigned char byte);
    Incoming takeOfRepeatedBlock();
    Incoming takeAnswerToReply(unsigned char byte);
    std::string nextBlock();
    void endReply();

    enum class Expecting
    {
        start,
        request,
        requestChecksum,
        block,
        repeatedBlock,
        answerToReply
    };

    Expecting expecting = Expecting::start;
    RequestReader reader;
    std::string incomingBlock;
    std::string lastBlockTaken; // that has ended an upload
    std::size_t repeated = 0;   // bytes of it that have come again
    bool blocksAreExpected = false;
    ReplyData reply;
    bool replyIsFetched = false; // as the till asks for it
    std::string lastSent;        // for a repeat
    int tries = 0;
};

} // namespace virtual_printer
