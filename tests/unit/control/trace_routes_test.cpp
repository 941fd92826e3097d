// The trace over the control interface: as lines, and live with resuming by number.
#include "tests/unit/control/controlled_till.h"

namespace virtual_printer {
namespace {

using testing::HasSubstr;

class TraceUnderControl : public ControlledTill
{
protected:
    Stream follow(const std::string& query = "", const std::string& lastEventId = "")
    {
        HttpRequest request = requestFor("GET", at("trace/events" + query), "");
        request.lastEventId = lastEventId;
        return std::get<Stream>(control.answer(request));
    }
    // What comes now, for the description as well.
    std::string moreOf(const Stream& stream)
    {
        const std::string events = stream.more();
        noteDown("GET", at("trace/events"), "",
                 HttpAnswer{.status = 200, .body = events, .contentType = stream.contentType});
        return events;
    }
    static std::vector<std::string> idsIn(const std::string& events)
    {
        std::vector<std::string> ids;
        for (std::size_t at = events.find("id: "); at != std::string::npos;
             at = events.find("id: ", at + 1)) {
            ids.push_back(events.substr(at + 4, events.find('\n', at) - at - 4));
        }
        return ids;
    }
};

TEST_F(TraceUnderControl, IsALineOfJsonForEachExchange)
{
    beginDay();
    beginReceipt();
    const auto answer = std::get<HttpAnswer>(control.answer(requestFor("GET", at("trace?after=1"), "")));
    EXPECT_EQ(answer.contentType, "application/x-ndjson");
    EXPECT_EQ(std::count(answer.body.begin(), answer.body.end(), '\n'), 1);
    const Json line = noteDown("GET", at("trace?after=1"), "", answer).json;
    EXPECT_EQ(line["number"], 2);
    EXPECT_EQ(line["name"], "paragonBegin");
    EXPECT_EQ(line["toTill"], "06");
}

TEST_F(TraceUnderControl, TellsThatItHasForgotten)
{
    station.trace = Trace(Trace::Limits{.exchanges = 2, .bytes = 100'000});
    beginDay();
    sell("1.00");
    EXPECT_EQ(refusedWith(410, ask("GET", at("trace?after=1"))),
              "The trace begins at exchange 4, earlier ones are forgotten; ask without \"after\".");
}

TEST_F(TraceUnderControl, IsFollowedFromNowOnOrFromANumber)
{
    beginDay();
    const Stream live = follow();
    EXPECT_EQ(live.contentType, "text/event-stream");
    EXPECT_EQ(live.more(), "");
    beginReceipt();
    EXPECT_THAT(moreOf(live), testing::StartsWith("id: 2\nevent: exchange\ndata: {\"number\":2,"));
    EXPECT_EQ(live.more(), "");
    EXPECT_THAT(idsIn(follow("?after=0").more()), testing::ElementsAre("1", "2"));
    EXPECT_THAT(idsIn(follow("", "1").more()), testing::ElementsAre("2"));
    EXPECT_EQ(std::get<HttpAnswer>(control.answer([] {
                  HttpRequest request = requestFor("GET", at("trace/events"), "");
                  request.lastEventId = "x";
                  return request;
              }()))
                  .status,
              400);
}

// An exchange whose answer is still to come would be told twice.
TEST_F(TraceUnderControl, IsFollowedByExchangesThatAreOver)
{
    const Stream live = follow();
    session.take(telvofm::test::request(0x29, {"0"}), now);
    EXPECT_EQ(live.more(), "");
    session.hasAcknowledged(1, now);
    EXPECT_THAT(live.more(), HasSubstr(R"("acknowledged":true)"));
}

TEST_F(TraceUnderControl, TellsAFollowerThatWasTooSlow)
{
    station.trace = Trace(Trace::Limits{.exchanges = 2, .bytes = 100'000});
    beginDay();
    sell("1.00");
    const std::string events = moreOf(follow("?after=0"));
    EXPECT_THAT(events, testing::StartsWith("event: lost\ndata: {\"from\":1,\"to\":3}\n\n"));
    EXPECT_THAT(idsIn(events), testing::ElementsAre("4", "5"));
}

// After a restart of the program the numbers begin again.
TEST_F(TraceUnderControl, IsFollowedFromItsBeginningAfterANumberThatItHasNeverHad)
{
    beginDay();
    EXPECT_THAT(idsIn(follow("", "1000").more()), testing::ElementsAre("1"));
}

} // namespace
} // namespace virtual_printer
