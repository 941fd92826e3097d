// The ring of exchanges: its bounds, its numbers and who is told.
#include "virtual_printer/trace/exchanged_json.h"
#include "virtual_printer/trace/trace.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace virtual_printer {
namespace {

Exchanged withBytes(std::size_t size)
{
    Exchanged exchanged;
    exchanged.heard(std::string(size, 'x'));
    return exchanged;
}

TEST(Trace, NumbersFromOneAndFindsByNumber)
{
    Trace trace;
    EXPECT_EQ(trace.first(), trace.end());
    EXPECT_EQ(trace.add({}), 1U);
    EXPECT_EQ(trace.add({}), 2U);
    EXPECT_EQ(trace.find(2)->number, 2U);
    EXPECT_EQ(trace.find(3), nullptr);
    EXPECT_FALSE(trace.isGone(3));
}

TEST(Trace, ForgetsTheOldestAndSaysSo)
{
    Trace trace({.exchanges = 2, .bytes = 1'000'000});
    for (int count = 0; count < 5; ++count) {
        trace.add({});
    }
    EXPECT_EQ(trace.first(), 4U);
    EXPECT_EQ(trace.end(), 6U);
    EXPECT_TRUE(trace.isGone(3));
    EXPECT_EQ(trace.find(3), nullptr);
    trace.clear();
    EXPECT_TRUE(trace.isGone(5));
    EXPECT_EQ(trace.add({}), 6U);
}

TEST(Trace, SaysWhichHaveChangedSince)
{
    Trace trace;
    trace.add({});
    trace.add({});
    const auto change = [&trace](std::uint64_t number) { trace.change(number, [](Exchanged&) {}); };
    EXPECT_EQ(trace.changes(), 0U);
    change(2);
    change(1);
    change(5); // is not there
    EXPECT_EQ(trace.changes(), 2U);
    EXPECT_THAT(trace.changedAfter(0).value(), testing::ElementsAre(2U, 1U));
    EXPECT_THAT(trace.changedAfter(1).value(), testing::ElementsAre(1U));
    EXPECT_THAT(trace.changedAfter(2).value(), testing::ElementsAre());
    EXPECT_FALSE(trace.changedAfter(3)); // of another trace
    for (int count = 0; count < 1000; ++count) {
        change(2);
    }
    EXPECT_FALSE(trace.changedAfter(1)); // too long ago
    EXPECT_EQ(trace.changedAfter(2).value().size(), 1000U);
}

TEST(Trace, IsBoundedInBytesAndKeepsTheNewest)
{
    Trace trace({.exchanges = 100, .bytes = 10'000});
    trace.add(withBytes(6'000));
    trace.add(withBytes(6'000));
    EXPECT_EQ(trace.first(), 2U);
    trace.add(withBytes(20'000));
    EXPECT_EQ(trace.first(), 3U);
    trace.change(3, [](Exchanged& exchanged) { exchanged.said(std::string(20'000, 'y')); });
    EXPECT_EQ(trace.find(3)->toTill.size(), 20'000U);
    trace.add({});
    EXPECT_EQ(trace.first(), 4U);
}

TEST(Trace, KeepsAHugeExchangeInPart)
{
    Exchanged exchanged = withBytes(Exchanged::mostBytes);
    EXPECT_FALSE(exchanged.isCut);
    exchanged.heard("y");
    EXPECT_TRUE(exchanged.isCut);
    EXPECT_EQ(exchanged.fromTill, std::string(Exchanged::mostBytes, 'x'));
}

TEST(Trace, TellsOfWhatIsNewAndOfWhatHasChanged)
{
    Trace trace({.exchanges = 1, .bytes = 1'000'000});
    std::vector<std::pair<std::uint64_t, bool>> told;
    const auto observer = trace.watch(
        [&](const Exchanged& exchanged) { told.emplace_back(exchanged.number, exchanged.isTaken); });
    trace.add({});
    trace.change(1, [](Exchanged& exchanged) { exchanged.isTaken = true; });
    trace.add({});
    trace.change(1, [](Exchanged& exchanged) { exchanged.isTaken = true; }); // gone
    trace.unwatch(observer);
    trace.add({});
    EXPECT_THAT(told, testing::ElementsAre(std::pair(1U, false), std::pair(1U, true), std::pair(2U, false)));
}

TEST(TraceAsJson, HasBytesFieldsByNameAndNoPassword)
{
    Exchanged exchanged;
    exchanged.number = 7;
    exchanged.till = 2;
    exchanged.moment = parseMoment("2026-01-31 12:00", Edge::first).value();
    exchanged.address = 1;
    exchanged.command = 0xBB;
    exchanged.rule = findRule(0xB7, 2); // setPassword
    exchanged.fields = {"0000", "1111"};
    exchanged.heard("\x1C\x01\xB7");
    exchanged.said("\x15\x08");
    exchanged.refusal = Refusal::wrongPassword;
    exchanged.code = 8;
    exchanged.repeatOf = 6;
    exchanged.repeatedAfter = std::chrono::seconds(3);
    exchanged.answer = "\xFF";
    exchanged.faults = {"the answer was lost"};
    const auto json = toJson(exchanged);
    EXPECT_EQ(json.at("number"), 7);
    EXPECT_EQ(json.at("till"), 2);
    EXPECT_EQ(json.at("moment"), "2026-01-31 12:00:00");
    EXPECT_EQ(json.at("name"), "setPassword");
    EXPECT_EQ(json.at("fields").dump(),
              R"([{"name":"oldPassword","value":"****"},{"name":"newPassword","value":"****"}])");
    EXPECT_EQ(json.at("fromTill"), "1c 01 b7");
    EXPECT_EQ(json.at("toTill"), "15 08");
    EXPECT_EQ(json.at("repeatOf"), 6);
    EXPECT_EQ(json.at("repeatedAfter"), 3000);
    EXPECT_EQ(json.at("refusal").at("name"), "wrongPassword");
    EXPECT_EQ(json.at("refusal").at("code"), 8);
    EXPECT_EQ(json.at("answer"), "\xEF\xBF\xBD"); // what is no UTF-8
    EXPECT_EQ(json.at("faults").dump(), R"(["the answer was lost"])");
    EXPECT_NO_THROW(static_cast<void>(json.dump()));
}

TEST(TraceAsJson, HasNothingWhereNothingIs)
{
    const auto json = toJson(Exchanged{});
    EXPECT_TRUE(json.at("repeatOf").is_null());
    EXPECT_TRUE(json.at("repeatedAfter").is_null());
    EXPECT_TRUE(json.at("refusal").is_null());
    EXPECT_EQ(json.at("name"), "unknown");
    EXPECT_EQ(json.at("attempt"), 1);
}

} // namespace
} // namespace virtual_printer
