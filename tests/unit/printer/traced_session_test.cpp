// What a session writes into the trace of its printer, and what it takes for a repeat.
#include "tests/system/virtual_printer_fixture.h"

#include <gmock/gmock.h>

namespace virtual_printer {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

class TracedSession : public VirtualPrinter
{
protected:
    // Sends these bytes some time after the ones before, and what comes back is handed over 3 ms later.
    const Exchanged& exchange(TillSession& session, const std::string& bytes, milliseconds after = seconds(1))
    {
        now += after;
        for (const Step& step : session.take(bytes, now)) {
            session.hasAcknowledged(std::get<Send>(step.action).acknowledges, now + milliseconds(3));
        }
        return *station.trace.find(station.trace.end() - 1);
    }

    TillSession::Time now{seconds(100)};
    TillSession line{station, CodePage::windows1250, codes};
    TillSession serial{station, CodePage::cp852, codes};
    const std::string day = request(0x29, {"0"});
};

TEST_F(TracedSession, HasWhatCameAndWhatBecameOfIt)
{
    const Exchanged& begun = exchange(line, day);
    EXPECT_EQ(begun.name(), "sellingDayBegin");
    EXPECT_EQ(begun.till, 1U);
    EXPECT_EQ(begun.address, 1);
    EXPECT_EQ(begun.command, 0x29);
    EXPECT_THAT(begun.fields, testing::ElementsAre("0"));
    EXPECT_EQ(begun.fromTill, day);
    EXPECT_EQ(begun.toTill, accepted);
    EXPECT_EQ(toText(begun.moment), "2026-01-01 12:00:00");
    EXPECT_TRUE(begun.isExecuted && begun.isCommitted && begun.isAcknowledged);
    EXPECT_EQ(begun.answered, milliseconds(3));
    EXPECT_EQ(begun.repeatOf, 0U);
}

TEST_F(TracedSession, HasTheReplyWithItsBlocksAndThatTheTillHasTakenIt)
{
    const std::string asked = request(0x92, {"DAY"});
    const Exchanged& answered = exchange(line, asked);
    EXPECT_TRUE(answered.isAcknowledged);
    EXPECT_FALSE(answered.isTaken || answered.isCommitted);
    EXPECT_EQ(answered.toTill, blockOf(answered.answer, '\x03'));
    EXPECT_TRUE(exchange(line, "\x03").isTaken);
    EXPECT_EQ(answered.fromTill, asked + "\x03");
}

TEST_F(TracedSession, HasWhatIsNoRequest)
{
    std::string damaged = day;
    damaged.back() = static_cast<char>(damaged.back() ^ 1);
    EXPECT_EQ(exchange(line, "noise" + damaged).name(), "damagedRequest");
    EXPECT_EQ(station.trace.find(1)->fromTill, damaged);
    EXPECT_EQ(exchange(line, "\x11").name(), "probe");
    EXPECT_EQ(exchange(line, request(0x07)).name(), "unknown");
    EXPECT_EQ(station.trace.find(3)->toTill, refused(Refusal::unknownCommand));
}

// A script sends many at once, and their answers leave together.
TEST_F(TracedSession, KnowsOfEachAnswerHoweverManyWait)
{
    constexpr int many = 500;
    std::string requests;
    for (int count = 0; count < many; ++count) {
        requests += request(0xE0);
    }
    const Steps steps = line.take(requests, now);
    EXPECT_EQ(steps.size(), std::size_t{many});
    for (const Step& step : steps) {
        line.hasAcknowledged(std::get<Send>(step.action).acknowledges, now + milliseconds(3));
    }
    for (std::uint64_t number = station.trace.first(); number < station.trace.end(); ++number) {
        const Exchanged& exchanged = *station.trace.find(number);
        EXPECT_TRUE(exchanged.isAcknowledged && exchanged.isOver) << number;
        EXPECT_EQ(exchanged.answered, milliseconds(3)) << number;
    }
}

// What the till was not told when it went is over, and was not acknowledged.
TEST_F(TracedSession, EndsEachExchangeWithTheTillHoweverManyWait)
{
    constexpr int many = 100;
    std::string requests;
    for (int count = 0; count < many; ++count) {
        requests += request(0xE0);
    }
    line.take(requests, now);
    exchange(serial, request(0xE0));
    serial.take(request(0xE0), now); // another till's, which goes on
    line.hasGone();
    for (std::uint64_t number = station.trace.first(); number < station.trace.end(); ++number) {
        const Exchanged& exchanged = *station.trace.find(number);
        EXPECT_EQ(exchanged.isOver, number <= many + 1) << number;
        EXPECT_EQ(exchanged.isAcknowledged, number == many + 1) << number;
    }
}

TEST_F(TracedSession, TakesTheSameRequestAfterAnAcceptanceForANewOne)
{
    openReceipt();
    const std::string sold = item(0x24, "Chlieb", "1.00");
    exchange(line, sold);
    EXPECT_EQ(exchange(line, sold).repeatOf, 0U);
}

TEST_F(TracedSession, KnowsTheTriesOfASerialLinkThatIsRefused)
{
    const std::string end = request(0x22, {"0", "0"});
    std::vector<int> attempts;
    for (int count = 0; count < 4; ++count) {
        const Exchanged& exchanged = exchange(serial, end, milliseconds(1));
        attempts.push_back(exchanged.attempt);
        EXPECT_EQ(exchanged.repeatOf, exchanged.number - 1);
    }
    EXPECT_THAT(attempts, testing::ElementsAre(1, 2, 3, 1));
}

TEST_F(TracedSession, KnowsThatTcpSendsNoRefusedRequestAgain)
{
    const std::string end = request(0x22, {"0", "0"});
    exchange(line, end);
    const Exchanged& again = exchange(line, end, milliseconds(10));
    EXPECT_EQ(again.repeatOf, 1U);
    EXPECT_EQ(again.attempt, 1);
}

TEST_F(TracedSession, TakesWhatAPersonRepeatsAfterARefusalOverTcpForANewCall)
{
    const std::string end = request(0x22, {"0", "0"});
    for (int count = 0; count < 3; ++count) {
        EXPECT_EQ(exchange(line, end, seconds(3)).attempt, 1);
    }
}

TEST_F(TracedSession, KnowsTheTriesOfTcpAfterSilenceWithProbesBetween)
{
    line.take(day, now); // whose answer does not get through
    now += seconds(3);
    line.take("\x11", now);
    const Exchanged& again = exchange(line, day, milliseconds(1));
    EXPECT_EQ(again.repeatOf, 1U);
    EXPECT_EQ(again.attempt, 2);
    EXPECT_EQ(again.repeatedAfter, seconds(3) + milliseconds(1));
}

// The next customer pays the same sum, or buys the same, and nothing of that is a repeat.
TEST_F(TracedSession, TakesTheSameInAnotherReceiptForWhatIsNew)
{
    const std::string sold = item(0x24, "Chlieb", "1.00");
    const std::string paid = request(0x30, {"0", "1", "1.00", "1.00", "0", "Hotovost"});
    const std::string end = request(0x22, {"0", "0"});
    const std::string destroy = request(0x2B, {"0", ""});
    const auto nextReceipt = [&] {
        const std::string begin = request(0x20, {"0", "1", "0", "0", "1", "0"});
        return exchange(line, begin).isExecuted && exchange(line, sold).isExecuted;
    };
    exchange(line, day);
    ASSERT_TRUE(nextReceipt());
    line.take(paid, now); // carried out, and the till does not hear of it
    exchange(line, end);
    ASSERT_TRUE(nextReceipt());
    EXPECT_EQ(exchange(line, paid).repeatOf, 0U);
    line.take(end, now);
    ASSERT_TRUE(nextReceipt());
    exchange(line, paid);
    EXPECT_EQ(exchange(line, end).repeatOf, 0U);
    ASSERT_TRUE(nextReceipt());
    line.take(paid, now);
    exchange(line, destroy);
    ASSERT_TRUE(nextReceipt());
    EXPECT_EQ(exchange(line, paid).repeatOf, 0U);
}

TEST_F(TracedSession, FindsWhatWasCarriedOutInTheReceiptUntilThatIsEnded)
{
    openReceipt();
    const std::string sold = item(0x24, "Chlieb", "1.00");
    const std::string destroy = request(0x2B, {"0", ""});
    line.take(sold, now);
    const std::uint64_t lost = station.trace.end() - 1;
    exchange(line, request(0x20, {"0", "1", "0", "0", "1", "0"})); // refused: it begins nothing
    EXPECT_EQ(exchange(line, sold).repeatOf, lost);
    line.take(destroy, now);
    exchange(line, request(0x92, {"STATE"}));
    exchange(line, "\x03");
    EXPECT_EQ(exchange(line, destroy).repeatOf, lost + 3) << "the end itself is looked for";
}

// Over TCP a till that has heard nothing sends again by itself, on a serial line it gives up.
TEST_F(TracedSession, TakesAnAnswerThatWasPutOffAndNeverCameForSilence)
{
    for (TillSession* till : {&line, &serial}) {
        const std::uint64_t fault =
            station.faults.arm({.kind = FaultKind::acknowledgeLate, .duration = std::chrono::minutes(1)});
        const std::uint64_t number = station.trace.end();
        for (const Step& step : till->take(request(0xE0), now)) {
            till->hasLost(step);
        }
        EXPECT_TRUE(station.trace.find(number)->isOver);
        station.faults.disarm(fault);
        const Exchanged& again = exchange(*till, request(0xE0), seconds(3));
        EXPECT_EQ(again.repeatOf, number);
        EXPECT_EQ(again.attempt, till == &line ? 2 : 1);
    }
}

TEST_F(TracedSession, FindsWhatWasCarriedOutWithoutTheTillsKnowingAlsoLater)
{
    openReceipt();
    const std::string sold = item(0x24, "Chlieb", "1.00");
    line.take(sold, now);
    const std::uint64_t lost = station.trace.end() - 1;
    exchange(line, request(0x92, {"DAY"}));
    exchange(line, "\x03");
    const Exchanged& again = exchange(serial, sold); // on another connection
    EXPECT_EQ(again.repeatOf, lost);
    EXPECT_EQ(again.attempt, 1);
}

} // namespace
} // namespace virtual_printer
