// What tests expect, and the words in which they are told that it is not so.
#include "tests/unit/control/controlled_till.h"

namespace virtual_printer {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class Assertions : public ControlledTill
{
protected:
    // The differences; none when it holds.
    std::vector<std::string> check(const std::string& assertion)
    {
        const Answered answered = post(at("assert"), assertion);
        auto found = answered.json.value("differences", std::vector<std::string>{"refused"});
        EXPECT_EQ(answered.status, found.empty() ? 200 : 422) << answered.json;
        EXPECT_EQ(answered.json.value("holds", false), found.empty());
        return found;
    }
    Later wait(const std::string& body)
    {
        return std::get<Later>(control.answer(requestFor("POST", at("wait"), body)));
    }
};

TEST_F(Assertions, HoldForExactlyOneReceiptPaidByCardAndNoRequestRepeated)
{
    beginDay();
    sell("12.50");
    const std::string expected = R"({"committed": [{"kind": "receipt", "total": "12.50",
        "payments": [{"name": "Karta", "sum": "12.50"}]}], "repeated": 0})";
    EXPECT_THAT(check(expected), ElementsAre());
    sell("3.00");
    EXPECT_THAT(check(expected),
                ElementsAre("committed: there are 2 documents, 1 are expected",
                            "committed: nobody expects receipt 2 of 2026-01-31 12:00:00, total 3.00"));
}

TEST_F(Assertions, NameTheNearestDocument)
{
    beginDay();
    sell("12.00");
    EXPECT_THAT(
        check(R"({"committed": [{"kind": "receipt", "total": "12.50", "items": [{"name": "Chlieb"}]}]})"),
        ElementsAre(
            R"(committed[0]: no document is {"kind":"receipt","total":"12.50","items":[{"name":"Chlieb"}]} )"
            R"(there; the nearest is receipt 1 of 2026-01-31 12:00:00, total 12.00: total is "12.00", )"
            R"("12.50" is expected)"));
}

TEST_F(Assertions, TellWhatIsReceivedFromWhatIsExecutedAndAcknowledged)
{
    beginDay();
    beginReceipt();
    sellItem("12.50");
    // Paid, but the answer does not get away.
    session.take(telvofm::test::request(0x30, {"0", "2", "12.50", "12.50", "0", "x"}), now);
    // And too much, which is refused.
    EXPECT_EQ(tillSays(telvofm::test::request(0x24, {"0", "x", "1.00", "A", "1.000", "1.00", "ks "})).at(0),
              '\x15');
    EXPECT_THAT(check(R"({"received": [{"name": "payment"}, {"name": "itemSale", "count": 2}],
                          "executed": [{"name": "payment"}, {"name": "itemSale"}],
                          "acknowledged": [{"name": "itemSale"}]})"),
                ElementsAre());
    EXPECT_THAT(check(R"({"executed": [{"name": "itemSale", "count": 2}]})"),
                ElementsAre(R"(executed: 1 exchanges are {"name":"itemSale"}, 2 are expected)"));
}

TEST_F(Assertions, CompareFieldsByName)
{
    beginDay();
    sell("12.50");
    EXPECT_THAT(
        check(R"({"received": [{"name": "payment", "fields": {"paymentNumber": "2", "total": "12.50"}}]})"),
        ElementsAre());
    EXPECT_THAT(
        check(R"({"received": [{"name": "payment", "fields": {"paymentNumber": "1"}}]})"),
        ElementsAre(R"(received: 0 exchanges are {"name":"payment","fields":{"paymentNumber":"1"}}, 1 are )"
                    R"(expected; the nearest is exchange 4: fields.paymentNumber is "2", "1" is expected)"));
}

TEST_F(Assertions, CountRequestsThatRepeatAnEarlierOne)
{
    beginDay();
    EXPECT_EQ(tillSays(telvofm::test::request(0x22, {"0", "0"})).at(0), '\x15');
    EXPECT_EQ(tillSays(telvofm::test::request(0x22, {"0", "0"})).at(0), '\x15');
    EXPECT_THAT(
        check(R"({"repeated": 0})"),
        ElementsAre("repeated: 1 requests repeat an earlier one, 0 are expected: 3 paragonEnd repeats 2"));
}

