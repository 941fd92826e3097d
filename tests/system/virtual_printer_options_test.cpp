// The virtual printer's command line, on every platform: what starts, what is refused and how, and how it
// ends.
#include "tests/system/printer_process.h"
#include "tests/unit/own_folder.h"
#include "tests/wire/loopback.h"

#include <csignal>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace telvofm::test {
namespace {

using namespace std::chrono_literals;
using namespace std::string_literals;
using testing::HasSubstr;
using testing::StartsWith;

// Of a printer that is through with its start.
void expectThatItAnswers(const std::string& address)
{
    const auto port = static_cast<std::uint16_t>(std::stoi("0" + address.substr(address.rfind(':') + 1)));
    const wire::Connection till = wire::connectTo(port);
    ASSERT_TRUE(till.isOpen());
    till.send("\x1C\x01\xE0\x04\xF9"s);
    EXPECT_EQ(till.receive(1, 30s), "\x06");
}

class VirtualPrinterOptions : public testing::Test
{
protected:
    // One sentence is all that it says, and it ends with this status.
    static void expectRefusal(std::vector<std::string> options, int status,
                              const testing::Matcher<std::string>& sentence)
    {
        PrinterProcess printer(std::move(options));
        const std::string said = printer.line();
        EXPECT_THAT(said, StartsWith("telvofm-printer: "));
        EXPECT_THAT(said, sentence);
        EXPECT_EQ(printer.byte(), std::nullopt);
        EXPECT_EQ(printer.end(0), status);
    }

    OwnFolder folder;
};

TEST_F(VirtualPrinterOptions, TellsItsVersion)
{
    PrinterProcess printer({"--version"});
    EXPECT_EQ(printer.line(), "telvofm-printer " TELVOFM_VERSION_TEXT);
    EXPECT_EQ(printer.byte(), std::nullopt);
    EXPECT_EQ(printer.end(0), 0);
}

TEST_F(VirtualPrinterOptions, AreRefusedInOneSentence)
{
    const std::string here = "127.0.0.1:0";
    expectRefusal({"--listen", here, "--unknown"}, 2, HasSubstr("--unknown"));
    expectRefusal({"--listen", here, "--second", "never"}, 2, HasSubstr("never"));
    expectRefusal({"--serial", "COM7", "--baud", "9600"}, 2, HasSubstr("9600"));
    expectRefusal({"--listen", here, "--data", "nö folder"}, 2, HasSubstr("nö folder"));
    expectRefusal({"--listen", here, "--codes", "nö file"}, 2, HasSubstr("nö file"));
    expectRefusal({}, 1, HasSubstr("no link is named"));
    expectRefusal({"--listen", "127.0.0.1:99999"}, 1, HasSubstr("its port is no number from 0 to 65535"));
    expectRefusal({"--printer", "a=" + here, "--printer", "a=" + here}, 1, HasSubstr("called a"));
    expectRefusal({"--serial", "no port"}, 1, HasSubstr("cannot use no port as a serial line"));
}

// It listens by then, and may say so before or behind it.
TEST_F(VirtualPrinterOptions, RefuseAReadyFileThatCannotBeWritten)
{
    PrinterProcess printer({"--listen", "127.0.0.1:0", "--ready", folder.file("none/ready")});
    const std::vector<std::string> said = {printer.line(), printer.line()};
    EXPECT_THAT(said, testing::Contains(StartsWith("telvofm-printer: cannot write ")));
    EXPECT_EQ(printer.end(0), 1);
}

TEST_F(VirtualPrinterOptions, RefuseAPortThatIsTaken)
{
    const PrinterProcess first({"--listen", "127.0.0.1:0"});
    const std::string address = first.address();
    expectRefusal({"--listen", address}, 1, HasSubstr("cannot listen on " + address));
    expectThatItAnswers(address);
}

TEST_F(VirtualPrinterOptions, RefuseAMemoryThatAnotherProcessHolds)
{
    const std::vector<std::string> options = {"--listen", "127.0.0.1:0", "--data", folder.path.string()};
    PrinterProcess first(options);
    const std::string address = first.address();
    // Nothing but this sentence: what the first one has is untouched.
    expectRefusal(options, 1, HasSubstr("in use by process " + std::to_string(first.id())));
    expectThatItAnswers(address);
    first.kill();
    const PrinterProcess next(options);
    expectThatItAnswers(next.address());
}

TEST_F(VirtualPrinterOptions, KeepMemoryAndAddressesInFoldersOfAnyName)
{
    const std::filesystem::path data = folder.path / u8"Účtenky ř";
    std::filesystem::create_directory(data);
    const std::u8string utf8 = data.u8string();
    const std::string name(utf8.begin(), utf8.end());
    const PrinterProcess printer({"--listen", "127.0.0.1:0", "--data", name, "--ready", name + "/ž.json"});
    const std::string address = printer.address();
    expectThatItAnswers(address);
    EXPECT_TRUE(std::filesystem::exists(data / "printer.db"));
    EXPECT_THAT(contentOf(data / u8"ž.json"), HasSubstr('"' + address + '"'));
    EXPECT_FALSE(std::filesystem::exists(data / u8"ž.json.part"));
}

TEST_F(VirtualPrinterOptions, EndItWithTheProcessThatStartedIt)
{
    ChildProcess shell(
        ChildProcess::shell({TELVOFM_PRINTER, "--listen", "127.0.0.1:0", "--exit-with-parent"}));
    EXPECT_THAT(shell.line(), StartsWith("listening on "));
    shell.kill();
    EXPECT_EQ(shell.byte(), std::nullopt) << "it is still there, or prints";
}

} // namespace
} // namespace telvofm::test
