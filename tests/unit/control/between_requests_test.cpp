// What comes right behind a till's request, before that request has been shown: the control interface sees
// all of it, and nothing of it comes into a printer that has become another one.
#include "tests/unit/control/controlled_till.h"

namespace virtual_printer {
namespace {

using telvofm::test::request;

class BetweenRequests : public ControlledTill
{
protected:
    // The till has not its answer yet.
    void executeWithoutShowing(const std::string& bytes) { session.take(bytes, now); }
    // The end of the day is kept as "evening", and a till clears the journal.
    void clearTheJournal()
    {
        beginDay();
        sell("12.50");
        ASSERT_EQ(tillSays(request(0x50, {"Z", "0"})), "\x06");
        ASSERT_EQ(post(at("snapshots"), R"({"name": "evening"})").status, 201);
        ASSERT_EQ(post(at("restore"), R"({"name": "evening"})").status, 200); // from here on assertions count
        executeWithoutShowing(request(0xF3, {"9999"}));
    }
};

TEST_F(BetweenRequests, NewPaperHasNoLineOfTheOldPrinter)
{
    beginDay();
    executeWithoutShowing(request(0x20, {"0", "1", "0", "0", "1", "0"}));
    const Json paper = post(at("reset"), "").json["paper"];
    EXPECT_EQ(paper["first"], paper["next"]);
    station.show();
    EXPECT_EQ(get(at("state"))["paper"], paper);
}

TEST_F(BetweenRequests, ARestoredJournalIsNotTheOneThatWasCleared)
{
    clearTheJournal();
    const Json since = post(at("restore"), R"({"name": "evening"})").json["since"];
    station.show();
    EXPECT_EQ(get(at("state"))["since"], since);
    EXPECT_EQ(post(at("assert"), R"({"committed": []})").json["differences"], Json::array());
}

TEST_F(BetweenRequests, AnAssertionKnowsThatTheJournalIsCleared)
{
    clearTheJournal();
    EXPECT_EQ(post(at("assert"), R"({"committed": []})").json["differences"], Json::array());
}

TEST_F(BetweenRequests, AWaitKnowsThatTheJournalIsCleared)
{
    beginDay();
    sell("12.50");
    ASSERT_EQ(tillSays(request(0x50, {"Z", "0"})), "\x06");
    post(at("snapshots"), R"({"name": "evening"})");
    post(at("restore"), R"({"name": "evening"})");
    const Later later = std::get<Later>(control.answer(requestFor(
        "POST", at("wait"), R"({"until": {"committed": [{"kind": "cancelledReceipt"}]}, "limit": 1000})")));
    executeWithoutShowing(request(0xF3, {"9999"}));
    EXPECT_FALSE(later.look(false)) << "and it is not over either";
    beginDay();
    beginReceipt();
    ASSERT_EQ(tillSays(request(0x2B, {"0", ""})), "\x06");
    EXPECT_EQ(later.look(false).value().status, 200);
}

} // namespace
} // namespace virtual_printer
