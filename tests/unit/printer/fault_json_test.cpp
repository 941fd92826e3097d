// Faults and scenarios as JSON, and the sentence for each wrong one.
#include "virtual_printer/faults/fault_json.h"
#include "virtual_printer/faults/scenario.h"

#include <fstream>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace virtual_printer {
namespace {

using FaultText = nlohmann::ordered_json;

std::string sentenceFor(const std::string& text)
{
    try {
        faultFromJson(FaultText::parse(text));
    } catch (const std::runtime_error& wrong) {
        return wrong.what();
    }
    return "accepted";
}

std::string sentenceForScenario(const std::string& text)
{
    try {
        scenarioFromJson(FaultText::parse(text));
    } catch (const std::runtime_error& wrong) {
        return wrong.what();
    }
    return "accepted";
}

TEST(FaultFromJson, IsWhatItBecomesAgain)
{
    const std::vector<std::string> faults = {
        R"({"kind":"refuse","command":"payment","fromRequest":2,"fromCall":3,"requests":4,"calls":5,"probability":0.5,"seed":7,"code":49})",
        R"({"kind":"acknowledgeLate","command":"24","milliseconds":4000,"probes":"busy"})",
        R"({"kind":"flippedBit","byte":3,"bit":7,"blocks":2})",
        R"({"kind":"noise","bytes":"15 31"})",
        R"({"kind":"connectionReset","at":"connection"})",
        R"({"kind":"connectionRefused","milliseconds":100})",
        R"({"kind":"paperOut"})"};
    for (const std::string& fault : faults) {
        EXPECT_EQ(toJson(faultFromJson(FaultText::parse(fault))).dump(), fault);
    }
}

TEST(FaultFromJson, TakesWhatEveryKindNeeds)
{
    for (const FaultRule& rule : faultRules) {
        FaultText json = {{"kind", rule.name}};
        if ((rule.parameters & needsCode) != 0) {
            json["code"] = 1;
        }
        if ((rule.parameters & needsDuration) != 0) {
            json["milliseconds"] = 1;
        }
        if ((rule.parameters & needsByte) != 0) {
            json["byte"] = 1;
        }
        if ((rule.parameters & needsBytes) != 0) {
            json["bytes"] = "1531";
        }
        EXPECT_EQ(faultFromJson(json).kind, rule.kind);
        for (const auto& [name, value] : json.items()) {
            FaultText lacking = json;
            lacking.erase(name);
            EXPECT_THROW(faultFromJson(lacking), std::runtime_error) << rule.name << " without " << name;
        }
    }
}

TEST(FaultFromJson, DamagesBlocksOfRepliesWhereThereAreSome)
{
    for (const char* kind : {"wrongChecksum", "wrongTerminator", "wrongLength", "blockRepeated"}) {
        const std::string start = R"({"kind":")" + std::string(kind) + R"(","command":)";
        for (const char* command : {R"("payment")", R"("30")", R"("block")"}) {
            EXPECT_EQ(
                sentenceFor(start + command + "}"),
                "A fault of the kind " + std::string(kind) +
                    " is done to the blocks of a reply, and what \"command\" selects is answered without "
                    "one.");
        }
        EXPECT_EQ(sentenceFor(start + R"("getVariable"})"), "accepted");
        EXPECT_EQ(sentenceFor(start + R"("92"})"), "accepted");
    }
    EXPECT_EQ(sentenceFor(R"({"kind":"flippedBit","byte":0,"command":"payment"})"), "accepted");
}

// Upon a question nothing is written or carried out, and the printer refuses what it does not know.
TEST(FaultFromJson, HindersOnlyWhatIsCarriedOut)
{
    for (const char* kind : {"diskFull", "acknowledgedNotExecuted"}) {
        const std::string start = R"({"kind":")" + std::string(kind) + R"(","command":)";
        for (const char* command : {R"("getVariable")", R"("92")", R"("3a")"}) {
            EXPECT_EQ(sentenceFor(start + command + "}"),
                      "A fault of the kind " + std::string(kind) +
                          " is done to what is carried out and kept, and nothing is upon what \"command\" "
                          "selects.");
        }
        for (const char* command : {R"("payment")", R"("30")", R"("block")"}) {
            EXPECT_EQ(sentenceFor(start + command + "}"), "accepted") << command;
        }
        EXPECT_EQ(sentenceFor(R"({"kind":")" + std::string(kind) + "\"}"), "accepted");
    }
    const std::string refusal = R"({"kind":"executedNotAcknowledged","code":9,"command":)";
    EXPECT_EQ(sentenceFor(refusal + R"("getVariable"})"), "accepted");
    EXPECT_EQ(
        sentenceFor(refusal + R"("3a"})"),
        "A fault of the kind executedNotAcknowledged is done to what is carried out, and nothing is upon "
        "what \"command\" selects.");
}

