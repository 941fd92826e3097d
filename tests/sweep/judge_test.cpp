// The judge itself: wrong outcomes, planted by hand, must not pass. What is right here is written down from
// the rules of the wire, byte by byte.
#include "tests/sweep/judge.h"
#include "tests/sweep/judged_plans.h"
#include "tests/sweep/reference_till.h"

#include <gtest/gtest.h>

namespace telvofm::test::sweep {
namespace {

using Act = WireEvent::Act;

WireEvent sent(const std::string& what)
{
    return {Act::sent, what, {}, {}};
}
WireEvent received(const std::string& what)
{
    return {Act::received, what, {}, {}};
}
WireEvent silent(int milliseconds)
{
    return {Act::silent, {}, Milliseconds(milliseconds), {}};
}

// A TCP call that sends its request and then lives through these.
Conduct conductBehindRequest(const CallPlan& plan, std::vector<WireEvent> events)
{
    events.insert(events.begin(), {sent(request), sent("\xF9")});
    return conductOf(plan, events, Link::tcp);
}

TEST(ReferenceTill, AcceptsAnAcknowledge)
{
    const Conduct conduct = conductBehindRequest(commandPlan, {received("\x06")});
    EXPECT_EQ(conduct.deviation, "");
    EXPECT_EQ(conduct.result, 0);
}

TEST(ReferenceTill, TakesTheCodeOfARefusal)
{
    EXPECT_EQ(conductBehindRequest(commandPlan, {received("\x15\x07")}).result, 7);
    EXPECT_EQ(conductBehindRequest(commandPlan, {received("Z")}).result, -10002);
    EXPECT_EQ(conductBehindRequest(commandPlan, {{Act::closed, {}, {}, {}}}).result, -10201);
}

TEST(ReferenceTill, SeesAWaitThatIsTooShort)
{
    EXPECT_NE(conductBehindRequest(commandPlan, {silent(2000), sent("\x11"), received("\x06")}).deviation,
              "");
    EXPECT_EQ(conductBehindRequest(commandPlan, {silent(3000), sent("\x11"), received("\x06")}).deviation,
              "");
}

TEST(ReferenceTill, SeesAProbeThatIsLeftOut)
{
    EXPECT_NE(conductBehindRequest(commandPlan, {silent(3000), received("\x06")}).deviation, "");
}

TEST(ReferenceTill, SeesATryTooFewAndATryTooMany)
{
    std::vector<WireEvent> events;
    for (int attempt = 0; attempt < 3; ++attempt) {
        for (const WireEvent& event :
             {sent(request), sent("\xF9"), silent(3000), sent("\x11"), silent(3000)}) {
            events.push_back(event);
        }
    }
    EXPECT_EQ(conductOf(commandPlan, events, Link::tcp).deviation, "");
    EXPECT_EQ(conductOf(commandPlan, events, Link::tcp).result, -10202);
    const std::vector<WireEvent> two(events.begin(), events.begin() + 10);
    EXPECT_NE(conductOf(commandPlan, two, Link::tcp).deviation, "");
    events.push_back(sent(request));
    EXPECT_NE(conductOf(commandPlan, events, Link::tcp).deviation, "");
}

TEST(ReferenceTill, SeesAnotherRequestAndAWrongChecksumByte)
{
    EXPECT_NE(
        conductOf(commandPlan, std::vector{sent("x"), sent("\xF9"), received("\x06")}, Link::tcp).deviation,
        "");
    EXPECT_NE(conductOf(commandPlan, std::vector{sent(request), sent("\xF8"), received("\x06")}, Link::tcp)
                  .deviation,
              "");
}

TEST(ReferenceTill, SeesALastBlockThatIsAnsweredWithAnAcknowledge)
{
    const std::string block = test::block("ab", etx);
    EXPECT_EQ(conductBehindRequest(queryPlan, {received(block), sent("\x03")}).reply, "ab");
    EXPECT_NE(conductBehindRequest(queryPlan, {received(block), sent("\x06")}).deviation, "");
}

TEST(ReferenceTill, SeesADamagedBlockThatIsTaken)
{
    const std::string damaged = damagedBlock("ab", etx);
    EXPECT_NE(conductBehindRequest(queryPlan, {received(damaged), sent("\x03")}).deviation, "");
    EXPECT_EQ(conductBehindRequest(queryPlan, {received(damaged), sent("\x15"),
                                               received(test::block("ab", etx)), sent("\x03")})
                  .reply,
              "ab");
}

TEST(ReferenceTill, SeesASerialTryWithoutAPurge)
{
    std::vector<WireEvent> events = {{Act::purged, {}, {}, {}}};
    for (const char byte : request + "\xF9") {
        events.push_back(sent(std::string(1, byte)));
    }
    events.push_back(received("\x06"));
    EXPECT_EQ(conductOf(commandPlan, events, Link::serial).deviation, "");
    events.erase(events.begin());
    EXPECT_NE(conductOf(commandPlan, events, Link::serial).deviation, "");
}

class JudgeTest : public ::testing::Test
{
protected:
    [[nodiscard]] Verdict verdict(const CallPlan& plan) const
    {
        return judgedByPrinter({plan, outcome, link, fault, {}, {}, heard, refusals, metLateAnswer}).verdict;
    }

