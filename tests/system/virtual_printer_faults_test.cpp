// Scenarios of a printer that runs as a process: what only real links show.
#include "telvofm.h"
#include "tests/system/printer_process.h"
#include "tests/system/raw_till.h"

#include <fstream>
#include <gtest/gtest.h>

namespace telvofm::test {
namespace {

constexpr unsigned char job = 0xE0; // printJobCancel, which is always accepted

class ScenarioOfPrinter : public ::testing::Test
{
protected:
    [[nodiscard]] std::vector<std::string> with(const std::string& faults) const
    {
        const std::string file = ::testing::TempDir() + "scenario-" + std::to_string(::getpid()) + ".json";
        std::ofstream(file) << R"({"trouble": "Rain", "faults": [)" << faults << "]}";
        return {"--listen", "127.0.0.1:0", "--scenario", file};
    }
};

TEST_F(ScenarioOfPrinter, ThatIsWrongIsOneSentence)
{
    PrinterProcess printer(with(R"({"kind": "refuse"})"));
    EXPECT_NE(printer.rest().find(R"(json: A fault of the kind refuse wants "code".)"), std::string::npos);
    EXPECT_EQ(printer.exitCode(), 1);
}

TEST_F(ScenarioOfPrinter, HasAtMostAHundredFaults)
{
    std::string many = R"({"kind": "paperOut"})";
    for (int count = 0; count < 100; ++count) {
        many += R"(, {"kind": "paperOut"})";
    }
    PrinterProcess printer(with(many));
    EXPECT_NE(printer.rest().find("json: A scenario has at most 100 faults."), std::string::npos);
    EXPECT_EQ(printer.exitCode(), 1);
}

TEST_F(ScenarioOfPrinter, RefusesConnectionsForItsTimeAndThenServes)
{
    const PrinterProcess printer(with(R"({"kind": "connectionRefused", "milliseconds": 700})"));
    const std::string address = "127.0.0.1:" + std::to_string(printer.port());
    setLogginOff();
    EXPECT_EQ(openFM(address.c_str()), -1);
    const auto start = std::chrono::steady_clock::now();
    while (openFM(address.c_str()) != 0) {
        ASSERT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(30));
    }
    EXPECT_EQ(printJobCancel(1), 0);
    closeFM();
}

TEST_F(ScenarioOfPrinter, ClosesOrResetsOnlyTheConnectionThatItMeets)
{
    const PrinterProcess printer(with(R"({"kind": "connectionClosed", "at": "connection"},
                                         {"kind": "connectionReset", "command": "E0"})"));
    const int port = printer.port();
    EXPECT_TRUE(RawTill(port).isClosed());
    const RawTill second(port);
    second.say(request(job));
    EXPECT_EQ(second.hear(1), "");
    EXPECT_EQ(errno, ECONNRESET);
    EXPECT_TRUE(RawTill(port).isAccepted(job));
}

TEST_F(ScenarioOfPrinter, LeavesATillAloneAndServesTheNext)
{
    const PrinterProcess printer(with(R"({"kind": "halfOpen"})"));
    const int port = printer.port();
    const RawTill first(port);
    first.say(request(job));
    // The printer has left it before the next one is served.
    for (bool isServed = false; !isServed;) {
        const RawTill second(port);
        second.say(request(job));
        isServed = second.hear(1) == "\x06";
    }
    first.say(request(job));
    EXPECT_EQ(first.heard(), "");
}

// The printer listens while its answer waits, and no more when that has gone.
TEST_F(ScenarioOfPrinter, LeavesATillAloneBehindALateAnswer)
{
    const PrinterProcess printer(with(R"({"kind": "acknowledgeLate", "milliseconds": 50},
                                         {"kind": "halfOpen", "at": "afterwards"})"));
    const int port = printer.port();
    {
        const RawTill first(port);
        first.say(request(job));
        EXPECT_EQ(first.hear(1), "\x06");
        for (bool isServed = false; !isServed;) {
            const RawTill second(port);
            second.say(request(job));
            isServed = second.hear(1) == "\x06";
        }
        first.say(request(job));
        EXPECT_TRUE(RawTill(port).isAccepted(job)); // by then the other one would have been answered
        EXPECT_EQ(first.heard(), "");
    }
    EXPECT_TRUE(RawTill(port).isAccepted(job)) << "also when the one that was left alone has gone";
}

TEST_F(ScenarioOfPrinter, LosesItsPowerAndServesAgain)
{
    const PrinterProcess printer(with(R"({"kind": "powerLoss", "milliseconds": 300, "command": "20"})"));
    const int port = printer.port();
    {
        const RawTill first(port);
        ASSERT_TRUE(first.isAccepted(0x29, {"0"}));
        first.say(request(0x20, {"0", "1", "0", "0", "1", "0"}));
        EXPECT_EQ(first.hear(1), "");
    }
    setLogginOff();
    const auto start = std::chrono::steady_clock::now();
    while (openFM(("127.0.0.1:" + std::to_string(port)).c_str()) != 0) {
        ASSERT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(30));
    }
    EXPECT_EQ(itemSale(1, 0, "Chlieb", 2.00, 'A', 1.0, 2.00, "ks"), 0); // the receipt is open
    closeFM();
    for (std::string line; line.find("POWER LOST") == std::string::npos;) {
        line = printer.line();
        ASSERT_NE(line, "Chlieb");
    }
}

} // namespace
} // namespace telvofm::test
