// The printer's side of the block protocol under any bytes that a till might send. Whatever it takes for a
// request or a block must stand in these bytes, and what it sends must be sound blocks of its reply.
#include "virtual_printer/language/exchange.h"

#include <cstdint>
#include <cstdlib>
#include <numeric>
#include <string>
#include <string_view>

namespace {

using namespace virtual_printer;

constexpr std::size_t largestPiece = 256;

void require(bool isSound)
{
    if (!isSound) {
        std::abort();
    }
}

std::string withChecksum(std::string unit)
{
    const int sum = std::accumulate(unit.begin(), unit.end(), 0, [](int x, char byte) { return x ^ byte; });
    return unit + static_cast<char>(sum);
}

std::string bytesOf(const Request& request)
{
    std::string unit = {'\x1C', static_cast<char>(request.address), static_cast<char>(request.command)};
    for (const std::string& field : request.fields) {
        unit += field + '\0';
    }
    return withChecksum(unit + '\x04');
}

std::string blockOf(std::string_view data, char terminator)
{
    require(!data.empty() && data.size() <= largestPiece);
    std::string unit = {':', static_cast<char>(data.size() - 1)};
    return withChecksum(unit.append(data) + terminator);
}

// A printer that accepts every request: odd commands announce an upload, the others are answered with a reply
// whose length the second field's is.
class Printer
{
public:
    void take(std::string_view sofar)
    {
        const auto incoming = exchange.take(static_cast<unsigned char>(sofar.back()));
        if (const auto* request = std::get_if<Request>(&incoming)) {
            require(sofar.ends_with(bytesOf(*request)));
            begin(*request);
        } else if (const auto* block = std::get_if<Block>(&incoming)) {
            require(expectsBlocks);
            const std::string bytes = blockOf(block->data, block->isLast ? '\x03' : '\x17');
            require(sofar.ends_with(bytes));
            if (block->isLast) {
                expectsBlocks = false;
                exchange.expectBlocks(false);
                lastBlock = bytes;
            }
        } else if (std::holds_alternative<RepeatedBlock>(incoming)) {
            require(!lastBlock.empty() && sofar.ends_with(lastBlock));
        } else if (std::holds_alternative<DamagedBlock>(incoming)) {
            require(expectsBlocks);
        } else if (std::holds_alternative<Probe>(incoming)) {
            require(sofar.back() == '\x11');
        } else if (const auto* more = std::get_if<MoreOfReply>(&incoming)) {
            goOn(more->bytes, sofar.back());
        }
    }

private:
    void begin(const Request& request)
    {
        expectsBlocks = (request.command & 1U) != 0;
        lastBlock.clear();
        exchange.expectBlocks(expectsBlocks);
        reply.clear();
        if (expectsBlocks) {
            return;
        }
        constexpr std::size_t bytesForAByte = 32; // so that short inputs reach long replies
        reply.assign(request.fields.size() < 2 ? 0 : request.fields[1].size() * bytesForAByte, 'r');
        sent = 0;
        const std::string first = exchange.beginReply(ReplyData(reply));
        require(first == (reply.empty() ? "\x04" : next()));
        last = first;
    }

    void goOn(const std::string& bytes, char answer)
    {
        if (answer == '\x15') {
            require(bytes == last || bytes == "\x04");
            return;
        }
        require(answer == '\x06' || answer == '\x03');
        require(bytes == (sent == reply.size() ? "" : next()));
        last = bytes;
    }

    // The block that has to follow.
    std::string next()
    {
        const std::string_view piece = std::string_view(reply).substr(sent, largestPiece);
        sent += piece.size();
        return blockOf(piece, sent == reply.size() ? '\x03' : '\x17');
    }

    Exchange exchange;
    bool expectsBlocks = false;
    std::string lastBlock; // of an upload that has ended
    std::string reply;
    std::size_t sent = 0;
    std::string last;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    Printer printer;
    for (std::size_t end = 1; end <= size; ++end) {
        printer.take(bytes.substr(0, end));
    }
    return 0;
}
