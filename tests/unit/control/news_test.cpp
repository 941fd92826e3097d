// The newest of everything in one answer, for whoever watches a printer.
#include "tests/unit/control/controlled_till.h"

namespace virtual_printer {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class NewsUnderControl : public ControlledTill
{
protected:
    static std::vector<int> numbersOf(const Json& list)
    {
        std::vector<int> numbers;
        for (const Json& each : list) {
            numbers.push_back(each.is_object() ? each["number"] : each);
        }
        return numbers;
    }
};

TEST_F(NewsUnderControl, AreWhatTheOthersShowByThemselves)
{
    beginDay();
    sell("2.00");
    post(at("faults"), R"({"kind": "busy", "milliseconds": 10})");
    const Json news = get(at("news"));
    EXPECT_EQ(news["state"], get(at("state")));
    EXPECT_EQ(news["totals"], get(at("totals")));
    EXPECT_EQ(news["faults"], get(at("faults"))["faults"]);
    EXPECT_THAT(numbersOf(news["trace"]), ElementsAre(1, 2, 3, 4, 5));
    EXPECT_EQ(news["trace"][2]["name"], "itemSale");
    EXPECT_EQ(news["paper"].size() + 1, news["state"]["paper"]["next"].get<std::size_t>());
    EXPECT_EQ(news["paper"].back()["kind"], "cut");
    EXPECT_EQ(news["paper"].back()["document"], 1);
}

TEST_F(NewsUnderControl, AreNoMoreThanIsWantedOfWhatIsNotKnown)
{
    beginDay();
    sell("2.00");
    EXPECT_THAT(numbersOf(get(at("news?exchange=3"))["trace"]), ElementsAre(4, 5));
    EXPECT_THAT(numbersOf(get(at("news?exchange=5"))["trace"]), IsEmpty());
    EXPECT_THAT(numbersOf(get(at("news?most=2"))["trace"]), ElementsAre(4, 5));
    EXPECT_THAT(numbersOf(get(at("news?exchange=4&most=2"))["trace"]), ElementsAre(5));
    const Json all = get(at("news"))["paper"];
    const int last = all.back()["number"];
    EXPECT_THAT(numbersOf(get(at("news?most=2"))["paper"]), ElementsAre(last - 1, last));
    EXPECT_THAT(numbersOf(get(at("news?line=" + std::to_string(last - 1)))["paper"]), ElementsAre(last));
    EXPECT_THAT(numbersOf(get(at("news?line=900"))["paper"]), IsEmpty())
        << "of an earlier start of the program";
    EXPECT_THAT(refusedWith(400, ask("GET", at("news?most=0"))), HasSubstr("\"most\" is no whole number"));
}

TEST_F(NewsUnderControl, AreCountedWithEachChange)
{
    const auto before = get(at("news"))["changes"].get<std::uint64_t>();
    EXPECT_EQ(get(at("news"))["changes"], before) << "who asks changes nothing";
    beginDay();
    EXPECT_GT(get(at("news"))["changes"], before);
}

// An answer that a fault has put off still comes, until the till has gone or asks something else.
TEST_F(NewsUnderControl, TellWhichExchangesAreNotOver)
{
    const auto unfinished = [this] { return numbersOf(get(at("news"))["unfinished"]); };
    tillSays(telvofm::test::request(0xE0));
    EXPECT_THAT(unfinished(), IsEmpty());
    post(at("faults"), R"({"kind": "busy", "calls": 2})");
    session.take(telvofm::test::request(0xE0), now);
    session.take("\x11", now);
    EXPECT_THAT(unfinished(), ElementsAre(2, 3)) << "nothing has left the printer";
    session.take(telvofm::test::request(0xE0), now);
    EXPECT_THAT(unfinished(), ElementsAre(4));
    EXPECT_THAT(numbersOf(get(at("news?exchange=4"))["unfinished"]), ElementsAre(4)) << "it will change";
    session.hasGone();
    EXPECT_THAT(unfinished(), IsEmpty());
}

// No exchange tells of either.
TEST_F(NewsUnderControl, TellOfAFaultThatEndsWithAConnection)
{
    int looks = 0;
    control.notify([&looks] { ++looks; });
    const auto changes = [this] { return get(at("news"))["changes"].get<std::uint64_t>(); };
    const auto hasEnded = [this] { return get(at("news"))["faults"].back()["ended"].get<bool>(); };
    post(at("faults"), R"({"kind": "connectionClosed", "at": "connection"})");
    auto before = changes();
    looks = 0;
    session.greet();
    EXPECT_TRUE(hasEnded());
    EXPECT_GT(changes(), before);
    EXPECT_GT(looks, 0);
    // Its call may be tried again until the till has gone.
    post(at("faults"), R"({"kind": "acknowledgeLost", "calls": 1})");
    tillSays(telvofm::test::request(0xE0));
    EXPECT_FALSE(hasEnded());
    before = changes();
    looks = 0;
    session.hasGone();
    EXPECT_TRUE(hasEnded());
    EXPECT_GT(changes(), before);
    EXPECT_GT(looks, 0);
}

} // namespace
} // namespace virtual_printer
