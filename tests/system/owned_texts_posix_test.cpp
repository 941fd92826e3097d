// The exports that write no line before they wait: the system tells when they do.
#include "tests/system/owned_texts.h"

#include <pthread.h>

#include <algorithm>

namespace telvofm::test {
namespace {

constexpr std::string_view silentExports[] = {"getVariable", "getVariableResultObject", "getVariableStr",
                                              "setPreline"};

bool sleeps(const std::string& threadName)
{
    for (const auto& thread : std::filesystem::directory_iterator("/proc/self/task")) {
        std::ifstream file(thread.path() / "stat");
        std::string number;
        std::string name;
        char state = 0;
        file >> number >> name >> state;
        if (name == "(" + threadName + ")") {
            return state == 'S';
        }
    }
    return false;
}

class SilentOwnedTexts : public OwnedTexts
{
};

INSTANTIATE_TEST_SUITE_P(Lengths, SilentOwnedTexts, shortAndLongTexts());

// A call that has begun sleeps nowhere but at the device.
TEST_P(SilentOwnedTexts, AreThoseOfTheBeginning)
{
    for (const std::string_view name : silentExports) {
        const auto called = std::ranges::find(allExports(), name, &TextExport::name);
        expectTextsOfTheBeginning(*called, [this](std::thread& calling, const std::string& /*line*/) {
            pthread_setname_np(calling.native_handle(), "caller");
            waitUntil([this] { return hasBegun && sleeps("caller"); });
        });
    }
}

} // namespace
} // namespace telvofm::test