TEST(FaultFromJson, SaysWhatIsWrong)
{
    EXPECT_EQ(sentenceFor("[]"), R"(A fault is a JSON object, as {"kind": "refuse", "code": 49}.)");
    EXPECT_TRUE(sentenceFor(R"({"kind":"fire"})").starts_with(R"("kind" is one of refuse, requestLost, )"));
    EXPECT_EQ(sentenceFor(R"({"kind":"refuse"})"), R"(A fault of the kind refuse wants "code".)");
    EXPECT_EQ(sentenceFor(R"({"kind":"refuse","code":0})"), R"("code" is a whole number from 1 to 255.)");
    EXPECT_EQ(sentenceFor(R"({"kind":"refuse","code":"49"})"), R"("code" is a whole number from 1 to 255.)");
    EXPECT_EQ(sentenceFor(R"({"kind":"paperOut","code":1})"),
              R"(A fault of the kind paperOut takes no "code".)");
    EXPECT_EQ(sentenceFor(R"({"kind":"paperOut","colour":1})"),
              R"(A fault of the kind paperOut takes no "colour".)");
    EXPECT_EQ(sentenceFor(R"({"kind":"connectionRefused","milliseconds":1,"command":"payment"})"),
              R"(A fault of the kind connectionRefused takes no "command".)");
    for (const char* command : {R"("pay")", R"("G1")", R"("301")", "30"}) {
        EXPECT_EQ(sentenceFor(R"({"kind":"paperOut","command":)" + std::string(command) + "}"),
                  R"("command" is a name or a code of the command table, as "payment" or "30", or "block"; )"
                  R"(a code may also be one that no command has.)");
    }
    for (const char* chance : {"0", "1.1", "-1", R"("1")"}) {
        EXPECT_EQ(sentenceFor(R"({"kind":"paperOut","probability":)" + std::string(chance) + "}"),
                  R"("probability" is a number above 0 and at most 1.)");
    }
    EXPECT_EQ(sentenceFor(R"({"kind":"paperOut","seed":-1})"),
              R"("seed" is a whole number from 0 to 4294967295.)");
    for (const char* bytes : {R"("")", R"("1")", R"("xx")", "15"}) {
        EXPECT_EQ(sentenceFor(R"({"kind":"noise","bytes":)" + std::string(bytes) + "}"),
                  R"("bytes" are 1 to 1024 bytes as pairs of hexadecimal digits, as "15 31".)");
    }
    EXPECT_EQ(sentenceFor(R"({"kind":"halfOpen","at":"noon"})"),
              R"("at" is one of connection, request, answer, afterwards.)");
    EXPECT_EQ(sentenceFor(R"({"kind":"acknowledgeLost","probes":1})"),
              R"("probes" is one of ready, busy, ignored.)");
    EXPECT_EQ(sentenceFor(R"({"kind":"powerLoss","at":"afterwards"})"),
              "A powerLoss is \"at\" request, before anything is kept, or at answer, when it is.");
    EXPECT_EQ(sentenceFor(R"({"kind":"halfOpen","at":"connection","command":"payment"})"),
              R"(A fault "at" connection meets no command; leave "command" away.)");
    EXPECT_EQ(sentenceFor(R"({"kind":"flippedBit","byte":0,"bit":8})"),
              R"("bit" is a whole number from 0 to 7.)");
    EXPECT_EQ(sentenceFor(R"({"kind":"slow","milliseconds":1.5})"),
              R"("milliseconds" is a whole number from 1 to 86400000.)");
}

TEST(ArmedAsJson, SaysWhatItHasDone)
{
    Faults faults;
    faults.arm({.kind = FaultKind::paperOut});
    faults.hasDone(faults.meet({}).front().number, 12);
    EXPECT_EQ(toJson(faults.list().front()).dump(),
              R"({"number":1,"fault":{"kind":"paperOut","requests":1},"ended":true,"requestsMet":1,)"
              R"("callsMet":1,"requestsHit":1,"callsHit":1,"exchanges":[12]})");
}

TEST(ScenarioFromJson, GivesItsSeedToItsFaults)
{
    const Scenario scenario = scenarioFromJson(FaultText::parse(
        R"({"trouble":"Rain","seed":9,"faults":[{"kind":"paperOut"},{"kind":"diskFull","seed":3}]})"));
    EXPECT_EQ(scenario.trouble, "Rain");
    ASSERT_EQ(scenario.faults.size(), 2U);
    EXPECT_EQ(scenario.faults[0].seed, 9U);
    EXPECT_EQ(scenario.faults[1].seed, 3U);
}

TEST(ScenarioFromJson, SaysWhatIsWrong)
{
    EXPECT_TRUE(sentenceForScenario("{}").starts_with("A scenario is a JSON object, as "));
    EXPECT_TRUE(sentenceForScenario(R"({"trouble":"Rain"})").starts_with("A scenario is a JSON object, as "));
    EXPECT_EQ(sentenceForScenario(R"({"trouble":"Rain","faults":[],"colour":1})"),
              R"(A scenario takes no "colour".)");
    EXPECT_EQ(sentenceForScenario(R"({"trouble":"Rain","faults":[{"kind":"refuse"}]})"),
              R"(A fault of the kind refuse wants "code".)");
    EXPECT_EQ(sentenceForScenario(R"({"trouble":"Rain","faults":[]})"),
              "A scenario without faults is no trouble; give it one at least.");
}

// One of both would be forgotten silently, at the top as in a fault.
TEST(ScenarioFile, HasEachNameOnce)
{
    const std::string file = testing::TempDir() + "scenario_with_a_name_twice.json";
    for (
        const char* text :
        {R"({"seed":1,"trouble":"Rain","faults":[{"kind":"paperOut"}],"seed":2})",
         R"({"trouble":"Rain","faults":[{"kind":"paperOut","seed":1},{"seed":1,"kind":"paperOut","seed":2}]})"}) {
        std::ofstream(file) << text;
        try {
            readScenario(file);
            ADD_FAILURE() << text;
        } catch (const std::runtime_error& wrong) {
            EXPECT_EQ(wrong.what(), file + R"(: "seed" is there twice; give it once.)");
        }
    }
    std::ofstream(file)
        << R"({"trouble":"Rain","faults":[{"kind":"paperOut","seed":1},{"kind":"diskFull","seed":1}]})";
    EXPECT_EQ(readScenario(file).faults.size(), 2U);
}

} // namespace
} // namespace virtual_printer
