// The virtual printer as users run it: a process that is reached over a real socket.
#include "tests/system/printer_process.h"
#include "tests/system/raw_till.h"
#include "tests/unit/own_folder.h"

#include <csignal>
#include <fstream>
#include <gtest/gtest.h>

namespace telvofm::test {
namespace {

using namespace std::string_literals;

// Each carries its checksum byte, worked out by hand: the XOR of all bytes before it.
const std::string beginDay = "\x1C\x01\x29\x30\x00\x04\x00"s;
const std::string beginReceipt = "\x1C\x01\x20\x30\x00\x31\x00\x30\x00\x30\x00\x31\x00\x30\x00\x04\x39"s;
const std::string cancelPrinting = "\x1C\x01\xE0\x04\xF9"s;

class VirtualPrinterProcess : public testing::Test
{
protected:
    void SetUp() override
    {
        port = printer.port();
        ASSERT_NE(port, 0); // the real one
    }

    PrinterProcess printer{{"--listen", "127.0.0.1:0", "--clock", "2026-01-31 12:00"}};
    int port = 0;
};

TEST_F(VirtualPrinterProcess, ServesTheNextTillAfterOneThatBrokeOff)
{
    {
        const RawTill till(port);
        till.say(beginDay.substr(0, 4));
    }
    {
        RawTill till(port);
        till.say(beginDay);
        EXPECT_EQ(till.hear(1), "\x06");
        till.say(beginDay.substr(0, 2));
        till.reset();
    }
    const RawTill till(port);
    till.say(cancelPrinting);
    EXPECT_EQ(till.hear(1), "\x06");
}

TEST_F(VirtualPrinterProcess, KeepsWhatWasSoldWhenATillComesBack)
{
    {
        const RawTill till(port);
        till.say(beginDay);
        EXPECT_EQ(till.hear(1), "\x06");
    }
    const RawTill till(port);
    till.say(beginReceipt); // without the selling day of the first till it would be refused
    EXPECT_EQ(till.hear(1), "\x06");
    EXPECT_EQ(printer.line(), "                TELVOFM");
}

TEST_F(VirtualPrinterProcess, PassesOverNoise)
{
    const RawTill till(port);
    till.say("\xFF\x00\x3A\x3A\x07GET / HTTP/1.1\r\n\r\n"s + cancelPrinting);
    EXPECT_EQ(till.hear(1), "\x06");
    till.say("\x11");
    EXPECT_EQ(till.hear(1), "\x11");
}

TEST_F(VirtualPrinterProcess, RefusesAWrongChecksum)
{
    const RawTill till(port);
    till.say("\x1C\x01\xE0\x04\xF8"s);
    EXPECT_EQ(till.hear(2), "\x15\x01");
}

TEST_F(VirtualPrinterProcess, PrintsTheTimeThatItWasTold)
{
    const RawTill till(port);
    till.say(beginDay + beginReceipt);
    EXPECT_EQ(till.hear(2), "\x06\x06");
    EXPECT_EQ(printer.line(), "                TELVOFM");
    EXPECT_EQ(printer.line(), "Receipt 1               2026-01-31 12:00");
}

// On every platform: what tests arm reaches the till, and what a scenario arms does before anybody asks.
TEST(ControlledPrinterProcess, RefusesWhatItIsArmedFor)
{
    const PrinterProcess printer({"--listen", "127.0.0.1:0", "--control", "127.0.0.1:0"});
    const RawTill till(printer.port());
    const RawTill control(std::stoi(printer.address("control on http://127.0.0.1:")));
    const std::string fault = R"({"kind": "refuse", "code": 49, "command": "printJobCancel"})";
    control.say("POST /printers/printer/faults HTTP/1.1\r\nHost: localhost\r\nContent-Length: " +
                std::to_string(fault.size()) + "\r\n\r\n" + fault);
    EXPECT_EQ(control.hear(21), "HTTP/1.1 201 Created\r");
    till.say(cancelPrinting);
    EXPECT_EQ(till.hear(2), "\x15\x31");
    till.say(cancelPrinting);
    EXPECT_EQ(till.hear(1), "\x06");
}

TEST(ControlledPrinterProcess, LosesTheAcknowledgeThatItsScenarioNames)
{
    const OwnFolder folder;
    const std::string file = folder.file("scenario.json");
    std::ofstream(file)
        << R"({"trouble": "The acknowledge is lost", "faults": [{"kind": "acknowledgeLost"}]})";
    const PrinterProcess printer({"--listen", "127.0.0.1:0", "--scenario", file});
    const RawTill till(printer.port());
    till.say(beginDay + "\x11" + cancelPrinting);
    EXPECT_EQ(till.hear(2), "\x11\x06");
}

TEST_F(VirtualPrinterProcess, EndsWellOnSIGTERM)
{
    EXPECT_EQ(printer.end(SIGTERM), 0);
}

TEST_F(VirtualPrinterProcess, EndsWellOnSIGINTWhileATillIsThere)
{
    const RawTill till(port);
    till.say(cancelPrinting);
    EXPECT_EQ(till.hear(1), "\x06");
    EXPECT_EQ(printer.end(SIGINT), 0);
    EXPECT_EQ(till.hear(1), "");
}

} // namespace
} // namespace telvofm::test
