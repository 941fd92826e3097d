// The virtual printer's command line where it names what only POSIX systems have: pseudo-terminals, and files
// that are devices; and an address that the machine may not have.
#include "tests/system/printer_process.h"
#include "tests/system/raw_till.h"
#include "tests/unit/own_folder.h"

#include <chrono>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <netinet/in.h>
#include <nlohmann/json.hpp>
#include <optional>
#include <sstream>
#include <sys/resource.h>
#include <sys/socket.h>
#include <thread>
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

// The number of four bytes at this place, the highest first.
std::uint32_t wholeAt(const std::string& bytes, std::size_t place)
{
    std::uint32_t whole = 0;
    for (std::size_t i = 0; i < 4; ++i) {
        whole = whole << 8U | static_cast<unsigned char>(bytes.at(place + i));
    }
    return whole;
}

// A picture of 16 x 8 dots, in rows. The file's signature, and width and height behind the head of its first
// chunk, are those of the format.
TEST(VirtualPrinterOptionsOnPosix, WriteUploadedPicturesAsFiles)
{
    const OwnFolder folder;
    const PrinterProcess printer({"--listen", "127.0.0.1:0", "--logo-png", folder.path.string()});
    const RawTill till(printer.port());
    till.say(request(0xD0, {"3", "0"}) +
             blockOf(std::string("\x02\0\x0F\0", 4) + std::string(16, '\x55'), '\x03'));
    ASSERT_EQ(till.hear(2), "\x06\x06");
    ASSERT_TRUE(till.isAccepted(0xE0)); // by then the upload is shown
    const std::string file = contentOf(folder.file("logo-3.png"));
    ASSERT_GE(file.size(), 24U);
    EXPECT_EQ(file.substr(0, 8), "\x89PNG\r\n\x1A\n");
    EXPECT_EQ(wholeAt(file, 16), 16U);
    EXPECT_EQ(wholeAt(file, 20), 8U);
}

// In hundredths of a second.
std::uint64_t timeUsedBy(std::int64_t process)
{
    std::ifstream file("/proc/" + std::to_string(process) + "/stat");
    std::string text((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    std::istringstream rest(text.substr(text.rfind(')') + 1));
    std::string skipped;
    for (int field = 3; field < 14; ++field) {
        rest >> skipped;
    }
    std::uint64_t user = 0;
    std::uint64_t system = 0;
    rest >> user >> system;
    return user + system;
}

// A connection that cannot be accepted waits, and the printer does not spend its time on it.
TEST(VirtualPrinterOptionsOnPosix, LeaveTheProcessorAloneWhenNoMoreFilesCanBeOpened)
{
    const PrinterProcess printer({"--listen", "127.0.0.1:0", "--second", "wait"});
    const int port = printer.port();
    std::optional<RawTill> first;
    first.emplace(port);
    ASSERT_TRUE(first->isAccepted(0xE0));
    rlimit before{};
    ASSERT_EQ(::prlimit(static_cast<pid_t>(printer.id()), RLIMIT_NOFILE, nullptr, &before), 0);
    const rlimit none = {.rlim_cur = 3, .rlim_max = before.rlim_max}; // the three standard ones are open
    ASSERT_EQ(::prlimit(static_cast<pid_t>(printer.id()), RLIMIT_NOFILE, &none, nullptr), 0);
    const RawTill second(port);
    constexpr std::chrono::milliseconds aWhile{250};
    const std::uint64_t usedBefore = timeUsedBy(printer.id());
    std::this_thread::sleep_for(aWhile);
    EXPECT_LE(timeUsedBy(printer.id()) - usedBefore, 5U) << "of some 25";
    EXPECT_TRUE(first->isAccepted(0xE0));
    ASSERT_EQ(::prlimit(static_cast<pid_t>(printer.id()), RLIMIT_NOFILE, &before, nullptr), 0);
    first.reset();
    EXPECT_TRUE(second.isAccepted(0xE0));
}

} // namespace
} // namespace telvofm::test
