// The paper over the control interface: what has come out, by line, and documents of the journal as text, as
// lines and as a drawing.
#include "tests/unit/control/controlled_till.h"
#include "virtual_printer/language/commands.h"

namespace virtual_printer {
namespace {

using testing::HasSubstr;
using testing::Not;

class PaperUnderControl : public ControlledTill
{
protected:
    std::vector<Json> paper(const std::string& query = "")
    {
        const std::string target = at("paper" + query);
        const auto answer = std::get<HttpAnswer>(control.answer(requestFor("GET", target, "")));
        EXPECT_EQ(answer.contentType, "application/x-ndjson");
        noteDown("GET", target, "", answer);
        std::vector<Json> lines;
        std::istringstream text(answer.body);
        for (std::string line; std::getline(text, line);) {
            lines.push_back(Json::parse(line));
        }
        return lines;
    }
    HttpAnswer file(const std::string& name)
    {
        auto answer = std::get<HttpAnswer>(control.answer(requestFor("GET", at(name), "")));
        noteDown("GET", at(name), "", answer);
        return answer;
    }
    void printBarCode(const std::string& text)
    {
        constexpr auto command = static_cast<unsigned char>(telvofm::Command::printBC);
        ASSERT_EQ(tillSays(telvofm::test::request(command, {"0", text})), "\x06");
    }
    void sellCalled(const std::string& name)
    {
        beginReceipt();
        ASSERT_EQ(tillSays(telvofm::test::request(0x24, {"0", name, "1.00", "A", "1.000", "1.00", "ks "})),
                  "\x06");
        payAndEnd("1.00");
    }
};

TEST_F(PaperUnderControl, HasEachLineWithItsExchangeAndDocument)
{
    beginDay();
    beginReceipt();
    const auto head = paper();
    ASSERT_FALSE(head.empty());
    EXPECT_EQ(head.front()["number"], 1);
    sellItem("12.50");
    const auto item = paper("?after=" + head.back()["number"].dump());
    ASSERT_EQ(item.size(), 1U);
    EXPECT_EQ(item[0]["kind"], "item");
    EXPECT_EQ(item[0]["exchange"], 3); // day, receipt, item
    EXPECT_EQ(item[0]["document"], 1); // which is not in the journal yet
    EXPECT_EQ(item[0]["text"], Json::parse(R"(["Chlieb", "  1 ks x 12.50                   12.50 A"])"));
    EXPECT_EQ(item[0]["dots"], nullptr);
    EXPECT_EQ(item[0]["columns"], 40);
    payAndEnd("12.50");
    EXPECT_EQ(paper().back()["kind"], "cut");
    EXPECT_EQ(paper().back()["document"], 1);
    EXPECT_EQ(paper("?limit=2").size(), 2U);
}

TEST_F(PaperUnderControl, HasTheDocumentsThatWereThereBefore)
{
    beginDay();
    sell("1.00");
    beginReceipt();
    ASSERT_EQ(post(at("snapshots"), R"({"name": "open"})").status, 201);
    const auto before = paper();
    post(at("restore"), R"({"name": "open"})");
    const auto after = paper("?after=" + before.back()["number"].dump());
    ASSERT_EQ(after.size(), before.size());
    EXPECT_EQ(after.front()["number"], before.back()["number"].get<int>() + 1);
    EXPECT_EQ(after.front()["exchange"], 0);
    EXPECT_EQ(after.front()["document"], 1);
    EXPECT_EQ(after.back()["document"], 2);
    const Json there = get(at("state"))["paper"];
    EXPECT_EQ(there["first"], after.front()["number"]);
    EXPECT_EQ(there["next"], after.back()["number"].get<int>() + 1);
}

TEST_F(PaperUnderControl, HasCodesAsDots)
{
    beginDay();
    printBarCode("590123412345");
    const Json code = paper().back();
    EXPECT_EQ(code["kind"], "barCode");
    EXPECT_EQ(code["content"], "590123412345");
    EXPECT_EQ(code["document"], 0);
    // 95 modules and a margin of ten on both sides, each two dots wide; one rectangle a bar.
    EXPECT_EQ(code["dots"]["width"], 2 * (95 + 20));
    EXPECT_EQ(code["dots"]["height"], 50);
    EXPECT_THAT(code["dots"]["path"].get<std::string>(), testing::StartsWith("M20 0h2v50h-2zM24 0h2v50h-2z"));
}

TEST_F(PaperUnderControl, OfADocumentIsTextLinesAndADrawing)
{
    beginDay();
    sell("12.50");
    EXPECT_EQ(get(at("documents/1")), get(at("documents"))["documents"][0]);
    const HttpAnswer text = file("documents/1/paper.txt");
    EXPECT_EQ(text.contentType, "text/plain; charset=utf-8");
    EXPECT_THAT(text.body, HasSubstr("TOTAL EUR                          12.50\r\n"));
    const Json lines = get(at("documents/1/paper.json"));
    EXPECT_EQ(lines["columns"], 40);
    EXPECT_EQ(lines["lines"].size(), paper().size());
    const HttpAnswer drawing = file("documents/1/paper.svg");
    EXPECT_EQ(drawing.contentType, "image/svg+xml");
    EXPECT_THAT(drawing.body, testing::StartsWith("<svg xmlns=\"http://www.w3.org/2000/svg\""));
    // "12.50" ends at the 40th column: 35 characters of 12 dots in front of it, and 30 dots of edge.
    EXPECT_THAT(drawing.body, HasSubstr("<text x=\"450\""));
    EXPECT_THAT(drawing.body, HasSubstr("VIRTUAL PRINTER, NO FISCAL DOCUMENT"));
}

TEST_F(PaperUnderControl, IsNeverMarkup)
{
    beginDay();
    sellCalled("<script>x()</script>&\"");
    const HttpAnswer drawing = file("documents/1/paper.svg");
    EXPECT_THAT(drawing.body, HasSubstr("&lt;script&gt;x()&lt;/script&gt;&amp;&quot;"));
    EXPECT_THAT(drawing.body, Not(HasSubstr("<script")));
    EXPECT_THAT(drawing.headers,
                testing::Contains(testing::Pair("Content-Security-Policy", "default-src 'none'; sandbox")));
}

TEST_F(PaperUnderControl, IsOnlyThatOfDocumentsThatAreThere)
{
    for (const char* name : {"0", "1", "-1", "x", "99999999999999999999"}) {
        EXPECT_THAT(refusedWith(404, ask("GET", at(std::string("documents/") + name))),
                    HasSubstr("There is no document"));
    }
}

TEST_F(PaperUnderControl, IsFoundByATextOnItAndTheNewestFirst)
{
    beginDay();
    sellCalled("Chlieb");
    sellCalled("Rohlik");
    sellCalled("Chlieb");
    const Json found = get(at("documents?text=Chlieb&order=newest"))["documents"];
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[0]["position"], 3);
    EXPECT_EQ(found[1]["position"], 1);
    EXPECT_EQ(get(at("documents?text=100%25"))["documents"].size(), 0U);
}

TEST_F(PaperUnderControl, IsSummedUpByTheHour)
{
    const auto setTo = [&](const char* moment) {
        printer.setClock(standingClock(parseMoment(moment, Edge::first).value()));
    };
    beginDay();
    sell("1.00");
    sell("2.00");
    EXPECT_EQ(get(at("totals/hours"))["hours"][0]["turnover"], "3.00");
    setTo("2026-01-31 14:30");
    sell("4.00");
    EXPECT_EQ(get(at("totals/hours")), Json::parse(R"({"hours": [
        {"from": "2026-01-31 12:00:00", "receipts": 2, "turnover": "3.00"},
        {"from": "2026-01-31 14:00:00", "receipts": 1, "turnover": "4.00"}], "complete": true})"));
    ASSERT_EQ(tillSays(telvofm::test::request(0x50, {"Z", "0"})), "\x06");
    EXPECT_EQ(get(at("totals/hours"))["hours"], Json::array());
}

