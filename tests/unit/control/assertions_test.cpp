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

TEST_F(Assertions, CountWhatIsNoRequestOnlyWhereItIsNamed)
{
    tillSays("\x11");
    ASSERT_EQ(tillSays(telvofm::test::request(0xD2, {"1", "0"})), "\x06");
    ASSERT_EQ(tillSays(telvofm::test::blockOf("x", '\x17')), "\x06");
    EXPECT_THAT(check(R"({"received": [{"count": 1}, {"name": "probe"}, {"name": "block"}, {"command": "d2"}],
                          "executed": [{"count": 1}, {"name": "block"}, {"command": "d2"}],
                          "acknowledged": [{"count": 1}, {"name": "probe"}, {"name": "block"},
                                           {"command": "d2"}]})"),
                ElementsAre());
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

// Places in the journal that a till has cleared since mean other documents.
TEST_F(Assertions, PassOverNoDocumentOfAJournalThatWasCleared)
{
    beginDay();
    sell("12.50");
    EXPECT_EQ(tillSays(telvofm::test::request(0x50, {"Z", "0"})), "\x06");
    post(at("snapshots"), R"({"name": "evening"})");
    post(at("restore"), R"({"name": "evening"})"); // from here on assertions count
    const std::string position = get(at("state"))["position"].dump();
    EXPECT_EQ(get(at("state"))["since"]["document"], 2);
    // All at once, so that the journal is as long again before anybody looks.
    const auto request = telvofm::test::request;
    const std::string begin = request(0x20, {"0", "1", "0", "0", "1", "0"});
    const std::string cancel = request(0x2B, {"0", ""});
    EXPECT_EQ(tillSays(request(0xF3, {"9999"}) + request(0x29, {"0"}) + begin + cancel + begin + cancel),
              std::string(6, '\x06'));
    EXPECT_EQ(get(at("state"))["since"]["document"], 0);
    EXPECT_THAT(check(R"({"committed": [{"kind": "cancelledReceipt"}, {"kind": "cancelledReceipt"}]})"),
                ElementsAre());
    EXPECT_EQ(refusedWith(410, post(at("assert"), R"({"since": )" + position + R"(, "committed": []})")),
              "The journal has begun anew since, before exchange 8; give a later \"since\".");
    EXPECT_THAT(check(R"({"since": {"document": 1}, "committed": [{"kind": "cancelledReceipt"}]})"),
                ElementsAre());
    EXPECT_EQ(
        refusedWith(410, post(at("assert"), R"({"since": {"exchange": 1, "document": 0}, "committed": []})")),
        "The journal has begun anew since, before exchange 8; give a later \"since\".");
    const std::string later = get(at("state"))["position"].dump();
    EXPECT_THAT(check(R"({"since": )" + later + R"(, "committed": []})"), ElementsAre());
    post(at("restore"), R"({"name": "evening"})");
    tillSays("\x11");
    post(at("reset"), "");
    EXPECT_THAT(refusedWith(410, post(at("assert"), R"({"since": )" + later + R"(, "committed": []})")),
                HasSubstr("The journal has begun anew since"));
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
}

TEST_F(Assertions, ShowLongTextsInPart)
{
    beginDay();
    sell("12.50");
    const std::string name(5000, 'x');
    EXPECT_THAT(check(R"({"committed": [{"items": [{"name": ")" + name + R"("}]}]})"),
                ElementsAre(testing::AllOf(testing::SizeIs(testing::Lt(700U)), HasSubstr("xxx ..."))));
    // Not in the middle of a character of two bytes.
    std::string hooks = "x";
    for (int count = 0; count < 200; ++count) {
        hooks += "\u010d";
    }
    const auto found = check(R"({"received": [{"answer": ")" + hooks + R"("}]})");
    EXPECT_THAT(found,
                ElementsAre(testing::AllOf(HasSubstr("\u010d ..."), testing::Not(HasSubstr("\ufffd")))));
}

TEST_F(Assertions, NameTwentyDocumentsThatNobodyExpects)
{
    beginDay();
    for (int count = 0; count < 25; ++count) {
        sell("1.00");
    }
    const auto found = check(R"({"committed": []})");
    EXPECT_EQ(found.size(), 1U + 20U + 1U);
    EXPECT_EQ(found.back(), "committed: nobody expects 5 more documents");
}

} // namespace
} // namespace virtual_printer
