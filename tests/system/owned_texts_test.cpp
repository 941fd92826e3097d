#include "tests/system/owned_texts.h"

#include <set>

namespace telvofm::test {
namespace {

// Opening and the switches of the logs do not wait for the device, and these write no line before they do.
bool canBeSeenWaiting(std::string_view name)
{
    static const std::set<std::string_view> others = {
        "openFM",         "openFMBaud",  "openFMStopBit",           "setLogginOn",
        "setRawLogginOn", "getVariable", "getVariableResultObject", "getVariableStr",
        "setPreline"};
    return !others.contains(name);
}

INSTANTIATE_TEST_SUITE_P(Lengths, OwnedTexts, shortAndLongTexts());

// Their lines are in the log before they wait.
TEST_P(OwnedTexts, AreThoseOfTheBeginning)
{
    int withTexts = 0;
    for (const TextExport& called : allExports()) {
        if (called.textCount > 0 && canBeSeenWaiting(called.name)) {
            ++withTexts;
            expectTextsOfTheBeginning(called, [this](std::thread& /*calling*/, const std::string& line) {
                waitUntil([&] { return contentOf(log) == line; });
            });
        }
    }
    EXPECT_EQ(withTexts, 139);
}

// The bytes of printGraphic are the caller's in the same way.
TEST_P(OwnedTexts, AndSoIsThePicture)
{
    setLogginOff();
    auto held = printer.holdAnswers();
    auto other = std::async(std::launch::async, printJobCancel, 1);
    waitUntil([this] { return !printer.takeReceived().empty(); });

    setLogginOn(log.c_str());
    const std::string asItWas(GetParam(), 'a');
    std::string picture = asItWas;
    auto call = std::async(std::launch::async, [&] {
        return printGraphic(1, 2, 3, picture.data(), static_cast<int>(picture.size()));
    });
    waitUntil([this] { return contentOf(log).ends_with("\n"); });
    picture.assign(picture.size(), 'n');
    held.unlock();
    EXPECT_EQ(call.get(), 0);
    EXPECT_EQ(other.get(), 0);

    const auto sent = printer.takeReceived(); // the request, the picture and four bytes 00
    ASSERT_EQ(sent.size(), 3U);
    EXPECT_EQ(sent[1], ":" + std::string(1, static_cast<char>(GetParam() - 1)) + asItWas + "\x03");
}

} // namespace
} // namespace telvofm::test
