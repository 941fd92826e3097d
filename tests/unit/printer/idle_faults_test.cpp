// Faults that could do nothing to a request, on both kinds of link: the trace says why, the till has its
// answer, and the fault waits for a request to which it can do something.
#include "tests/unit/printer/tried_printer.h"

#include <gmock/gmock.h>

namespace virtual_printer {
namespace {

using testing::ElementsAre;

class IdleFaults : public testing::TestWithParam<CodePage>
{
protected:
    [[nodiscard]] const Armed& armed() const { return till.station.faults.list().back(); }

    // Armed with it, the printer answers as one that is not; and what the trace says of it.
    std::string idleness(const std::string& fault, const std::string& bytes)
    {
        const std::string expected = TriedPrinter(GetParam()).heard(bytes);
        till.station.faults.disarmAll();
        till.arm(fault);
        EXPECT_EQ(till.heard(bytes), expected);
        EXPECT_EQ(till.last().isAcknowledged, expected.front() != '\x15');
        EXPECT_EQ(armed().requestsMet, 1);
        EXPECT_EQ(armed().requestsHit + armed().callsHit, 0);
        EXPECT_TRUE(armed().exchanges.empty());
        EXPECT_FALSE(armed().hasEnded);
        return till.last().faults.empty() ? "nothing" : till.last().faults.front();
    }

