// Waiting until an assertion holds: what it sees of the changes meanwhile, and how it ends.
#include "tests/unit/control/controlled_till.h"

namespace virtual_printer {
namespace {

using telvofm::test::request;
using testing::HasSubstr;

class Waits : public ControlledTill
{
protected:
    Later wait(const std::string& body)
    {
        return std::get<Later>(control.answer(requestFor("POST", at("wait"), body)));
    }
    // The answer with which it ends.
    Answered endOf(const Later& later, bool isOver = false)
    {
        return noteDown("POST", at("wait"), R"({"until": {}})", later.look(isOver).value());
    }
};

TEST_F(Waits, EndAsSoonAsItIsSo)
{
    beginDay();
    int changes = 0;
    control.notify([&changes] { ++changes; });
    const Later later = wait(R"({"until": {"committed": [{"total": "12.50"}]}, "limit": 1000})");
    EXPECT_EQ(later.limit, std::chrono::milliseconds(1000));
    EXPECT_FALSE(later.look(false));
    sell("12.50");
    EXPECT_GT(changes, 0);
    EXPECT_EQ(endOf(later).json["holds"], true);
}

TEST_F(Waits, SeeAnAnswerThatIsNotYetSent)
{
    beginDay();
    const Later later = wait(R"({"until": {"executed": [{"name": "paragonBegin"}],
                                           "acknowledged": [{"name": "paragonBegin", "count": 0}]}})");
    int changes = 0;
    control.notify([&changes] { ++changes; });
    session.take(request(0x20, {"0", "1", "0", "0", "1", "0"}), now);
    EXPECT_EQ(changes, 1);
    EXPECT_TRUE(later.look(false));
}

TEST_F(Waits, TellWhatIsMissingWhenTheLimitIsOver)
{
    const Later later = wait(R"({"until": {"situation": "idle"}, "limit": 1})");
    EXPECT_EQ(
        endOf(later, true).json,
        Json::parse(
            R"({"holds": false, "differences": ["situation: it is \"noDay\", \"idle\" is expected"]})"));
    EXPECT_EQ(post(at("wait"), R"({"until": {"situation": "idle"}, "limit": 0})").status, 422);
    EXPECT_THAT(refusedWith(400, post(at("wait"), "{}")), HasSubstr("\"until\" is missing"));
}

TEST_F(Waits, EndWhenTheJournalIsClearedBeforeTheirBegin)
{
    beginDay();
    sell("1.00");
    const Later later = wait(R"({"until": {"since": {"document": 1}, "committed": [{"total": "9.99"}]}})");
    EXPECT_FALSE(later.look(false));
    EXPECT_EQ(post(at("reset"), "").status, 200);
    EXPECT_THAT(refusedWith(410, endOf(later)), HasSubstr("The journal has been cleared"));
}

TEST_F(Waits, EndWhenTheTraceForgetsTheirBegin)
{
    station.trace = Trace(Trace::Limits{.exchanges = 5, .bytes = 100'000});
    beginDay();
    const Later later = wait(R"({"until": {"received": [{"name": "payment"}]}})");
    for (int count = 0; count < 4; ++count) {
        tillSays("\x11");
    }
    EXPECT_FALSE(later.look(false));
    tillSays("\x11");
    EXPECT_THAT(refusedWith(410, endOf(later)), HasSubstr("which is forgotten"));
    EXPECT_THAT(refusedWith(410, endOf(later, true)), HasSubstr("which is forgotten"));
}

// The answer gets away when two other exchanges have come: what was counted then changes.
TEST_F(Waits, SeeAnExchangeThatChangesLater)
{
    beginDay();
    const Later later = wait(R"({"until": {"acknowledged": [{"name": "paragonBegin"}]}})");
    session.take(request(0x20, {"0", "1", "0", "0", "1", "0"}), now);
    EXPECT_FALSE(later.look(false));
    tillSays("\x11");
    tillSays("\x11");
    EXPECT_FALSE(later.look(false));
    session.hasAcknowledged(2, now);
    EXPECT_EQ(endOf(later).json["holds"], true);
}

TEST_F(Waits, CountExactlyHoweverManyChangesTheyHaveMissed)
{
    beginDay();
    const Later later =
        wait(R"({"until": {"acknowledged": [{"name": "probe", "count": 1500}, {"name": "paragonBegin"}]}})");
    for (int count = 0; count < 1500; ++count) {
        EXPECT_FALSE(count % 100 == 0 && later.look(false));
        tillSays("\x11");
    }
    beginReceipt();
    for (int count = 0; count < 1499; ++count) { // more changes than the trace remembers
        station.trace.change(2, [](Exchanged& exchanged) { exchanged.isAcknowledged = false; });
    }
    EXPECT_FALSE(later.look(false));
    station.trace.change(2, [](Exchanged& exchanged) { exchanged.isAcknowledged = true; });
    EXPECT_TRUE(later.look(false));
}

TEST_F(Waits, BeginAnewWithAReset)
{
    beginDay();
    sell("1.00");
    const Later later = wait(R"({"until": {"received": [{"name": "payment", "count": 2}]}})");
    post(at("reset"), "");
    EXPECT_FALSE(later.look(false));
    beginDay();
    sell("1.00");
    EXPECT_FALSE(later.look(false));
    sell("2.00");
    EXPECT_TRUE(later.look(false));
}

} // namespace
} // namespace virtual_printer