TEST_F(PaperUnderControl, HasTheLogosThatTillsHaveLoaded)
{
    EXPECT_EQ(get(at("pictures")), Json::parse(R"({"pictures": []})"));
}

TEST_F(PaperUnderControl, TellsWhoHasChangedAndNothingOtherwise)
{
    const auto stream = std::get<Stream>(control.answer(requestFor("GET", "/events", "")));
    const auto more = [&] { // for the description as well
        std::string said = stream.more();
        noteDown("GET", "/events", "",
                 HttpAnswer{.status = 200, .body = said, .contentType = stream.contentType});
        return said;
    };
    EXPECT_EQ(stream.contentType, "text/event-stream");
    const std::string first = more();
    EXPECT_THAT(first, testing::StartsWith("event: start\ndata: {\"run\":\""));
    EXPECT_THAT(first, HasSubstr("event: changed\ndata: {\"printer\":\"printer\",\"changes\":0,"
                                 "\"exchange\":1,\"paper\":1,\"document\":0,\"faults\":0}\n\n"));
    EXPECT_EQ(more(), "");
    get(at("state"));
    EXPECT_EQ(more(), "");
    beginDay();
    sell("1.00");
    EXPECT_THAT(more(), HasSubstr("\"exchange\":6,")); // all of them are one notice
    EXPECT_EQ(more(), "");
    patch(at("hardware"), R"({"paper": "low"})");
    EXPECT_THAT(more(), testing::StartsWith("event: changed\n"));
}

} // namespace
} // namespace virtual_printer
