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

} // namespace
} // namespace telvofm::test
