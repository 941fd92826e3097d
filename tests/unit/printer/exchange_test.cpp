// The printer's side of the block protocol, byte by byte.
#include "virtual_printer/language/exchange.h"

#include "tests/unit/bytes.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <utility>

namespace virtual_printer {
namespace {

using telvofm::test::ack;
using telvofm::test::block;
using telvofm::test::damagedBlock;
using telvofm::test::etb;
using telvofm::test::etx;
using telvofm::test::nak;

// What the last of these bytes has completed; the ones before complete nothing.
Incoming takeAll(Exchange& exchange, std::string_view bytes)
{
    Incoming last;
    for (const char byte : bytes) {
        EXPECT_TRUE(std::holds_alternative<Nothing>(last));
        last = exchange.take(static_cast<unsigned char>(byte));
    }
    return last;
}

TEST(PrinterExchange, TakesARequestWhoseChecksumFits)
{
    Exchange exchange;
    const Incoming incoming = takeAll(exchange, std::string("\x1C\x01\x29\x30\x00\x04\x00", 7));
    const auto* request = std::get_if<Request>(&incoming);
    ASSERT_NE(request, nullptr);
    EXPECT_EQ(request->address, 1);
    EXPECT_EQ(request->command, 0x29);
    EXPECT_EQ(request->fields, std::vector<std::string>{"0"});
}

TEST(PrinterExchange, TellsADamagedRequest)
{
    Exchange exchange;
    const Incoming incoming = takeAll(exchange, "\x1C\x01\xE0\x04\xFF");
    EXPECT_TRUE(std::holds_alternative<DamagedRequest>(incoming));
}

TEST(PrinterExchange, PassesOverNoiseAndBlocksThatNobodyAnnounced)
{
    Exchange exchange;
    EXPECT_TRUE(std::holds_alternative<Nothing>(takeAll(exchange, "xyz" + block("ab", etx))));
    EXPECT_TRUE(std::holds_alternative<Request>(takeAll(exchange, "\x1C\x01\xE0\x04\xF9")));
}

TEST(PrinterExchange, KnowsTheLastBlockOfAnUploadAgainUntilTheNextRequest)
{
    Exchange exchange;
    exchange.expectBlocks(true);
    takeAll(exchange, block("ab", etx));
    exchange.expectBlocks(false);
    EXPECT_TRUE(std::holds_alternative<RepeatedBlock>(takeAll(exchange, block("ab", etx))));
    EXPECT_TRUE(std::holds_alternative<RepeatedBlock>(takeAll(exchange, ":" + block("ab", etx))));
    EXPECT_TRUE(std::holds_alternative<Nothing>(takeAll(exchange, block("ac", etx))));
    EXPECT_TRUE(std::holds_alternative<Request>(
        takeAll(exchange, block("ab", etx).substr(0, 3) + "\x1C\x01\xE0\x04\xF9")));
    exchange.expectBlocks(false);
    EXPECT_TRUE(std::holds_alternative<Nothing>(takeAll(exchange, block("ab", etx))));
}

TEST(PrinterExchange, TakesBlocksWhileTheyAreExpected)
{
    Exchange exchange;
    exchange.expectBlocks(true);
    const Incoming first = takeAll(exchange, block("ab", etb));
    EXPECT_EQ(std::get<Block>(first).data, "ab");
    EXPECT_FALSE(std::get<Block>(first).isLast);
    EXPECT_TRUE(std::holds_alternative<DamagedBlock>(takeAll(exchange, damagedBlock("cd", etx))));
    const Incoming last = takeAll(exchange, block("cd", etx));
    EXPECT_EQ(std::get<Block>(last).data, "cd");
    EXPECT_TRUE(std::get<Block>(last).isLast);
}

TEST(PrinterExchange, SendsAReplyBlockByBlock)
{
    Exchange exchange;
    EXPECT_EQ(exchange.beginReply(ReplyData(std::string(256, 'a') + "b")), block(std::string(256, 'a'), etb));
    EXPECT_EQ(std::get<MoreOfReply>(exchange.take(ack)).bytes, block("b", etx));
    EXPECT_EQ(std::get<MoreOfReply>(exchange.take(etx)).bytes, "");
    EXPECT_EQ(exchange.beginReply(ReplyData("")), "\x04");
}

// Pieces of a hundred bytes, so many of them.
class PiecesOfAHundred
{
public:
    explicit PiecesOfAHundred(int wanted) : all(wanted) {}

    ReplyData reply()
    {
        return ReplyData([this]() -> std::optional<std::string> {
            if (given == lost) {
                throw std::runtime_error("lost");
            }
            return given < all ? std::optional(std::string(100, static_cast<char>('a' + given++ % 26)))
                               : std::nullopt;
        });
    }

