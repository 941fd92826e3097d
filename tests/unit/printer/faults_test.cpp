// Which requests a fault hits: by command, by number, by whole calls, by chance, and when it ends.
#include "virtual_printer/faults/faults.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace virtual_printer {
namespace {

using testing::ElementsAre;

class ArmedFaults : public testing::Test
{
protected:
    // Which of the requests are hit: "n" begins a call, "r" is sent again by the link.
    std::string hitsOf(const std::string& requests, std::string_view command = "payment")
    {
        std::string hits;
        for (const char request : requests) {
            hits += meet({.command = 0x30, .commandName = command, .beginsCall = request == 'n'}) ? 'X' : '-';
        }
        return hits;
    }
    // Whether one hits; it then does something to this exchange.
    bool meet(const Occasion& occasion, std::uint64_t exchange = 1)
    {
        const Hits hits = faults.meet(occasion);
        for (const Faults::Hit& hit : hits) {
            faults.hasDone(hit.number, exchange);
        }
        return !hits.empty();
    }

    Faults faults;
    Fault fault{.kind = FaultKind::acknowledgeLost};
};

TEST_F(ArmedFaults, HitOneRequestAndEnd)
{
    faults.arm(fault);
    EXPECT_EQ(hitsOf("nnn"), "X--");
    EXPECT_TRUE(faults.list().front().hasEnded);
    EXPECT_EQ(faults.list().front().requestsHit, 1);
}

TEST_F(ArmedFaults, AreNotUsedUpByARequestToWhichTheyCouldDoNothing)
{
    fault.requests = 1;
    fault.calls = 1;
    faults.arm(fault);
    EXPECT_EQ(faults.meet({}).size(), 1U);
    EXPECT_FALSE(faults.list().front().hasEnded);
    EXPECT_EQ(faults.list().front().requestsMet, 1);
    EXPECT_EQ(faults.list().front().requestsHit + faults.list().front().callsHit, 0);
    EXPECT_EQ(hitsOf("n"), "X");
    EXPECT_TRUE(faults.list().front().hasEnded);
}

TEST_F(ArmedFaults, HitOnlyTheirCommand)
{
    fault.commandName = "itemSale";
    faults.arm(fault);
    EXPECT_EQ(hitsOf("n", "payment"), "-");
    EXPECT_EQ(hitsOf("n", "itemSale"), "X");
    faults.disarmAll();
    fault.commandName.clear();
    fault.commandCode = 0x31;
    faults.arm(fault);
    EXPECT_EQ(hitsOf("n"), "-");
    fault.commandCode = 0x30;
    faults.arm(fault);
    EXPECT_EQ(hitsOf("n"), "X");
}

TEST_F(ArmedFaults, CountRequestsWithTheirRepeats)
{
    fault.fromRequest = 3;
    fault.requests = 2;
    faults.arm(fault);
    EXPECT_EQ(hitsOf("nrrnn"), "--XX-");
}

TEST_F(ArmedFaults, CountWholeCallsWithoutRepeats)
{
    fault.fromCall = 2;
    fault.calls = 2;
    faults.arm(fault);
    EXPECT_EQ(hitsOf("nrrnrrnrnn"), "---XXXXX--");
    EXPECT_TRUE(faults.list().front().hasEnded);
    EXPECT_EQ(faults.list().front().callsHit, 2);
    EXPECT_EQ(faults.list().front().requestsHit, 5);
}

TEST_F(ArmedFaults, EndWithWhateverComesFirst)
{
    fault.calls = 1;
    fault.requests = 2;
    faults.arm(fault);
    EXPECT_EQ(hitsOf("nrrn"), "XX--");
}

TEST_F(ArmedFaults, DrawTheSameFromTheSameSeed)
{
    const std::string many(200, 'n');
    fault.probability = 0.25;
    fault.requests = 1000;
    fault.seed = 7;
    faults.arm(fault);
    const std::string first = hitsOf(many);
    faults.disarmAll();
    faults.arm(fault);
    EXPECT_EQ(hitsOf(many), first);
    const auto hits = std::count(first.begin(), first.end(), 'X');
    EXPECT_GT(hits, 25);
    EXPECT_LT(hits, 75);
    faults.disarmAll();
    fault.seed = 8;
    faults.arm(fault);
    EXPECT_NE(hitsOf(many), first);
}

// The chance is a call's, not that of each of its tries: all of them are hit or none.
TEST_F(ArmedFaults, DrawOnceForAWholeCall)
{
    fault.probability = 0.5;
    fault.calls = 20;
    fault.seed = 3;
    faults.arm(fault);
    int callsHit = 0;
    int callsSpared = 0;
    while (!faults.list().front().hasEnded) {
        const std::string hits = hitsOf("nrr");
        ASSERT_TRUE(hits == "XXX" || hits == "---") << hits;
        callsHit += hits == "XXX" ? 1 : 0;
        callsSpared += hits == "---" ? 1 : 0;
    }
    EXPECT_EQ(callsHit, 20);
    EXPECT_GT(callsSpared, 5);
    EXPECT_EQ(faults.list().front().callsHit, 20);
    EXPECT_EQ(faults.list().front().requestsHit, 60);
}

// With requests to count each of them has its own.
TEST_F(ArmedFaults, DrawForEachRequestWithoutCallsToCount)
{
    fault.probability = 0.5;
    fault.requests = 1000;
    faults.arm(fault);
    bool isDivided = false;
    for (int count = 0; count < 50; ++count) {
        const std::string hits = hitsOf("nrr");
        isDivided = isDivided || (hits != "XXX" && hits != "---");
    }
    EXPECT_TRUE(isDivided);
}

TEST_F(ArmedFaults, OfAConnectionListNoExchange)
{
    fault.kind = FaultKind::connectionClosed;
    fault.at = FaultMoment::connection;
    faults.arm(fault);
    EXPECT_TRUE(meet({.kind = Occasion::Kind::connection}, 0));
    EXPECT_EQ(faults.list().front().requestsHit, 1);
    EXPECT_TRUE(faults.list().front().exchanges.empty());
}

TEST_F(ArmedFaults, OfAConnectionMeetNoRequest)
{
    fault.kind = FaultKind::connectionClosed;
    fault.at = FaultMoment::connection;
    fault.fromRequest = 2;
    faults.arm(fault);
    EXPECT_EQ(hitsOf("nn"), "--");
    const Occasion connection{.kind = Occasion::Kind::connection};
    EXPECT_FALSE(meet(connection));
    EXPECT_TRUE(meet(connection, 0));
    EXPECT_FALSE(meet(connection));
}

TEST_F(ArmedFaults, AreDisarmedByNumberAndTellOfIt)
{
    std::vector<std::pair<std::uint64_t, bool>> told;
    faults.watch([&](const Armed& one, Faults::Event event) {
        told.emplace_back(one.number, event == Faults::Event::armed);
    });
    EXPECT_EQ(faults.arm(fault), 1U);
    EXPECT_EQ(faults.arm(fault), 2U);
    EXPECT_TRUE(faults.disarm(1));
    EXPECT_FALSE(faults.disarm(1));
    EXPECT_EQ(faults.list().front().number, 2U);
    EXPECT_EQ(faults.arm(fault), 3U);
    EXPECT_THAT(told, ElementsAre(std::pair(1U, true), std::pair(2U, true), std::pair(1U, false),
                                  std::pair(3U, true)));
}

TEST_F(ArmedFaults, SayWhichExchangesTheyHaveHit)
{
    fault.requests = 200;
    faults.arm(fault);
    for (std::uint64_t number = 1; number <= 150; ++number) {
        EXPECT_TRUE(meet({}, number));
    }
    EXPECT_EQ(faults.list().front().exchanges.size(), 100U);
    EXPECT_EQ(faults.list().front().exchanges.front(), 51U);
    EXPECT_EQ(faults.list().front().exchanges.back(), 150U);
}

TEST(FaultRules, AreInTheOrderOfTheKinds)
{
    for (const FaultRule& rule : faultRules) {
        EXPECT_EQ(&ruleOf(rule.kind), &rule) << rule.name;
    }
}

} // namespace
} // namespace virtual_printer
