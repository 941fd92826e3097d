// Faults that are armed over the control interface; what each does is tested where it is made.
#include "tests/unit/control/controlled_till.h"

namespace virtual_printer {
namespace {

using testing::HasSubstr;
using FaultsUnderControl = ControlledTill;

TEST_F(FaultsUnderControl, AreArmedAndTellWhatTheyDid)
{
    const Json armed =
        post(at("faults"), R"({"kind": "acknowledgeLost", "command": "sellingDayBegin"})").json;
    EXPECT_EQ(armed["faults"][0]["ended"], false);
    EXPECT_EQ(tillSays(telvofm::test::request(0x29, {"0"})), "");
    EXPECT_EQ(post(at("assert"), R"({"executed": [{"name": "sellingDayBegin"}],
                                     "acknowledged": [{"name": "sellingDayBegin", "count": 0}]})")
                  .status,
              200);
    const Json after = get(at("faults"))["faults"][0];
    EXPECT_EQ(after["ended"], true);
    EXPECT_EQ(after["requestsHit"], 1);
    EXPECT_EQ(after["exchanges"], Json({1}));
}

TEST_F(FaultsUnderControl, AreDescribedWithEachKind)
{
    Json kinds = Json::array();
    for (const FaultRule& rule : faultRules) {
        kinds.push_back(rule.name);
    }
    EXPECT_EQ(get("/openapi.json")["components"]["schemas"]["Fault"]["properties"]["kind"]["enum"], kinds);
}

TEST_F(FaultsUnderControl, AreArmedAsScenariosAndDisarmed)
{
    EXPECT_EQ(post(at("faults"), R"({"trouble": "The paper is out", "seed": 7,
                                     "faults": [{"kind": "paperOut"}, {"kind": "diskFull"}]})")
                  .json["faults"]
                  .size(),
              2U);
    EXPECT_EQ(ask("DELETE", at("faults/1")).json["faults"].size(), 1U);
    for (const char* fault : {"faults/1", "faults/x", "faults/-1"}) {
        EXPECT_THAT(refusedWith(404, ask("DELETE", at(fault))), HasSubstr("GET lists them"));
    }
    EXPECT_EQ(ask("DELETE", at("faults")).json, Json::parse(R"({"faults": []})"));
    post(at("faults"), R"({"kind": "paperOut"})");
    post(at("reset"), "");
    EXPECT_EQ(get(at("faults")), Json::parse(R"({"faults": []})"));
}

TEST_F(FaultsUnderControl, AreNotMoreThanAHundred)
{
    std::string many = R"({"kind": "paperOut"})";
    for (int count = 1; count < 100; ++count) {
        many += R"(, {"kind": "paperOut"})";
    }
    const auto scenarioOf = [](const std::string& faults) {
        return R"({"trouble": "Everything", "faults": [)" + faults + "]}";
    };
    EXPECT_EQ(refusedWith(400, post(at("faults"), scenarioOf(many + R"(, {"kind": "paperOut"})"))),
              "A scenario has at most 100 faults.");
    EXPECT_EQ(post(at("faults"), scenarioOf(many)).json["faults"].size(), 100U);
    EXPECT_EQ(refusedWith(409, post(at("faults"), R"({"kind": "paperOut"})")),
              "A printer has at most 100 faults, those that have ended included; disarm some first.");
    EXPECT_EQ(get(at("faults"))["faults"].size(), 100U);
    ask("DELETE", at("faults/1"));
    EXPECT_EQ(post(at("faults"), R"({"kind": "paperOut"})").status, 201);
}

TEST_F(FaultsUnderControl, ThatAreNoneAreRefused)
{
    EXPECT_THAT(refusedWith(400, post(at("faults"), R"({"kind": "rain"})")),
                HasSubstr("\"kind\" is one of "));
    EXPECT_THAT(refusedWith(400, post(at("faults"), R"({"kind": "refuse"})")), HasSubstr("wants \"code\""));
    EXPECT_EQ(get(at("faults")), Json::parse(R"({"faults": []})"));
}

} // namespace
} // namespace virtual_printer
