// Replies in data blocks: good ones, damaged ones, unknown terminators, and what stands between blocks.
#include "tests/unit/bytes.h"
#include "tests/unit/scripted_link.h"

#include <gmock/gmock.h>

namespace telvofm::test {
namespace {

using ::testing::ElementsAre;

const std::string question = bytes({0x1C, 0x01, 0x93, 0x04});
const std::string sentQuestion = question + '\x8A';

// A query whose printer answers these bytes to the one request.
struct Reply
{
    explicit Reply(const std::string& answer, const ProtocolRules& rules = tcpRules) : link(rules, {answer})
    {
    }

    std::string fetch() { return link.query(question); }
    // What the library said after the request.
    std::string answered() { return link.sent.at(0).substr(sentQuestion.size()); }

    ScriptedLink link;
};

TEST(Receiver, KnowsABlockByItsBytes)
{
    Reply reply(bytes({0x3A, 0x00, 0x41, 0x03, 0x78}));
    EXPECT_EQ(reply.fetch(), "A");
    EXPECT_THAT(reply.link.sent, ElementsAre(sentQuestion + '\x03'));
}

// The printer expects its own terminator back, not an acknowledge byte.
TEST(Receiver, AnswersAGoodLastBlockWithItsTerminator)
{
    Reply reply(block("text", etx));
    EXPECT_EQ(reply.fetch(), "text");
    EXPECT_EQ(reply.answered(), bytes({0x03}));
}

TEST(Receiver, AnswersAGoodIntermediateBlockWithAcknowledge)
{
    Reply reply(block("first ", etb) + block("second", etx));
    EXPECT_EQ(reply.fetch(), "first second");
    EXPECT_EQ(reply.answered(), bytes({0x06, 0x03}));
}

TEST(Receiver, AReplyMayEndBetweenBlocks)
{
    Reply reply(block("first", etb) + eot);
    EXPECT_EQ(reply.fetch(), "first");
    EXPECT_EQ(reply.answered(), bytes({0x06}));
}

TEST(Receiver, SkipsStrayBytesBetweenBlocks)
{
    Reply reply(block("first", etb) + "xyz\x15\x06" + block(" second", etx));
    EXPECT_EQ(reply.fetch(), "first second");
}

TEST(Receiver, ABlockHoldsUpTo256Bytes)
{
    const std::string data(256, 'x');
    const std::string sent = block(data, etx);
    EXPECT_EQ(sent[1], '\xFF');
    Reply one(sent);
    EXPECT_EQ(one.fetch(), data);

    Reply two(block(data, etb) + block("y", etx));
    EXPECT_EQ(two.fetch(), data + "y");
}

TEST(Receiver, EveryByteValueIsData)
{
    std::string data;
    for (int value = 0; value < 256; ++value) {
        data.push_back(static_cast<char>(value));
    }
    Reply reply(block(data, etx));
    EXPECT_EQ(reply.fetch(), data);
}

TEST(Receiver, ADamagedBlockIsAskedForAgain)
{
    Reply reply(damagedBlock("A", etx) + block("A", etx));
    EXPECT_EQ(reply.fetch(), "A");
    EXPECT_EQ(reply.answered(), bytes({0x15, 0x03}));
}

TEST(Receiver, TheThirdTryOfABlockMayBeTheGoodOne)
{
    Reply reply(damagedBlock("A", etx) + damagedBlock("A", etx) + block("A", etx));
    EXPECT_EQ(reply.fetch(), "A");
}

TEST(Receiver, EachBlockHasItsOwnThreeTries)
{
    Reply reply(damagedBlock("A", etb) + damagedBlock("A", etb) + block("A", etb) + damagedBlock("B", etx) +
                damagedBlock("B", etx) + block("B", etx));
    EXPECT_EQ(reply.fetch(), "AB");
    EXPECT_EQ(reply.answered(), bytes({0x15, 0x15, 0x06, 0x15, 0x15, 0x03}));
}

TEST(Receiver, ABlockDamagedThreeTimesEndsTheQuery)
{
    const std::string damaged = damagedBlock("A", etx);
    Reply reply(damaged + damaged + damaged + ":");
    EXPECT_EQ(codeOf([&] { reply.fetch(); }), -10002);
    EXPECT_EQ(reply.answered(), bytes({0x15, 0x15, 0x15}));
    EXPECT_EQ(reply.link.sent.size(), 1U);
}

TEST(Receiver, SilenceAfterTheThirdDamageChangesNoCode)
{
    const std::string damaged = damagedBlock("A", etx);
    Reply reply(damaged + damaged + damaged);
    EXPECT_EQ(codeOf([&] { reply.fetch(); }), -10002);
}

TEST(Receiver, SilenceAfterTheFirstDamageIsATimeout)
{
    Reply reply(damagedBlock("A", etx));
    EXPECT_EQ(codeOf([&] { reply.fetch(); }), -10202);
    EXPECT_EQ(reply.link.sent.size(), 1U);
}

TEST(Receiver, AnAnswerThatIsNoBlockAfterDamageEndsTheQuery)
{
    Reply reply(damagedBlock("A", etx) + "Z");
    EXPECT_EQ(codeOf([&] { reply.fetch(); }), -10002);
}

TEST(Receiver, ThePrinterMayGiveUpADamagedBlock)
{
    Reply reply(block("kept", etb) + damagedBlock("lost", etx) + eot);
    EXPECT_EQ(reply.fetch(), "kept");
    EXPECT_EQ(reply.answered(), bytes({0x06, 0x15}));
}

TEST(Receiver, SilenceInsideABlockIsATimeout)
{
    const std::string whole = block("text", etx);
    for (std::size_t length = 1; length < whole.size(); ++length) {
        Reply reply(whole.substr(0, length));
        EXPECT_EQ(codeOf([&] { reply.fetch(); }), -10202) << length << " bytes";
        EXPECT_EQ(reply.link.sent.size(), 1U);
    }
}

// The block counts as damaged although its data stays.
TEST(Receiver, AnUnknownTerminatorKeepsTheDataAndAsksAgain)
{
    for (const auto* rules : {&tcpRules, &serialRules}) {
        Reply given(block("A", 0x05) + eot, *rules);
        EXPECT_EQ(given.fetch(), "A");
        EXPECT_EQ(given.answered(), bytes({0x15}));

        Reply repeated(block("A", 0x05) + block("A", etx), *rules);
        EXPECT_EQ(repeated.fetch(), "AA");
        EXPECT_EQ(repeated.answered(), bytes({0x15, 0x03}));
    }
}

TEST(Receiver, AKnownTerminatorWithItsHighestBitSetIsAnUnknownOne)
{
    for (const char terminator : {etx, etb}) {
        Reply reply(block("A", static_cast<char>(terminator | 0x80)) + eot);
        EXPECT_EQ(reply.fetch(), "A");
        EXPECT_EQ(reply.answered(), bytes({0x15}));
    }
}

TEST(Receiver, ThreeUnknownTerminatorsEndTheQuery)
{
    const std::string unknown = block("A", 0x05);
    Reply reply(unknown + unknown + unknown + ":");
    EXPECT_EQ(codeOf([&] { reply.fetch(); }), -10002);
}

TEST(Receiver, OnlyTheSerialQueryReportsAnUnknownTerminator)
{
    const auto printedBy = [](const ProtocolRules& rules, bool strict) {
        ScriptedLink link(rules, {block("A", 0x05) + eot});
        ::testing::internal::CaptureStdout();
        strict ? link.queryStrict(question) : link.query(question);
        return ::testing::internal::GetCapturedStdout();
    };
    EXPECT_THAT(printedBy(serialRules, false),
                ::testing::StartsWith("Odpoved na potvrdenie prijatia bloku: "));
    EXPECT_EQ(printedBy(serialRules, true), "");
    EXPECT_EQ(printedBy(tcpRules, false), "");
    EXPECT_EQ(printedBy(tcpRules, true), "");
}

} // namespace
} // namespace telvofm::test