    int given = 0;
    int lost = -1; // the piece that cannot be had

private:
    int all;
};

// However long it is: what is fetched and has not been sent is a block, and not more than a piece beyond it.
TEST(PrinterExchange, FetchesOfALongReplyWhatTheNextBlockNeeds)
{
    constexpr std::size_t sizeOfPiece = 100;
    constexpr int many = 10'000;
    Exchange exchange;
    PiecesOfAHundred pieces(many);
    std::string sent = exchange.beginReply(pieces.reply());
    std::string data;
    std::size_t blocks = 0;
    while (!sent.empty()) {
        ++blocks;
        data += sent.substr(2, sent.size() - 4);
        ASSERT_LE(static_cast<std::size_t>(pieces.given) * sizeOfPiece, blocks * 256 + sizeOfPiece);
        ASSERT_EQ(sent[sent.size() - 2], data.size() == many * sizeOfPiece ? etx : etb);
        sent = std::get<MoreOfReply>(exchange.take(ack)).bytes;
    }
    EXPECT_EQ(data.size(), many * sizeOfPiece);
    EXPECT_EQ(data.substr(data.size() - sizeOfPiece), std::string(sizeOfPiece, 'a' + (many - 1) % 26));
    EXPECT_EQ(blocks, (many * sizeOfPiece + 255) / 256);
}

TEST(PrinterExchange, EndsAFetchedReplyWhereverItsLastPieceEnds)
{
    for (const std::size_t size : {0U, 1U, 255U, 256U, 257U, 512U}) {
        Exchange exchange;
        bool isGiven = false;
        std::string sent = exchange.beginReply(ReplyData([&]() -> std::optional<std::string> {
            return std::exchange(isGiven, true) ? std::nullopt : std::optional(std::string(size, 'x'));
        }));
        std::string data;
        for (; sent.front() == ':' && sent[sent.size() - 2] == etb;
             sent = std::get<MoreOfReply>(exchange.take(ack)).bytes) {
            data += sent.substr(2, sent.size() - 4);
        }
        EXPECT_EQ(sent, size == 0 ? "\x04" : block(std::string(size - data.size(), 'x'), etx)) << size;
    }
}

TEST(PrinterExchange, FetchesNothingForABlockThatIsRepeated)
{
    Exchange exchange;
    PiecesOfAHundred pieces(10);
    const std::string sent = exchange.beginReply(pieces.reply());
    const int given = pieces.given;
    const Incoming again = exchange.take(nak);
    EXPECT_EQ(std::get<MoreOfReply>(again).bytes, sent);
    EXPECT_EQ(std::get<MoreOfReply>(again).fetched, "");
    EXPECT_EQ(pieces.given, given);
}

// An end would make half a reply a whole one.
TEST(PrinterExchange, IsSilentWhereTheRestOfAReplyIsLost)
{
    Exchange exchange;
    PiecesOfAHundred pieces(10);
    pieces.lost = 4;
    exchange.beginReply(pieces.reply());
    const Incoming more = exchange.take(ack);
    EXPECT_TRUE(std::get<MoreOfReply>(more).isLost);
    EXPECT_EQ(std::get<MoreOfReply>(more).bytes, "");
    EXPECT_TRUE(std::holds_alternative<Nothing>(exchange.take(ack)));
    EXPECT_TRUE(std::holds_alternative<Request>(takeAll(exchange, "\x1C\x01\xE0\x04\xF9")));
}

TEST(PrinterExchange, RepeatsABlockTwiceAndThenEndsTheReply)
{
    Exchange exchange;
    const std::string sent = exchange.beginReply(ReplyData("a"));
    EXPECT_EQ(std::get<MoreOfReply>(exchange.take(nak)).bytes, sent);
    EXPECT_EQ(std::get<MoreOfReply>(exchange.take(nak)).bytes, sent);
    EXPECT_EQ(std::get<MoreOfReply>(exchange.take(nak)).bytes, "\x04");
}

TEST(PrinterExchange, LetsAReplyGoThatTheTillHasGivenUp)
{
    Exchange exchange;
    exchange.beginReply(ReplyData("a"));
    EXPECT_TRUE(std::holds_alternative<Request>(takeAll(exchange, "\x1C\x01\xE0\x04\xF9")));
    EXPECT_TRUE(std::holds_alternative<Nothing>(exchange.take(ack)));
}

TEST(PrinterExchange, AnswersAProbe)
{
    Exchange exchange;
    EXPECT_TRUE(std::holds_alternative<Probe>(exchange.take(0x11)));
    EXPECT_EQ(Exchange::readiness(), "\x11");
}

} // namespace
} // namespace virtual_printer
