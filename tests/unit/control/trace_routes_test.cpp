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
        std::string events = stream.more();
        noteDown("GET", at("trace/events"), "",
                 HttpAnswer{.status = 200, .body = events, .contentType = stream.contentType});
        return events;
    }

    static constexpr unsigned char journalCommand = 0x9F;
    static constexpr std::size_t fullBlock = 260; // 256 bytes of data in their frame
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

// Fifty tills wait while a piece is made.
TEST_F(TraceUnderControl, ComesInPiecesWhenItIsLong)
{
    constexpr int many = 3000;
    for (int count = 0; count < many; ++count) {
        tillSays("\x11");
    }
    const auto pieces = std::get<Pieces>(control.answer(requestFor("GET", at("trace"), "")));
    EXPECT_EQ(pieces.contentType, "application/x-ndjson");
    tillSays("\x11"); // it has been asked for before
    std::string all;
    for (bool isMore = true; isMore;) {
        const Piece piece = pieces.next();
        EXPECT_LT(piece.text.size(), 70'000U);
        all += piece.text;
        isMore = !piece.isLast;
    }
    EXPECT_EQ(std::count(all.begin(), all.end(), '\n'), many);
    EXPECT_THAT(all, testing::StartsWith(R"({"number":1,)"));
    const std::size_t last = all.rfind('\n', all.size() - 2) + 1;
    EXPECT_EQ(Json::parse(all.substr(last))["number"], many);
}

TEST_F(TraceUnderControl, MissesAloudWhatItForgetsWhileItComesInPieces)
{
    station.trace = Trace(Trace::Limits{.exchanges = 1000, .bytes = 10'000'000});
    const auto say = [this](int times) {
        for (int count = 0; count < times; ++count) {
            tillSays("\x11");
        }
    };
    say(1000);
    const auto pieces = std::get<Pieces>(control.answer(requestFor("GET", at("trace"), "")));
    say(1000);
    EXPECT_FALSE(pieces.next().isLast); // it was made at once
    EXPECT_THROW(pieces.next(), ControlRefusal);
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

TEST_F(TraceUnderControl, IsFollowedByARefusalWhenItHasLeft)
{
    const Stream live = follow();
    session.take(telvofm::test::request(0x22, {"0", "0"}), now);
    EXPECT_EQ(live.more(), "");
    session.hasAcknowledged(1, now);
    EXPECT_THAT(live.more(), HasSubstr(R"("refusal":{"code":)"));
}

TEST_F(TraceUnderControl, IsFollowedByAReplyWhenItsLastBlockIsTaken)
{
    beginDay();
    sell("1.00");
    const Stream live = follow();
    const std::string first = tillSays(telvofm::test::request(journalCommand));
    EXPECT_EQ(first.size(), fullBlock);
    EXPECT_EQ(live.more(), "");
    std::string reply = first;
    std::string next;
    while (!(next = tillSays("\x06")).empty()) {
        EXPECT_EQ(live.more(), "");
        reply += next;
    }
    EXPECT_GT(reply.size(), fullBlock);
    const std::string events = live.more();
    EXPECT_THAT(events, HasSubstr(R"("taken":true)"));
    const Json line = Json::parse(events.substr(events.find('{')));
    EXPECT_EQ(line["toTill"].get<std::string>().size(), reply.size() * 3 - 1); // pairs with blanks between
}

// The till says three times that the block is damaged, and the printer gives the reply up.
TEST_F(TraceUnderControl, IsFollowedByAReplyThatIsGivenUp)
{
    beginDay();
    sell("1.00");
    const Stream live = follow();
    tillSays(telvofm::test::request(journalCommand));
    tillSays("\x15");
    tillSays("\x15");
    EXPECT_EQ(live.more(), "");
    tillSays("\x15");
    EXPECT_THAT(live.more(), HasSubstr(R"("taken":false)"));
}

TEST_F(TraceUnderControl, IsFollowedByAReplyThatTheTillHasLeft)
{
    beginDay();
    sell("1.00");
    const Stream live = follow();
    tillSays(telvofm::test::request(journalCommand));
    EXPECT_EQ(live.more(), "");
    session.hasGone();
    EXPECT_THAT(live.more(), HasSubstr(R"("taken":false)"));
    EXPECT_EQ(live.more(), "");
}

TEST_F(TraceUnderControl, IsFollowedByAnAnswerThatIsLost)
{
    const Stream live = follow();
    post(at("faults"), R"({"kind": "acknowledgeLost"})");
    session.take(telvofm::test::request(0x29, {"0"}), now);
    const std::string events = live.more();
    EXPECT_THAT(events, HasSubstr(R"("executed":true)"));
    EXPECT_THAT(events, HasSubstr(R"("acknowledged":false)"));
    EXPECT_THAT(events, testing::Not(HasSubstr(R"("faults":[])")));
}

// Twenty milliseconds between the bytes, of which the last one does not come.
TEST_F(TraceUnderControl, IsFollowedByALostAnswerWhenAllThatIsSentOfItIsSent)
{
    const Stream live = follow();
    post(at("faults"), R"({"kind": "slow", "milliseconds": 20})");
    post(at("faults"), R"({"kind": "cut", "byte": 1})");
    const Steps steps = session.take(telvofm::test::request(0x22, {"0", "0"}), now);
    ASSERT_FALSE(steps.empty());
    EXPECT_EQ(live.more(), "");
    for (const Step& step : steps) {
        EXPECT_EQ(step.ends, &step == &steps.back() ? 1U : 0U);
    }
    session.hasEnded(steps.back().ends);
    EXPECT_THAT(live.more(), HasSubstr(R"("number":1,)"));
}

// A till that waits probes meanwhile; what a fault has put off comes all the same.
TEST_F(TraceUnderControl, IsFollowedByALateAnswerWhenItHasLeftWhateverIsProbedBefore)
{
    for (const char* fault : {R"({"kind": "busy", "milliseconds": 800})",
                              R"({"kind": "acknowledgeLate", "milliseconds": 1000})"}) {
        SCOPED_TRACE(fault);
        const Stream live = follow();
        const std::uint64_t begin = station.trace.end();
        post(at("faults"), fault);
        session.take(telvofm::test::request(0xE0), now);
        tillSays("\x11");
        EXPECT_EQ(live.more(), "");
        session.hasAcknowledged(begin, now);
        const std::string events = live.more();
        EXPECT_THAT(idsIn(events), testing::ElementsAre(std::to_string(begin), std::to_string(begin + 1)));
        EXPECT_THAT(events.substr(0, events.find("\n\n")), HasSubstr(R"("acknowledged":true)"));
    }
}

// Whoever asks something else has given up what was to come; and a printer that is another one owes nothing.
TEST_F(TraceUnderControl, IsFollowedByALateAnswerThatIsGivenUp)
{
    const Stream live = follow();
    post(at("faults"), R"({"kind": "busy"})");
    session.take(telvofm::test::request(0xE0), now);
    tillSays("\x11");
    EXPECT_EQ(live.more(), "");
    tillSays(telvofm::test::request(0xE0));
    EXPECT_THAT(idsIn(live.more()), testing::ElementsAre("1", "2", "3"));
    post(at("faults"), R"({"kind": "busy"})");
    session.take(telvofm::test::request(0xE0), now);
    post(at("reset"), R"({"to": "new"})");
    EXPECT_EQ(live.more(), "");
    tillSays("\x11");
    EXPECT_THAT(idsIn(live.more()), testing::ElementsAre("4", "5"));
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
