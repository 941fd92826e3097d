// What a printer stands at, and what is changed from outside: each change is there for the next request.
#include "tests/unit/control/controlled_till.h"
#include "virtual_printer/control/routes.h"

namespace virtual_printer {
namespace {

using testing::HasSubstr;
using PrintersUnderControl = ControlledTill;

TEST_F(PrintersUnderControl, AreListed)
{
    EXPECT_EQ(get("/printers"), Json::parse(R"({"printers": [{"name": "printer", "situation": "noDay"}]})"));
    EXPECT_THAT(refusedWith(404, ask("GET", "/printers/other/state")),
                "There is no printer \"other\"; there are: printer.");
}

// A mistyped name would be taken for done: all faults would be disarmed here.
// What the server itself answers, before anything is looked at.
TEST_F(PrintersUnderControl, AreDescribedWithEachAnswerOfTheServer)
{
    const Json description = get("/openapi.json");
    int operations = 0;
    for (const auto& [path, methods] : description["paths"].items()) {
        for (const auto& [method, operation] : methods.items()) {
            if (method == "parameters") {
                continue;
            }
            ++operations;
            const Json& responses = operation["responses"];
            EXPECT_TRUE(responses.contains("431") && responses.contains("503")) << method << path;
            EXPECT_EQ(responses.contains("413"), operation.contains("requestBody")) << method << path;
        }
    }
    EXPECT_EQ(operations, static_cast<int>(controlRoutes().size()) + 1) << "and the session of a page";
}

TEST_F(PrintersUnderControl, AreNotAskedWithWhatTheRequestDoesNotTake)
{
    post(at("faults"), R"({"kind": "refuse", "code": 49})");
    EXPECT_THAT(refusedWith(400, ask("DELETE", at("faults?number=9"))),
                HasSubstr("There is no \"number\" here"));
    EXPECT_EQ(get(at("faults"))["faults"].size(), 1U);
    EXPECT_THAT(refusedWith(400, ask("GET", at("state?x=1"))), HasSubstr("There is no \"x\" here"));
    EXPECT_THAT(refusedWith(400, ask("GET", at("documents?limit=5&limit=7"))),
                HasSubstr("\"limit\" is there twice"));
    EXPECT_THAT(refusedWith(400, ask("GET", at("documents?page=7"))), HasSubstr("page"));
}

TEST_F(PrintersUnderControl, ShowWhatTheyStandAt)
{
    beginDay();
    beginReceipt();
    sellItem("12.50");
    const Json state = get(at("state"));
    EXPECT_EQ(state["situation"], "open");
    EXPECT_EQ(state["life"], "fiscal");
    EXPECT_EQ(state["dayBegan"], "2026-01-31 12:00:00");
    EXPECT_EQ(state["receipt"]["total"], "12.50");
    EXPECT_EQ(state["receipt"]["due"], "12.50");
    EXPECT_EQ(state["position"], (Json{{"exchange", 4}, {"document", 0}}));
    payAndEnd("12.50");
    EXPECT_EQ(get(at("state"))["receipt"], nullptr);
    const Json totals = get(at("totals"));
    EXPECT_EQ(totals["day"]["turnover"], "12.50");
    EXPECT_EQ(totals["day"]["vat"], (Json{{"A", "12.50"}}));
    EXPECT_EQ(totals["drawer"], Json::parse(R"([{"type": 2, "name": "Karta", "sum": "12.50"}])"));
    EXPECT_EQ(totals["lastReceipt"], 1);
}

TEST_F(PrintersUnderControl, AreNewAgainAfterAReset)
{
    beginDay();
    sell("12.50");
    beginReceipt();
    patch(at("hardware"), R"({"paper": "out"})");
    const Json state = post(at("reset"), R"({"to": "new"})").json;
    EXPECT_EQ(state["situation"], "noDay");
    EXPECT_EQ(state["receipt"], nullptr);
    EXPECT_EQ(state["hardware"]["paper"], "ok");
    EXPECT_EQ(state["position"]["document"], 0);
    EXPECT_EQ(state["since"], state["position"]);
    beginDay();
    sell("3.00");
    EXPECT_EQ(get(at("documents"))["documents"][0]["number"], 1);
}

TEST_F(PrintersUnderControl, AreAsTheyWereStartedAfterAReset)
{
    beginDay();
    sell("12.50");
    Control later(readyToSell(), "", "");
    later.add(station);
    sell("3.00");
    const auto answer = later.answer(requestFor("POST", at("reset"), R"({"to": "started"})"));
    EXPECT_EQ(std::get<HttpAnswer>(answer).status, 200);
    EXPECT_EQ(printer.state().standing->receipts, 1);
    EXPECT_EQ(printer.memory().documents({}).size(), 1U);
    sell("3.00");
    EXPECT_EQ(printer.memory().documents({}).back().number, 2);
}

TEST_F(PrintersUnderControl, HaveAClockThatStandsJumpsAndRuns)
{
    EXPECT_EQ(patch(at("clock"), R"({"now": "2026-03-01 08:00", "mode": "stands"})").json,
              Json::parse(R"({"now": "2026-03-01 08:00:00", "mode": "stands", "speed": 1})"));
    EXPECT_EQ(patch(at("clock"), R"({"forward": 86400})").json["now"], "2026-03-02 08:00:00");
    EXPECT_EQ(get(at("clock"))["now"], "2026-03-02 08:00:00");
    beginDay();
    sell("1.00");
    EXPECT_EQ(get(at("documents"))["documents"][0]["moment"], "2026-03-02 08:00:00");
    EXPECT_EQ(
        refusedWith(409, patch(at("clock"), R"({"now": "2026-03-01"})")),
        "The clock cannot go before the last document, of 2026-03-02 08:00:00; give a later moment, or reset "
        "the printer first.");
    EXPECT_EQ(patch(at("clock"), R"({"mode": "runs", "speed": 60})").json["speed"], 60);
    EXPECT_THAT(refusedWith(400, patch(at("clock"), R"({"speed": 0})")),
                "\"speed\" is no whole number from 1 to 86400; give one.");
    EXPECT_THAT(refusedWith(400, patch(at("clock"), R"({"now": "noon"})")), HasSubstr("\"now\" is no time"));
    EXPECT_EQ(refusedWith(400, patch(at("clock"), R"({"now": "9999-12-31 23:59:59", "forward": 1})")),
              "The clock ends with the year 9999; give an earlier \"now\" or a smaller \"forward\".");
    EXPECT_EQ(
        patch(at("clock"), R"({"now": "9999-12-31 23:59:58", "forward": 1, "mode": "stands"})").json["now"],
        "9999-12-31 23:59:59");
}

TEST_F(PrintersUnderControl, HaveAClockThatIsNotBeforeWhatIsOpen)
{
    patch(at("clock"), R"({"now": "2026-03-01 08:00", "mode": "stands"})");
    beginDay();
    EXPECT_EQ(
        refusedWith(409, patch(at("clock"), R"({"now": "2026-03-01 07:59"})")),
        "The clock cannot go before the open day, of 2026-03-01 08:00:00; give a later moment, or reset "
        "the printer first.");
    patch(at("clock"), R"({"forward": 60})");
    beginReceipt();
    EXPECT_EQ(refusedWith(409, patch(at("clock"), R"({"now": "2026-03-01 08:00"})")),
              "The clock cannot go before the open receipt, of 2026-03-01 08:01:00; give a later moment, or "
              "reset the printer first.");
    EXPECT_EQ(patch(at("clock"), R"({"now": "2026-03-01 08:01"})").json["now"], "2026-03-01 08:01:00");
}

TEST_F(PrintersUnderControl, HavePaperCoverDrawerAndDisplays)
{
    beginDay();
    EXPECT_EQ(patch(at("hardware"), R"({"paper": "out"})").json["paper"], "out");
    EXPECT_EQ(tillSays(telvofm::test::request(0x20, {"0", "1", "0", "0", "1", "0"})), "\x15\x31");
    EXPECT_EQ(patch(at("hardware"), R"({"paper": "low"})").json["paper"], "low");
    beginReceipt();
    sellItem("12.50");
    payAndEnd("12.50", "1"); // cash opens the drawer
    EXPECT_EQ(get(at("hardware"))["drawer"], "open");
    EXPECT_EQ(
        patch(at("hardware"), R"({"drawer": "closed", "cover": "open", "display": "Dobr\u00fd de\u0148"})")
            .json,
        Json::parse(R"({"paper": "low", "cover": "open", "drawer": "closed",
                              "display": "Dobr\u00fd de\u0148", "operatorDisplay": ""})"));
    EXPECT_EQ(refusedWith(400, patch(at("hardware"), R"({"paper": "none"})")),
              "\"paper\" is none of \"ok\", \"low\", \"out\"; give one of them.");
    EXPECT_THAT(refusedWith(400, patch(at("hardware"), R"({"roll": "new"})")),
                HasSubstr("There is no \"roll\"; "));
}

TEST_F(PrintersUnderControl, HaveSettingsThatAreChangedInPart)
{
    const Json before = get(at("settings"));
    EXPECT_EQ(before["vat"]["A"]["percent"], 23);
    EXPECT_FALSE(before.contains("password"));
    const Json after = patch(at("settings"), R"({"vat": {"A": {"percent": 20}, "B": null},
        "payments": {"7": {"name": "Bonus", "minimum": "1.5", "mayOverPay": true}},
        "euroExchangeRate": "30.126", "header": {"1": "Potraviny"}, "columns": 48, "password": "1234"})")
                           .json;
    EXPECT_EQ(after["vat"]["A"]["percent"], 20);
    EXPECT_FALSE(after["vat"].contains("B"));
    EXPECT_EQ(after["vat"]["C"], before["vat"]["C"]);
    EXPECT_EQ(after["payments"]["7"],
              Json::parse(R"({"name": "Bonus", "minimum": "1.50", "mayOverPay": true})"));
    EXPECT_EQ(after["euroExchangeRate"], "30.1260");
    EXPECT_EQ(after["header"]["1"], "Potraviny");
    EXPECT_EQ(get(at("settings")), after);
    EXPECT_EQ(printer.state().settings->password, "1234");
    EXPECT_EQ(*printer.memory().load()->settings, *printer.state().settings);
}

TEST_F(PrintersUnderControl, KeepTheirSettingsWhenOneOfThemIsWrong)
{
    const Json before = get(at("settings"));
    const std::vector<std::pair<const char*, const char*>> wrong = {
        {R"({"columns": 48, "vat": {"Z": {"percent": 1}}})", "\"vat.Z\" is no VAT letter; there are A to H."},
        {R"({"vat": 5})", R"("vat" is no JSON object; send one as {"name": "value"}.)"},
        {R"({"payments": "x"})", R"("payments" is no JSON object; send one as {"name": "value"}.)"},
        {R"({"vat": {"A": {"percent": 100}}})",
         "\"vat.A.percent\" is no whole number from 0 to 99; give one."},
        {R"({"payments": {"1": null}})", "\"payments.1\" is cash and cannot be taken away; leave it there."},
        {R"({"payments": {"21": {"name": "x"}}})",
         "\"payments.21\" is no number from 1 to 20; name the entry by one."},
        {R"({"columns": 31})", "\"columns\" is no whole number from 32 to 48; give one."},
        {R"({"euroExchangeRate": 30})",
         "\"euroExchangeRate\" is no text of a number with at most 4 decimals that is "
         "not below zero; write it as \"12.50\"."},
        {R"({"prelines": [1]})", "\"prelines\" is no text of 0 to 80 characters; give one."},
    };
    for (const auto& [body, sentence] : wrong) {
        EXPECT_EQ(refusedWith(400, patch(at("settings"), body)), sentence);
    }
    EXPECT_THAT(refusedWith(400, patch(at("settings"), R"({"colour": 1})")),
                HasSubstr("There is no \"colour\"; "));
    EXPECT_EQ(get(at("settings")), before);
    beginDay();
    beginReceipt();
    EXPECT_THAT(refusedWith(409, patch(at("settings"), R"({"columns": 48})")),
                HasSubstr("A receipt is open"));
}

} // namespace
} // namespace virtual_printer
