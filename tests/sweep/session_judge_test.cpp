// The judge of real links: what the printer's end has seen is written down by hand, with outcomes that it
// bears out and wrong ones that must not pass, whatever fault might be their excuse.
#include "tests/sweep/judged_plans.h"
#include "tests/sweep/session_judge.h"

#include <gtest/gtest.h>

namespace telvofm::test::sweep {
namespace {

using Act = WireEvent::Act;

const std::string sum = "\xF9";
constexpr Milliseconds atOnce{1};

Fault flippedToTill()
{
    return {Fault::Kind::flipped, Direction::toTill, 1, 1};
}

class SessionJudgeTest : public ::testing::Test
{
protected:
    void sent(const std::string& what) { events.push_back({Act::sent, what}); }
    void said(const std::string& what) { events.push_back({Act::received, what}); }

    // A call that returned this, while the printer executed it, or refused it with a code.
    void ended(const CallPlan& plan, int result, std::optional<int> refusal, Milliseconds lasted = atOnce)
    {
        Outcome outcome;
        outcome.result = result;
        std::vector<int> refusals;
        if (refusal) {
            refusals.push_back(*refusal);
        }
        calls.push_back({plan, outcome, lasted, {{{1, request, refusal, "", {}, {}}}, refusals, false, {}}});
    }

    // A query that returned 0 and delivered this, where the printer replied something else.
    void delivered(const std::string& data, const std::string& reply)
    {
        Outcome outcome;
        outcome.data = data;
        calls.push_back(
            {queryPlan, outcome, atOnce, {{{1, request, std::nullopt, reply, {}, {}}}, {}, false, {}}});
    }

    [[nodiscard]] Verdict verdict(const Fault& fault, std::optional<Role> struckRole = {},
                                  Link link = Link::tcp) const
    {
        return judgedBySession({link, Overheard(events, fault), struckRole}, calls, true).verdict;
    }

