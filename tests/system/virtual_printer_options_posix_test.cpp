// The virtual printer's command line where it names what only POSIX systems have: pseudo-terminals, and files
// that are devices; and an address that the machine may not have.
#include "tests/system/printer_process.h"
#include "tests/system/raw_till.h"
#include "tests/unit/own_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <nlohmann/json.hpp>
#include <sys/socket.h>
#include <unistd.h>

namespace telvofm::test {
namespace {

TEST(VirtualPrinterOptionsOnPosix, RefuseAFolderThatNobodyMayWriteTo)
{
    PrinterProcess printer({"--listen", "127.0.0.1:0", "--data", "/proc"});
    EXPECT_THAT(printer.rest(), testing::MatchesRegex(
                                    "telvofm-printer: [^\n]*/proc/printer\\.db cannot be opened: [^\n]*\n"));
    EXPECT_EQ(printer.exitCode(), 1);
}

bool hasIpv6()
{
    const int end = ::socket(AF_INET6, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in6 address{};
    address.sin6_family = AF_INET6;
    address.sin6_addr = in6addr_loopback;
    const bool isThere = ::bind(end, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0;
    ::close(end);
    return isThere;
}

TEST(VirtualPrinterOptionsOnPosix, TakeAnAddressOfTheNewerInternetProtocolInBrackets)
{
    if (!hasIpv6()) {
        GTEST_SKIP() << "this machine has no ::1";
    }
    const PrinterProcess printer({"--listen", "[::1]:0"});
    EXPECT_THAT(printer.line(), testing::MatchesRegex("listening on \\[::1\\]:[0-9]+"));
}

// The file is there before the first till is served.
TEST(VirtualPrinterOptionsOnPosix, WriteTheAddressesOfAllPrintersIntoAReadyFile)
{
    const OwnFolder folder;
    const std::string file = folder.file("ready.json");
    const PrinterProcess printer(
        {"--ready", file, "--printer", "front=127.0.0.1:0", "--printer", "back=127.0.0.1:0", "--pty"});
    const std::string front = printer.address("front: listening on ");
    const std::string back = printer.address("back: listening on ");
    const std::string line = printer.address("pty: serial line ");
    const RawTill till(std::stoi(front.substr(front.rfind(':') + 1)));
    EXPECT_TRUE(till.isAccepted(0xE0));

    const auto content = nlohmann::json::parse(contentOf(file));
    EXPECT_EQ(content.at("printers"), (nlohmann::json{{{"name", "front"}, {"address", front}},
                                                      {{"name", "back"}, {"address", back}},
                                                      {{"name", "pty"}, {"address", line}}}));
    EXPECT_TRUE(content.at("version").is_string());
    EXPECT_FALSE(std::filesystem::exists(file + ".part"));
}

} // namespace
} // namespace telvofm::test
