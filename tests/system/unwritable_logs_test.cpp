// Both logs on and neither to be written, around every export: what a call returns and sends is what it
// returns and sends with both logs off.
#include "tests/system/every_export_fixture.h"

#include <algorithm>

namespace telvofm::test {
namespace {

class UnwritableLogs : public EveryExport
{
protected:
    struct Conduct
    {
        std::string result;
        std::vector<std::string> sent;
    };

    // With both logs in this file, or off.
    Conduct conductOf(const ExportedCall& called, const std::string* log)
    {
        Conduct conduct;
        inASessionOfItsOwn(called, [&](auto call) {
            printer.takeReceived();
            if (log != nullptr) {
                setLogginOn(log->c_str());
                setRawLogginOn(log->c_str());
            }
            conduct.result = call();
            setLogginOff();
            seRawLogginOff();
            conduct.sent = printer.takeReceived();
        });
        if (called.name == "rawRead") {
            conduct.sent.clear(); // what it reads was asked for before
        }
        // On a busy machine the printer may answer so late that the library asks again.
        conduct.sent.erase(std::unique(conduct.sent.begin(), conduct.sent.end()), conduct.sent.end());
        return conduct;
    }
};

TEST_F(UnwritableLogs, ChangeNothing)
{
    const std::string paths[] = {folder.file("missing/calls.log"), folder.path.string()};
    int sending = 0;
    for (const ExportedCall& called : everyExport) {
        const Conduct usual = conductOf(called, nullptr);
        sending += usual.sent.empty() ? 0 : 1;
        for (const std::string& path : paths) {
            const Conduct conduct = conductOf(called, &path);
            EXPECT_EQ(conduct.result, usual.result) << called.name << " with the logs in " << path;
            EXPECT_EQ(conduct.sent, usual.sent) << called.name << " with the logs in " << path;
        }
    }
    EXPECT_EQ(sending, 182) << "not each call that sends a command has sent one";
    EXPECT_FALSE(std::filesystem::exists(folder.path / "missing"));
}

} // namespace
} // namespace telvofm::test
