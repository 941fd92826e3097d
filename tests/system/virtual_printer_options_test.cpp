// The virtual printer's command line, on every platform: what it tells, what it refuses in one sentence, and
// how it starts and ends.
#include "tests/system/printer_process.h"
#include "tests/system/raw_till.h"
#include "tests/unit/own_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace telvofm::test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

constexpr int cannot = 1;
constexpr int wrongUse = 2;

class VirtualPrinterOptions : public testing::Test
{
protected:
    // One sentence is all that it says, and it ends with this status.
    static void expectRefusal(std::vector<std::string> options, int status, const std::string& why)
    {
        PrinterProcess printer(std::move(options));
        const std::string said = printer.rest();
        EXPECT_THAT(said, StartsWith("telvofm-printer: "));
        EXPECT_THAT(said, HasSubstr(why));
        EXPECT_EQ(said.find('\n'), said.size() - 1) << said;
        EXPECT_EQ(printer.exitCode(), status) << said;
    }

    // Of a printer that is through with its start.
    static void expectThatItAnswers(int port) { EXPECT_TRUE(RawTill(port).isAccepted(0xE0)); }

    const std::string here = "127.0.0.1:0";
    OwnFolder folder;
};

TEST_F(VirtualPrinterOptions, TellTheVersionAndTheOptions)
{
    PrinterProcess version({"--version"});
    EXPECT_EQ(version.rest(), "telvofm-printer " TELVOFM_VERSION_TEXT "\n");
    EXPECT_EQ(version.exitCode(), 0);
    PrinterProcess help({"--help"});
    EXPECT_THAT(help.rest(), HasSubstr("--exit-with-parent"));
    EXPECT_EQ(help.exitCode(), 0);
}

TEST_F(VirtualPrinterOptions, ThatAreWrongAreRefusedInOneSentence)
{
    struct Wrong
    {
        std::vector<std::string> options;
        std::string why;
    };
    const std::string empty = folder.file("empty");
    std::ofstream(empty) << "\n";
    const std::string poor = folder.file("poor");
    std::ofstream(poor) << "short\n0123456789abcdef";
    const std::vector<Wrong> all = {
        {{}, "no link is named"},
        {{"--listen", "127.0.0.1:99999"}, "its port is no number from 0 to 65535"},
        {{"--listen", "127.0.0.1:-1"}, "its port is no number from 0 to 65535"},
        {{"--listen", "127.0.0.1"}, "it has no port"},
        {{"--listen", ":9100"}, "it has no host"},
        {{"--listen", "::1:9100"}, "stands in brackets, as [::1]:9100"},
        {{"--printer", here}, "write it as NAME=127.0.0.1:9100"},
        {{"--printer", "a/b=" + here}, "letters, digits, - and _ in its name"},
        {{"--printer", "a=127.0.0.1:99999"}, "its port is no number"},
        {{"--printer", "a=" + here, "--printer", "a=" + here}, "two printers are called a"},
        {{"--pty", "--printer", "pty=" + here}, "two printers are called pty"},
        {{"--printer", "front=" + here, "--printer", "Front=" + here}, "are called front and Front"},
        {{"--serial", "none", "--printer", "SERIAL=" + here}, "are called serial and SERIAL"},
        {{"--listen", here, "--clock", "noon"}, "noon is no time; write it as \"2026-01-31 12:00\""},
        {{"--listen", here, "--second", "perhaps"}, "{busy,wait,takeover}; --help lists the options"},
        {{"--pty", "--baud", "5"}, "{57600,115200}; --help"},
        {{"--listen", here, "--data", "nö folder"}, "--data: Directory does not exist: nö folder"},
        {{"--listen", here, "--codes", "nö file"}, "--codes: File does not exist: nö file"},
        {{"--listen", here, "--logo-png", "no such folder"}, "--logo-png: Directory does not exist"},
        {{"--listen", here, "--control", "127.0.0.1"}, "it has no port"},
        {{"--listen", here, "--control", here, "--token", "short"}, "16 characters at least"},
        {{"--listen", here, "--token", "0123456789abcdef"}, "belongs to --control or --web"},
        {{"--listen", here, "--web", "127.0.0.1"}, "it has no port"},
        {{"--listen", here, "--control", here, "--token-file", "none"}, "File does not exist: none"},
        {{"--listen", here, "--control", here, "--token-file", empty}, "there is no token in " + empty},
        {{"--listen", here, "--control", here, "--token-file", poor}, "16 characters at least"},
        {{"--listen", here, "--token-file", empty, "--token", "0123456789abcdef"},
         "--token excludes --token-file"},
        {{"--listen", here, "--loud"}, "--loud; --help lists the options"},
    };
    for (const Wrong& wrong : all) {
        expectRefusal(wrong.options, wrongUse, wrong.why);
    }
}

TEST_F(VirtualPrinterOptions, ThatTheMachineCannotMeetAreRefusedInOneSentence)
{
    const std::string codes = folder.file("codes.json");
    std::ofstream(codes) << R"({"noSellingDay": 0})";
    expectRefusal({"--listen", "no-such-host.invalid:0"}, cannot,
                  "cannot listen on no-such-host.invalid:0: ");
    expectRefusal({"--serial", "no port"}, cannot, "cannot use no port as a serial line: ");
    expectRefusal({"--listen", here, "--codes", codes}, cannot,
                  "the code of \"noSellingDay\" is no number from 1 to 255");
}