TEST_F(Assertions, BeginAtTheLastResetOrWhereTheySay)
{
    beginDay();
    sell("12.50");
    const std::string position = get(at("state"))["position"].dump();
    sell("3.00");
    EXPECT_THAT(check(R"({"since": )" + position + R"(, "committed": [{"total": "3.00"}],
                          "received": [{"name": "payment"}]})"),
                ElementsAre());
    post(at("reset"), "");
    EXPECT_THAT(check(R"({"committed": [], "received": [{"name": "payment", "count": 0}]})"), ElementsAre());
}

TEST_F(Assertions, FailAloudPastTheTrace)
{
    station.trace = Trace(Trace::Limits{.exchanges = 2, .bytes = 100'000});
    beginDay();
    sell("12.50");
    EXPECT_EQ(
        refusedWith(410, post(at("assert"), R"({"repeated": 0})")),
        "The trace begins at exchange 4 and the assertion at 1, which is forgotten; assert sooner, or give a "
        "later \"since\".");
    EXPECT_THAT(check(R"({"committed": [{"total": "12.50"}]})"),
                ElementsAre()); // the journal forgets nothing
    EXPECT_THAT(refusedWith(410, post(at("assert"), R"({"since": {"document": 5}, "committed": []})")),
                HasSubstr("The journal has been cleared"));
}

TEST_F(Assertions, ThatAreNotUnderstoodAreRefused)
{
    EXPECT_THAT(refusedWith(400, post(at("assert"), R"({"recieved": []})")),
                HasSubstr("There is no \"recieved\"; "));
    EXPECT_THAT(refusedWith(400, post(at("assert"), R"({"received": "payment"})")),
                HasSubstr("is no list of objects"));
    EXPECT_THAT(refusedWith(400, post(at("assert"), R"({"committed": [{"kind": "bill"}]})")),
                HasSubstr("\"bill\""));
    EXPECT_THAT(refusedWith(400, post(at("assert"), "12")),
                "The body is no JSON object; send one as {\"name\": \"value\"}.");
    EXPECT_THAT(refusedWith(400, post(at("assert"), R"({"committed": )" + std::string(100, '[') +
                                                        std::string(100, ']') + "}")),
                HasSubstr("nested deeper than 16 levels"));
    EXPECT_THAT(refusedWith(400, post(at("wait"), "{}")), HasSubstr("\"until\" is missing"));
}

TEST_F(Assertions, AreWaitedForUntilTheyHold)
{
    beginDay();
    int changes = 0;
    control.notify([&changes] { ++changes; });
    const Later later = wait(R"({"until": {"committed": [{"total": "12.50"}]}, "limit": 1000})");
    EXPECT_EQ(later.limit, std::chrono::milliseconds(1000));
    EXPECT_FALSE(later.look(false));
    sell("12.50");
    EXPECT_GT(changes, 0);
    const auto answer = later.look(false);
    ASSERT_TRUE(answer);
    EXPECT_EQ(noteDown("POST", at("wait"), R"({"until": {}})", *answer).json["holds"], true);
}

TEST_F(Assertions, AreWaitedForWhileAnAnswerIsNotYetSent)
{
    beginDay();
    const Later later = wait(R"({"until": {"executed": [{"name": "paragonBegin"}],
                                           "acknowledged": [{"name": "paragonBegin", "count": 0}]}})");
    int changes = 0;
    control.notify([&changes] { ++changes; });
    session.take(telvofm::test::request(0x20, {"0", "1", "0", "0", "1", "0"}), now);
    EXPECT_EQ(changes, 1);
    EXPECT_TRUE(later.look(false));
}

TEST_F(Assertions, TellWhatIsMissingWhenTheLimitIsOver)
{
    const Later later = wait(R"({"until": {"situation": "idle"}, "limit": 1})");
    const auto answer = later.look(true);
    ASSERT_TRUE(answer);
    EXPECT_EQ(
        noteDown("POST", at("wait"), R"({"until": {"situation": "idle"}, "limit": 1})", *answer).json,
        Json::parse(
            R"({"holds": false, "differences": ["situation: it is \"noDay\", \"idle\" is expected"]})"));
    EXPECT_EQ(post(at("wait"), R"({"until": {"situation": "idle"}, "limit": 0})").status, 422);
}

} // namespace
} // namespace virtual_printer
