// Tills at one virtual printer: one at a time, and each as it likes.
#include "telvofm.h"
#include "tests/system/printer_process.h"
#include "tests/system/raw_till.h"

#include <gtest/gtest.h>

#include <optional>

namespace telvofm::test {
namespace {

using namespace std::string_literals;

constexpr unsigned char anyCommand = 0xE0; // printJobCancel, which is always accepted

std::vector<std::string> listening(const std::string& second = "busy")
{
    return {"--listen", "127.0.0.1:0", "--second", second};
}

TEST(SecondTill, IsTurnedAwayAtOnceByDefault)
{
    const PrinterProcess printer({"--listen", "127.0.0.1:0"});
    const int port = printer.port();
    const RawTill first(port);
    ASSERT_TRUE(first.isAccepted(anyCommand));
    EXPECT_TRUE(RawTill(port).isClosed());
    // The library opens the link, and its first call tells that the printer has closed it.
    setLogginOff();
    ASSERT_EQ(openFM(("127.0.0.1:" + std::to_string(port)).c_str()), 0);
    EXPECT_EQ(printJobCancel(1), -10201);
    closeFM();
    EXPECT_TRUE(first.isAccepted(anyCommand));
}

TEST(SecondTill, WaitsForTheFirstOnesEnd)
{
    const PrinterProcess printer(listening("wait"));
    const int port = printer.port();
    std::optional<RawTill> first;
    first.emplace(port);
    ASSERT_TRUE(first->isAccepted(anyCommand));
    const RawTill second(port);
    second.say(request(anyCommand));
    ASSERT_TRUE(first->isAccepted(anyCommand));
    EXPECT_EQ(second.heard(), "");
    first.reset();
    EXPECT_EQ(second.hear(1), "\x06");
}

TEST(SecondTill, IsTurnedAwayWhenAHundredWait)
{
    const PrinterProcess printer(listening("wait"));
    const int port = printer.port();
    std::optional<RawTill> first;
    first.emplace(port);
    ASSERT_TRUE(first->isAccepted(anyCommand));
    constexpr std::size_t most = 100;
    std::vector<RawTill> waiting;
    waiting.reserve(most);
    while (waiting.size() < most) {
        waiting.emplace_back(port);
    }
    EXPECT_TRUE(RawTill(port).isClosed());
    first.reset();
    EXPECT_TRUE(waiting.front().isAccepted(anyCommand));
    waiting.erase(waiting.begin(), waiting.end() - 1);
    EXPECT_TRUE(waiting.back().isAccepted(anyCommand));
}

TEST(SecondTill, TakesThePrinterOver)
{
    const PrinterProcess printer(listening("takeover"));
    const int port = printer.port();
    const RawTill first(port);
    ASSERT_TRUE(first.isAccepted(anyCommand));
    const RawTill second(port);
    EXPECT_TRUE(first.isClosed());
    EXPECT_TRUE(second.isAccepted(anyCommand));
    const RawTill third(port);
    EXPECT_TRUE(second.isClosed());
    EXPECT_TRUE(third.isAccepted(anyCommand));
}

TEST(SecondTill, OfAnotherPrinterIsNone)
{
    const PrinterProcess printers({"--printer", "front=127.0.0.1:0", "--printer", "back=127.0.0.1:0"});
    const auto portOf = [](const std::string& greeting) {
        return std::stoi(greeting.substr(greeting.rfind(':') + 1));
    };
    const RawTill front(portOf(printers.line()));
    const RawTill back(portOf(printers.line()));
    EXPECT_TRUE(front.isAccepted(0x29, {"0"}));
    EXPECT_EQ(front.variable("DAY"), "open");
    EXPECT_EQ(back.variable("DAY"), "closed");
}

// The socket is closed without a word to the other end, which only the administrator may do. The printer asks
// after five seconds of silence whether the till is still there; this machine then answers that it is not.
TEST(DeadTill, FreesThePrinter)
{
    const PrinterProcess printer(listening("wait"));
    const int port = printer.port();
    RawTill dead(port);
    ASSERT_TRUE(dead.isAccepted(anyCommand));
    if (!dead.vanish()) {
        GTEST_SKIP() << "this user may not close a socket silently";
    }
    const RawTill next(port);
    EXPECT_TRUE(next.isAccepted(anyCommand));
}

class OneTill : public testing::Test
{
protected:
    PrinterProcess printer{listening()};
    RawTill till{printer.port()};
};

TEST_F(OneTill, MaySendByteByByte)
{
    const std::string all = request(0x29, {"0"}) + request(0x20, {"0", "1", "0", "0", "1", "0"}) +
                            request(0x24, {"0", "Chlieb", "1.50", "A", "1", "1.50", "ks"});
    for (const char byte : all) {
        till.say(std::string(1, byte));
    }
    EXPECT_EQ(till.hear(3), "\x06\x06\x06");
    EXPECT_EQ(till.variable("TOTAL"), "1.50");
}

TEST_F(OneTill, GetsItsNextRequestAnsweredWhenItHasAcknowledgedNoReply)
{
    till.say(request(0x92, {"DAY"}));
    ASSERT_EQ(till.hear(12), blockOf("closed\r\n", '\x03'));
    EXPECT_TRUE(till.isAccepted(0x29, {"0"}));
    EXPECT_EQ(till.variable("DAY"), "open");
    // Also one that was in the middle of a long reply, and asks for the next block or nobody.
    EXPECT_TRUE(till.isAccepted(0x20, {"0", "1", "0", "0", "1", "0"}));
    EXPECT_TRUE(till.isAccepted(0x24, {"0", "Chlieb", "0", "A", "1", "0", "ks"}));
    EXPECT_TRUE(till.isAccepted(0x22, {"0", "0"}));
    till.say(request(0x93));
    ASSERT_EQ(till.hear(260).substr(0, 2), ":\xFF");
    till.say("\x11");
    EXPECT_EQ(till.variable("LAST_RECEIPT"), "1");
}

TEST_F(OneTill, IsHeardAgainBehindGarbage)
{
    const std::string sound = request(anyCommand);
    std::string garbage;
    for (int byte = 0; byte < 256; ++byte) {
        if (byte != 0x1C && byte != 0x11) { // neither the start of a request nor a probe
            garbage += static_cast<char>(byte);
        }
    }
    till.say(garbage + garbage + sound);
    EXPECT_EQ(till.hear(1), "\x06");
    EXPECT_EQ(till.variable("DAY"), "closed");
}

// A request without an end is noise after 64 kilobytes.
TEST_F(OneTill, IsHeardAgainBehindARequestThatDoesNotEnd)
{
    till.say("\x1C\x01\x24"s + std::string(65535, 'x') + request(anyCommand));
    EXPECT_EQ(till.hear(1), "\x06");
}

} // namespace
} // namespace telvofm::test