    static HeardRequest executed(std::string bytes) { return {1, std::move(bytes), {}, "reply", {}, {}}; }

    Outcome outcome;
    Link link = Link::tcp;
    Fault fault;
    std::vector<HeardRequest> heard;
    std::vector<int> refusals;
    bool metLateAnswer = false;
};

TEST_F(JudgeTest, ASuccessNeedsAnExecutedRequest)
{
    EXPECT_EQ(verdict(commandPlan), Verdict::violation);
    heard = {executed("other")};
    EXPECT_EQ(verdict(commandPlan), Verdict::violation);
    heard = {executed(request)};
    EXPECT_EQ(verdict(commandPlan), Verdict::success);
    heard.front().refusal = 5;
    EXPECT_EQ(verdict(commandPlan), Verdict::violation);
}

TEST_F(JudgeTest, AnUploadNeedsEveryBlock)
{
    const CallPlan plan = {{{Exchange::Kind::command, {request}}, {Exchange::Kind::upload, {"one", "two"}}}};
    heard = {executed(request)};
    heard.front().uploaded = {"one"};
    EXPECT_EQ(verdict(plan), Verdict::violation);
    heard.front().uploaded = {"two", "one"};
    EXPECT_EQ(verdict(plan), Verdict::violation);
    heard.front().uploaded = {"one", "one", "two"};
    EXPECT_EQ(verdict(plan), Verdict::success);
}

TEST_F(JudgeTest, AReplyMustBeThatOfTheRequest)
{
    heard = {executed(request)};
    outcome.data = "repl";
    EXPECT_EQ(verdict(queryPlan), Verdict::violation);
    outcome.data = "reply";
    EXPECT_EQ(verdict(queryPlan), Verdict::success);
}

TEST_F(JudgeTest, ACodeMustHaveBeenSent)
{
    outcome.result = 5;
    EXPECT_EQ(verdict(commandPlan), Verdict::violation);
    refusals = {6};
    EXPECT_EQ(verdict(commandPlan), Verdict::violation);
    refusals = {5};
    EXPECT_EQ(verdict(commandPlan), Verdict::failure);
    outcome.result = -7; // nobody's code
    EXPECT_EQ(verdict(commandPlan), Verdict::violation);
}

TEST_F(JudgeTest, AFailureDeliversNothing)
{
    outcome.result = -10202;
    EXPECT_EQ(verdict(queryPlan), Verdict::failure);
    outcome.data = "reply";
    EXPECT_EQ(verdict(queryPlan), Verdict::violation);
}

TEST_F(JudgeTest, AnExceptionMayNotPass)
{
    heard = {executed(request)};
    outcome.thrown = "std::bad_alloc";
    EXPECT_EQ(verdict(commandPlan), Verdict::violation);
}

// A success that is untrue has an excuse only in what the fault has really done.
TEST_F(JudgeTest, OnlyTheFaultExcuses)
{
    fault = {Fault::Kind::delayed, Direction::toTill, 0, 0, Milliseconds(6001)};
    EXPECT_EQ(verdict(commandPlan), Verdict::violation);
    metLateAnswer = true;
    EXPECT_EQ(verdict(commandPlan), Verdict::lateAnswer);
    metLateAnswer = false;
    fault = {Fault::Kind::doubled, Direction::toPrinter, 3};
    EXPECT_EQ(verdict(commandPlan), Verdict::violation);
    heard = {executed("damaged")};
    EXPECT_EQ(verdict(commandPlan), Verdict::requestDamaged);
}

} // namespace
} // namespace telvofm::test::sweep