    TriedPrinter till{GetParam()};
    const std::string harmless = request(0xE0);        // always accepted, and changes nothing
    const std::string asked = request(0x92, {"LIFE"}); // 12 bytes: six letters, the line end, the frame
    const std::string refusedHere = request(0x22, {"0", "0"}); // there is no receipt
};

TEST_P(IdleFaults, OfBlocksWaitForAReply)
{
    for (const std::string kind : {"wrongChecksum", "wrongTerminator", "wrongLength", "blockRepeated"}) {
        EXPECT_EQ(idleness(R"({"kind":")" + kind + R"("})", harmless),
                  kind + " did nothing: there is no block in an answer of one byte");
        const std::string whole = TriedPrinter(GetParam()).heard(asked);
        EXPECT_NE(till.heard(asked), whole);
        EXPECT_TRUE(armed().hasEnded);
        EXPECT_THAT(armed().exchanges, ElementsAre(till.last().number));
        till.heard("\x03");
    }
}

TEST_P(IdleFaults, OfAByteWaitForAnAnswerThatHasIt)
{
    EXPECT_EQ(idleness(R"({"kind":"flippedBit","byte":1})", harmless),
              "flippedBit did nothing: there is no such byte in an answer of one byte");
    EXPECT_EQ(idleness(R"({"kind":"flippedBit","byte":2})", refusedHere),
              "flippedBit did nothing: there is no such byte in an answer of 2 bytes");
    EXPECT_EQ(idleness(R"({"kind":"cut","byte":1})", harmless),
              "cut did nothing: there is nothing to cut off in an answer of one byte");
    EXPECT_EQ(idleness(R"({"kind":"slow","milliseconds":20})", harmless),
              "slow did nothing: there is nothing to divide in an answer of one byte");
    EXPECT_EQ(idleness(R"({"kind":"split","byte":2,"milliseconds":20})", refusedHere),
              "split did nothing: there is nothing to divide in an answer of 2 bytes");
}

TEST_P(IdleFaults, OfTheAnswerBeforeWaitForAnother)
{
    EXPECT_EQ(idleness(R"({"kind":"staleAnswer"})", harmless),
              "staleAnswer did nothing: there was no answer before");
    EXPECT_EQ(idleness(R"({"kind":"staleAnswer"})", harmless),
              "staleAnswer did nothing: the answer before was the same");
    EXPECT_EQ(till.heard(asked), accepted);
    EXPECT_TRUE(armed().hasEnded);
}

TEST_P(IdleFaults, ThatTellUntruthWaitForARequestThatIsCarriedOut)
{
    EXPECT_EQ(idleness(R"({"kind":"executedNotAcknowledged","code":49})", refusedHere),
              "executedNotAcknowledged did nothing: the printer refused the request");
    EXPECT_EQ(till.heard(harmless), "\x15\x31");
    EXPECT_THAT(till.last().faults, ElementsAre("the request was carried out and answered with a refusal"));
    EXPECT_EQ(idleness(R"({"kind":"acknowledgedNotExecuted"})", refusedHere),
              "acknowledgedNotExecuted did nothing: the printer refused the request");
    EXPECT_EQ(idleness(R"({"kind":"acknowledgedNotExecuted"})", asked),
              "acknowledgedNotExecuted did nothing: nothing is carried out upon a question");
    EXPECT_TRUE(till.last().isExecuted);
    till.heard("\x03");
    EXPECT_EQ(till.heard(harmless), accepted);
    EXPECT_THAT(till.last().faults, ElementsAre("the request was accepted and not carried out"));
    EXPECT_FALSE(till.last().isExecuted);
}

TEST_P(IdleFaults, OfTheDiskWaitForWhatWouldBeWritten)
{
    EXPECT_EQ(idleness(R"({"kind":"diskFull"})", harmless),
              "diskFull did nothing: nothing was to be written");
    till.arm(R"({"kind":"diskFull"})");
    EXPECT_EQ(till.heard(request(0x29, {"0"})), refused(Refusal::diskFull));
    EXPECT_THAT(till.last().faults, ElementsAre("the printer's disk was full",
                                                "diskFull did nothing: another fault came before it"));
    EXPECT_FALSE(armed().hasEnded);
}

TEST_P(IdleFaults, OfALineDoNothingOverTcp)
{
    if (GetParam() == CodePage::windows1250) {
        EXPECT_EQ(idleness(R"({"kind":"ctsOff","milliseconds":9})", harmless),
                  "ctsOff did nothing: TCP has no such line");
        EXPECT_EQ(idleness(R"({"kind":"dsrOff","milliseconds":9})", harmless),
                  "dsrOff did nothing: TCP has no such line");
    }
}

// What two do to one request.
TEST_P(IdleFaults, AreThoseThatAnotherOneLeavesNothingTo)
{
    struct Pair
    {
        const char* first;
        const char* second;
        const char* said;
    };
    const std::vector<Pair> pairs = {
        {R"({"kind":"requestLost"})", R"({"kind":"acknowledgeLost"})",
         "acknowledgeLost did nothing: there was no answer"},
        {R"({"kind":"requestLost"})", R"({"kind":"refuse","code":9})",
         "refuse did nothing: another fault came before it"},
        {R"({"kind":"refuse","code":8})", R"({"kind":"refuse","code":9})",
         "refuse did nothing: another fault came before it"},
        {R"({"kind":"refuse","code":8})", R"({"kind":"diskFull"})",
         "diskFull did nothing: another fault kept the request from the printer"},
        {R"({"kind":"requestLost"})", R"({"kind":"requestLost","probes":"busy"})",
         "requestLost did nothing: another fault came before it"},
        {R"({"kind":"silence"})", R"({"kind":"silence"})",
         "silence did nothing: another fault came before it"},
        {R"({"kind":"acknowledgedNotExecuted"})", R"({"kind":"acknowledgedNotExecuted"})",
         "acknowledgedNotExecuted did nothing: another fault came before it"},
        {R"({"kind":"executedNotAcknowledged","code":8})", R"({"kind":"executedNotAcknowledged","code":9})",
         "executedNotAcknowledged did nothing: another fault came before it"},
        {R"({"kind":"paperOut"})", R"({"kind":"paperOut"})",
         "paperOut did nothing: another fault came before it"},
        {R"({"kind":"connectionClosed","at":"afterwards"})", R"({"kind":"halfOpen"})",
         "halfOpen did nothing: another fault has ended the link"},
        {R"({"kind":"silence"})", R"({"kind":"noise","bytes":"aa"})",
         "noise did nothing: there was no answer"},
        {R"({"kind":"acknowledgeLost"})", R"({"kind":"noise","bytes":"aa"})",
         "noise did nothing: no answer has left the printer"},
        {R"({"kind":"acknowledgeLost"})", R"({"kind":"executedNotAcknowledged","code":9})",
         "executedNotAcknowledged did nothing: no answer has left the printer"},
        {R"({"kind":"connectionClosed"})", R"({"kind":"acknowledgeLate","milliseconds":9})",
         "acknowledgeLate did nothing: there was no answer"},
        {R"({"kind":"connectionClosed"})", R"({"kind":"connectionReset"})",
         "connectionReset did nothing: another fault has ended the link"},
        {R"({"kind":"powerLoss"})", R"({"kind":"busy"})", "busy did nothing: the power was lost"},
    };
    for (const auto& [first, second, said] : pairs) {
        SCOPED_TRACE(second);
        TriedPrinter tried(GetParam());
        tried.arm(first);
        tried.arm(second);
        tried.send(harmless);
        EXPECT_THAT(tried.last().faults, ElementsAre(testing::Not(testing::HasSubstr("nothing")), said));
        EXPECT_EQ(tried.station.faults.list().front().requestsHit, 1);
        EXPECT_FALSE(tried.station.faults.list().back().hasEnded);
    }
}

INSTANTIATE_TEST_SUITE_P(OnBothLinks, IdleFaults, testing::Values(CodePage::windows1250, CodePage::cp852));

} // namespace
} // namespace virtual_printer