    std::vector<WireEvent> events;
    std::vector<LinkCall> calls;
};

TEST_F(SessionJudgeTest, ACodeMustBeWhatTheDamagedBytesSay)
{
    sent(request + sum);
    said("\x15\x04"); // 5 with a flipped bit
    ended(commandPlan, 4, 5);
    EXPECT_EQ(verdict(flippedToTill(), Role::errorCode), Verdict::answerDamaged);
    calls.front().outcome.result = 6;
    EXPECT_EQ(verdict(flippedToTill(), Role::errorCode), Verdict::violation);
    calls.front().outcome.result = 0;
    EXPECT_EQ(verdict(flippedToTill(), Role::errorCode), Verdict::violation);
}

TEST_F(SessionJudgeTest, ABlockWithAWrongChecksumDeliversNothing)
{
    sent(request + sum);
    said(damagedBlock("ab", etx));
    sent("\x03");
    delivered("ab", "ac");
    EXPECT_EQ(verdict(flippedToTill(), Role::blockData), Verdict::violation);
    EXPECT_EQ(verdict({Fault::Kind::inserted, Direction::toTill, 1, 1}, Role::blockData), Verdict::violation);
}

// The same bytes in another order have the same XOR: nobody can tell, unless a single bit was flipped.
TEST_F(SessionJudgeTest, ABlockThatFitsSaysWhatItSays)
{
    sent(request + sum);
    said(block("ba", etx));
    sent("\x03");
    delivered("ba", "ab");
    EXPECT_EQ(verdict({Fault::Kind::deleted, Direction::toTill, 1}, Role::blockData), Verdict::blockDamaged);
    EXPECT_EQ(verdict(flippedToTill(), Role::blockData), Verdict::violation);
    calls.front().outcome.data = "bb";
    EXPECT_EQ(verdict({Fault::Kind::deleted, Direction::toTill, 1}, Role::blockData), Verdict::violation);
}

TEST_F(SessionJudgeTest, OnlyALateAnswerExcusesTheNextCall)
{
    const Fault doubled = {Fault::Kind::doubled, Direction::toTill, 0};
    sent(request + sum);
    said("\x06\x06");
    ended(commandPlan, 0, std::nullopt);
    sent(request + sum);
    said("\x15\x4D");
    ended(commandPlan, 0, 77);
    EXPECT_EQ(verdict(doubled, Role::answer), Verdict::lateAnswer);
    calls.back().outcome.result = 77;
    EXPECT_EQ(verdict(doubled, Role::answer), Verdict::failure); // the driver had taken both and dropped one
    events[1].bytes = "\x06";
    EXPECT_EQ(verdict(doubled, Role::answer), Verdict::failure);
    calls.back().outcome.result = 0;
    EXPECT_EQ(verdict(doubled, Role::answer), Verdict::violation);
}

TEST_F(SessionJudgeTest, TheNextCallIsJudgedAlsoBehindAFailure)
{
    for (int attempt = 0; attempt < 3; ++attempt) {
        sent(request + sum);
        sent("\x11");
    }
    ended(commandPlan, -10202, std::nullopt, Milliseconds(18000));
    sent(request + sum);
    said("\x15\x4D");
    ended(commandPlan, 77, 77);
    const Fault lost = {Fault::Kind::lost, Direction::toTill, 0};
    EXPECT_EQ(verdict(lost), Verdict::failure);
    calls.back().outcome.result = 0;
    EXPECT_EQ(verdict(lost), Verdict::violation);
    calls.back().outcome.result = -10202;
    EXPECT_EQ(verdict(lost), Verdict::violation);
}

TEST_F(SessionJudgeTest, ACallTakesAsLongAsItsSilences)
{
    for (int attempt = 0; attempt < 3; ++attempt) {
        sent(request + sum);
        sent("\x11");
    }
    ended(commandPlan, -10202, std::nullopt, Milliseconds(18200));
    EXPECT_EQ(verdict({}), Verdict::failure);
    calls.front().lasted = Milliseconds(15000);
    EXPECT_EQ(verdict({}), Verdict::violation);
    calls.front().lasted = Milliseconds(29000);
    EXPECT_EQ(verdict({}), Verdict::violation);
    EXPECT_EQ(verdict({Fault::Kind::delayed, Direction::toTill, 0, 0, Milliseconds(18500)}),
              Verdict::failure);
}

TEST_F(SessionJudgeTest, WhatIsSentMustBeWhatTheCallsSend)
{
    sent(request + sum);
    said("\x06");
    ended(commandPlan, 0, std::nullopt);
    EXPECT_EQ(verdict({}), Verdict::success);
    sent(request);
    EXPECT_EQ(verdict({}), Verdict::violation);
    events.back().bytes = "\x06";
    EXPECT_EQ(verdict({}), Verdict::violation);
    events.pop_back();
    events.front().bytes = request + "\xF8";
    EXPECT_EQ(verdict({}), Verdict::violation);
}

// The acknowledge came behind a probe, which is sent after three seconds.
TEST_F(SessionJudgeTest, NoByteIsReadBeforeItHasCome)
{
    sent(request + sum);
    sent("\x11");
    said("\x06");
    ended(commandPlan, 0, std::nullopt, Milliseconds(3010));
    EXPECT_EQ(verdict({}), Verdict::success);
    calls.front().lasted = atOnce;
    EXPECT_EQ(verdict({}), Verdict::violation);
}

TEST_F(SessionJudgeTest, SilenceOnASerialLineIsAVerdictOfItsOwn)
{
    for (const char byte : request + sum) {
        sent(std::string(1, byte));
    }
    ended(commandPlan, 64, std::nullopt, Milliseconds(30010));
    EXPECT_EQ(verdict({}, {}, Link::serial), Verdict::silence);
    calls.front().lasted = Milliseconds(14000);
    EXPECT_EQ(verdict({}, {}, Link::serial), Verdict::violation);
}

TEST_F(SessionJudgeTest, AClosedLinkFailsTheCallAndTheNext)
{
    const Fault closed = {Fault::Kind::closed, Direction::toTill, 0};
    sent(request + sum);
    ended(commandPlan, -10201, std::nullopt);
    ended(commandPlan, -10201, std::nullopt);
    EXPECT_EQ(verdict(closed), Verdict::failure);
    EXPECT_EQ(verdict({Fault::Kind::lost, Direction::toTill, 0}), Verdict::violation);
    calls.back().outcome.result = 0;
    EXPECT_EQ(verdict(closed), Verdict::violation);
}

} // namespace
} // namespace telvofm::test::sweep
