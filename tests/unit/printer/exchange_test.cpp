// The printer's side of the block protocol, byte by byte.
#include "virtual_printer/language/exchange.h"

#include "tests/unit/bytes.h"

#include <gtest/gtest.h>

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
    EXPECT_EQ(exchange.beginReply(std::string(256, 'a') + "b"), block(std::string(256, 'a'), etb));
    EXPECT_EQ(std::get<MoreOfReply>(exchange.take(ack)).bytes, block("b", etx));
    EXPECT_EQ(std::get<MoreOfReply>(exchange.take(etx)).bytes, "");
    EXPECT_EQ(exchange.beginReply(""), "\x04");
}

TEST(PrinterExchange, RepeatsABlockTwiceAndThenEndsTheReply)
{
    Exchange exchange;
    const std::string sent = exchange.beginReply("a");
    EXPECT_EQ(std::get<MoreOfReply>(exchange.take(nak)).bytes, sent);
    EXPECT_EQ(std::get<MoreOfReply>(exchange.take(nak)).bytes, sent);
    EXPECT_EQ(std::get<MoreOfReply>(exchange.take(nak)).bytes, "\x04");
}

TEST(PrinterExchange, LetsAReplyGoThatTheTillHasGivenUp)
{
    Exchange exchange;
    exchange.beginReply("a");
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