// It listens by then, and may say so before or behind it.
TEST_F(VirtualPrinterOptions, RefuseAReadyFileThatCannotBeWritten)
{
    PrinterProcess printer({"--listen", here, "--ready", folder.file("none/ready")});
    const std::vector<std::string> said = {printer.line(), printer.line()};
    EXPECT_THAT(said, testing::Contains(StartsWith("telvofm-printer: cannot write ")));
    EXPECT_EQ(printer.exitCode(), cannot);
}

TEST_F(VirtualPrinterOptions, RefuseAPortThatIsTaken)
{
    const PrinterProcess first({"--listen", here});
    const int port = first.port();
    const std::string taken = "127.0.0.1:" + std::to_string(port);
    expectRefusal({"--listen", taken}, cannot, "cannot listen on " + taken + ": ");
    expectThatItAnswers(port);
}

TEST_F(VirtualPrinterOptions, RefuseAMemoryThatAnotherProcessHolds)
{
    const std::vector<std::string> options = {"--listen", here, "--data", folder.path.string()};
    PrinterProcess first(options);
    const int port = first.port();
    expectRefusal(options, cannot, "printer.db is in use by process " + std::to_string(first.id()));
    expectThatItAnswers(port); // what the first one has is untouched
    first.kill();
    const PrinterProcess next(options);
    expectThatItAnswers(next.port());
}

TEST_F(VirtualPrinterOptions, KeepMemoryAndAddressesInFoldersOfAnyName)
{
    const std::filesystem::path data = folder.path / u8"Účtenky ř";
    std::filesystem::create_directory(data);
    const std::u8string utf8 = data.u8string();
    const std::string name(utf8.begin(), utf8.end());
    const PrinterProcess printer({"--listen", here, "--data", name, "--ready", name + "/ž.json"});
    const int port = printer.port();
    expectThatItAnswers(port);
    EXPECT_TRUE(std::filesystem::exists(data / "printer.db"));
    EXPECT_THAT(contentOf(data / u8"ž.json"), HasSubstr("\"127.0.0.1:" + std::to_string(port) + '"'));
    EXPECT_FALSE(std::filesystem::exists(data / u8"ž.json.part"));
}

// Whoever waits for the file must not find that of the last time.
TEST_F(VirtualPrinterOptions, TakeAnOlderReadyFileAwayBeforeTheyAreTried)
{
    const std::string file = folder.file("ready.json");
    std::ofstream(file) << "{}";
    expectRefusal({"--serial", "no port", "--ready", file}, cannot, "no port");
    EXPECT_FALSE(std::filesystem::exists(file));
}

// Also when the clock was set before and the memory knows by how much.
TEST_F(VirtualPrinterOptions, StartTheClock)
{
    const auto startAt = [&](const std::string& moment) {
        return std::vector<std::string>{"--listen", here, "--clock", moment, "--data", folder.path.string()};
    };
    {
        const PrinterProcess printer(startAt("2026-01-31 12:00"));
        const RawTill till(printer.port());
        EXPECT_EQ(till.variable("CLOCK").substr(0, 16), "2026-01-31 12:00");
        EXPECT_TRUE(till.isAccepted(0xBF, {"2026-03-01 08:00"}));
        EXPECT_EQ(till.variable("CLOCK").substr(0, 16), "2026-03-01 08:00");
    }
    const PrinterProcess printer(startAt("2026-05-01 09:00"));
    EXPECT_EQ(RawTill(printer.port()).variable("CLOCK").substr(0, 16), "2026-05-01 09:00");
}

TEST_F(VirtualPrinterOptions, StartFactoryNew)
{
    const PrinterProcess printer({"--listen", here, "--factory-new"});
    const RawTill till(printer.port());
    EXPECT_EQ(till.variable("LIFE"), "training");
    EXPECT_EQ(till.variable("VAT_A"), "");
    EXPECT_EQ(till.variable("DRAWER_1"), "0.00");
    till.say(request(0x92, {"DRAWER_2"}));
    EXPECT_EQ(till.hear(2), "\x15\x14") << "cash is the only payment type";
}

TEST_F(VirtualPrinterOptions, MapRefusalsToTheNumbersOfAnotherDevice)
{
    const std::string codes = folder.file("codes.json");
    std::ofstream(codes) << R"({"noSellingDay": 131, "noReceipt": 10})";
    const PrinterProcess printer({"--listen", here, "--codes", codes});
    const RawTill till(printer.port());
    till.say(request(0x20, {"0", "1", "0", "0", "1", "0"}));
    EXPECT_EQ(till.hear(2), "\x15\x83");
    EXPECT_THAT(printer.line(), HasSubstr("refused with 131 noSellingDay: "));
    till.say(request(0x22, {"0", "0"}));
    EXPECT_EQ(till.hear(2), "\x15\x0A");
    till.say(request(0xFF)); // keeps its own
    EXPECT_EQ(till.hear(2), "\x15\x02");
}

TEST_F(VirtualPrinterOptions, EndItWithTheProcessThatStartedIt)
{
    ChildProcess shell(ChildProcess::shell({TELVOFM_PRINTER, "--listen", here, "--exit-with-parent"}));
    EXPECT_THAT(shell.line(), StartsWith("listening on "));
    shell.kill();
    EXPECT_EQ(shell.byte(), std::nullopt) << "it is still there, or prints";
}

} // namespace
} // namespace telvofm::test
