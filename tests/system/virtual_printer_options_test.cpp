// The command line of the virtual printer: what it tells, and what it refuses in one sentence.
#include "tests/system/printer_process.h"
#include "tests/system/raw_till.h"
#include "tests/unit/own_folder.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>
#include <poll.h>

#include <algorithm>

namespace telvofm::test {
namespace {

using Options = std::vector<std::string>;
using testing::HasSubstr;

// What a printer says that does not start, with its exit code.
struct Refused
{
    explicit Refused(Options options)
        : printer(std::move(options)), said(printer.rest()), code(printer.exitCode())
    {
    }

    PrinterProcess printer;
    std::string said;
    int code;
};

void expectOneSentence(const std::string& said)
{
    EXPECT_EQ(said.substr(0, 17), "telvofm-printer: ");
    EXPECT_EQ(std::count(said.begin(), said.end(), '\n'), 1) << said;
}

TEST(VirtualPrinterOptions, ThatAreWrongAreRefusedInOneSentence)
{
    const Options tcp = {"--listen", "127.0.0.1:0"};
    struct Wrong
    {
        Options options;
        std::string why;
    };
    const std::vector<Wrong> all = {
        {{}, "no link is named"},
        {{"--listen", "127.0.0.1:99999"}, "its port is no number from 0 to 65535"},
        {{"--listen", "127.0.0.1:-1"}, "its port is no number from 0 to 65535"},
        {{"--listen", "127.0.0.1"}, "it has no port"},
        {{"--listen", ":9100"}, "it has no host"},
        {{"--listen", "::1:9100"}, "stands in brackets, as [::1]:9100"},
        {{"--printer", "127.0.0.1:0"}, "write it as NAME=127.0.0.1:9100"},
        {{"--printer", "a/b=127.0.0.1:0"}, "letters, digits, - and _ in its name"},
        {{"--printer", "a=127.0.0.1:99999"}, "its port is no number"},
        {{"--printer", "a=127.0.0.1:0", "--printer", "a=127.0.0.1:0"}, "two printers are called a"},
        {{"--pty", "--printer", "pty=127.0.0.1:0"}, "two printers are called pty"},
        {{"--listen", "127.0.0.1:0", "--clock", "noon"}, "noon is no time; write it as \"2026-01-31 12:00\""},
        {{"--listen", "127.0.0.1:0", "--second", "perhaps"},
         "{busy,wait,takeover}; --help lists the options"},
        {{"--pty", "--baud", "5"}, "{57600,115200}; --help"},
        {{"--listen", "127.0.0.1:0", "--data", "no such folder"},
         "--data: Directory does not exist: no such folder"},
        {{"--listen", "127.0.0.1:0", "--codes", "no such file"},
         "--codes: File does not exist: no such file"},
        {{"--listen", "127.0.0.1:0", "--logo-png", "no such folder"}, "--logo-png: Directory does not exist"},
        {{"--listen", "127.0.0.1:0", "--control", "127.0.0.1"}, "it has no port"},
        {{"--listen", "127.0.0.1:0", "--control", "127.0.0.1:0", "--token", "short"},
         "16 characters at least"},
        {{"--listen", "127.0.0.1:0", "--token", "0123456789abcdef"}, "belongs to --control"},
        {{"--listen", "127.0.0.1:0", "--loud"}, "--loud; --help lists the options"},
    };
    for (const Wrong& wrong : all) {
        const Refused refused(wrong.options);
        expectOneSentence(refused.said);
        EXPECT_THAT(refused.said, HasSubstr(wrong.why));
        EXPECT_EQ(refused.code, 2) << refused.said;
    }
}

TEST(VirtualPrinterOptions, ThatTheMachineCannotMeetAreRefusedInOneSentence)
{
    const OwnFolder folder;
    const PrinterProcess holder({"--listen", "127.0.0.1:0", "--data", folder.path.string()});
    const std::string taken = "127.0.0.1:" + std::to_string(holder.port());
    const std::string codes = folder.file("codes.json");
    std::ofstream(codes) << R"({"noSellingDay": 0})";
    struct Impossible
    {
        Options options;
        std::string why;
    };
    const std::vector<Impossible> all = {
        {{"--listen", taken}, "cannot listen on " + taken + ": "},
        {{"--listen", "no-such-host.invalid:0"}, "cannot listen on no-such-host.invalid:0: "},
        {{"--listen", "127.0.0.1:0", "--data", folder.path.string()}, "printer.db is in use by process "},
        {{"--listen", "127.0.0.1:0", "--data", "/proc"}, "/proc/printer.db cannot be opened: "},
        {{"--serial", "/dev/no such port"}, "cannot use /dev/no such port as a serial line: "},
        {{"--listen", "127.0.0.1:0", "--codes", codes},
         "the code of \"noSellingDay\" is no number from 1 to 255"},
    };
    for (const Impossible& impossible : all) {
        const Refused refused(impossible.options);
        expectOneSentence(refused.said);
        EXPECT_THAT(refused.said, HasSubstr(impossible.why));
        EXPECT_EQ(refused.code, 1) << refused.said;
    }
}

TEST(VirtualPrinterOptions, TellTheVersionAndTheOptions)
{
    const Refused version({"--version"});
    EXPECT_THAT(version.said, testing::MatchesRegex("telvofm-printer [0-9]+\\.[0-9]+\\.[0-9]+\n"));
    EXPECT_EQ(version.code, 0);
    const Refused help({"--help"});
    EXPECT_THAT(help.said, HasSubstr("--exit-with-parent"));
    EXPECT_EQ(help.code, 0);
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

TEST(VirtualPrinterOptions, TakeAnAddressOfTheNewerInternetProtocolInBrackets)
{
    if (!hasIpv6()) {
        GTEST_SKIP() << "this machine has no ::1";
    }
    const PrinterProcess printer({"--listen", "[::1]:0"});
    EXPECT_THAT(printer.line(), testing::MatchesRegex("listening on \\[::1\\]:[0-9]+"));
}

// The file is there before the first till is served.
TEST(VirtualPrinterOptions, WriteTheAddressesIntoAReadyFile)
{
    const OwnFolder folder;
    const std::string file = folder.file("ready.json");
    const PrinterProcess printer(
        {"--ready", file, "--printer", "front=127.0.0.1:0", "--printer", "back=127.0.0.1:0", "--pty"});
    const std::string front = printer.line();
    const std::string back = printer.line();
    const std::string line = printer.line();
    const std::string before = "front: listening on ";
    ASSERT_EQ(front.substr(0, before.size()), before);
    const RawTill till(std::stoi(front.substr(front.rfind(':') + 1)));
    EXPECT_TRUE(till.isAccepted(0xE0));

    const auto address = [](const std::string& greeting) { return greeting.substr(greeting.rfind(' ') + 1); };
    const auto content = nlohmann::json::parse(contentOf(file));
    EXPECT_EQ(content.at("printers"), (nlohmann::json{{{"name", "front"}, {"address", address(front)}},
                                                      {{"name", "back"}, {"address", address(back)}},
                                                      {{"name", "pty"}, {"address", address(line)}}}));
    EXPECT_TRUE(content.at("version").is_string());
    EXPECT_FALSE(std::filesystem::exists(file + ".part"));
}

// Whoever waits for the file must not find that of the last time.
TEST(VirtualPrinterOptions, TakeAnOlderReadyFileAwayBeforeTheyAreTried)
{
    const OwnFolder folder;
    const std::string file = folder.file("ready.json");
    std::ofstream(file) << "{}";
    const Refused refused({"--serial", "/dev/no such port", "--ready", file});
    EXPECT_EQ(refused.code, 1);
    EXPECT_FALSE(std::filesystem::exists(file));
}

// Also when the clock was set before and the memory knows by how much.
TEST(VirtualPrinterOptions, StartTheClock)
{
    const OwnFolder folder;
    const auto startAt = [&](const std::string& moment) {
        return std::vector<std::string>{"--listen", "127.0.0.1:0", "--clock",
                                        moment,     "--data",      folder.path.string()};
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

TEST(VirtualPrinterOptions, MapRefusalsToTheNumbersOfAnotherDevice)
{
    const OwnFolder folder;
    const std::string codes = folder.file("codes.json");
    std::ofstream(codes) << R"({"noSellingDay": 131, "noReceipt": 10})";
    const PrinterProcess printer({"--listen", "127.0.0.1:0", "--codes", codes});
    const RawTill till(printer.port());
    till.say(request(0x20, {"0", "1", "0", "0", "1", "0"}));
    EXPECT_EQ(till.hear(2), "\x15\x83");
    EXPECT_THAT(printer.line(), HasSubstr("refused with 131 noSellingDay: "));
    till.say(request(0x22, {"0", "0"}));
    EXPECT_EQ(till.hear(2), "\x15\x0A");
    till.say(request(0xFF)); // keeps its own
    EXPECT_EQ(till.hear(2), "\x15\x02");
}

// Ends when nothing is left that could write on the paper.
bool endsWithin(int output, int seconds)
{
    std::array<char, 256> piece{};
    pollfd end = {.fd = output, .events = POLLIN, .revents = 0};
    while (::poll(&end, 1, seconds * 1000) == 1) {
        if (::read(output, piece.data(), piece.size()) <= 0) {
            return true;
        }
    }
    return false;
}

// A shell starts the printer, and goes when its input ends.
TEST(VirtualPrinterOptions, LetItEndWithTheProcessThatStartedIt)
{
    std::array<int, 2> in{};
    std::array<int, 2> out{};
    ASSERT_EQ(::pipe(in.data()), 0);
    ASSERT_EQ(::pipe(out.data()), 0);
    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_adddup2(&actions, in[0], STDIN_FILENO);
    ::posix_spawn_file_actions_adddup2(&actions, out[1], STDOUT_FILENO);
    for (const int end : {in[0], in[1], out[0], out[1]}) {
        ::posix_spawn_file_actions_addclose(&actions, end);
    }
    std::string shell = "/bin/sh";
    std::string option = "-c";
    std::string script =
        std::string("'") + TELVOFM_PRINTER + "' --listen 127.0.0.1:0 --exit-with-parent & echo $!; read end";
    const std::array<char*, 4> arguments = {shell.data(), option.data(), script.data(), nullptr};
    pid_t process = 0;
    ASSERT_EQ(::posix_spawn(&process, shell.c_str(), &actions, nullptr, arguments.data(), environ), 0);
    ::posix_spawn_file_actions_destroy(&actions);
    ::close(in[0]);
    ::close(out[1]);

    std::string said;
    for (char byte = 0; said.find("listening on ") == std::string::npos && ::read(out[0], &byte, 1) == 1;) {
        said += byte;
    }
    ::close(in[1]);
    ::waitpid(process, nullptr, 0);
    constexpr int longest = 30;
    EXPECT_TRUE(endsWithin(out[0], longest));
    ::close(out[0]);
    if (HasFailure()) {
        ::kill(std::stoi(said), SIGKILL);
    }
}

} // namespace
} // namespace telvofm::test
