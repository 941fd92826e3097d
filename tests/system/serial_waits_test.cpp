// The printer's modem lines move while a call runs; three of these tests take their time.
#include "tests/system/closing_time.h"
#include "tests/system/serial_link_fixture.h"

#include <algorithm>
#include <array>
#include <thread>

namespace telvofm::test {
namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

class SerialWaits : public SerialLinkTest
{
};

TEST_F(SerialWaits, APrinterThatIsNotReadyHoldsUpTheWriteUntilItIs)
{
    printer.setLines(true, false);
    auto call = std::async(std::launch::async, printJobCancel, 1);
    EXPECT_TRUE(printer.hearsNothing());
    EXPECT_EQ(call.wait_for(0ms), std::future_status::timeout);
    printer.setLines(true, true);
    EXPECT_EQ(receiveRequest(printer.line()), "\x1C\x01\xE0\x04");
    printer.line().send("\x06");
    EXPECT_EQ(call.get(), 0);
    expectThatTheNextCallWorks();
}

TEST_F(SerialWaits, APrinterThatIsNotReadyInTheMiddleOfARequestGetsTheRestLater)
{
    // Long enough that the line is dropped while it is being written.
    const std::string text(20000, 'x');
    auto call = std::async(std::launch::async, [&] { return destroyParagon(1, 0, text.c_str()); });
    std::string received = receiveBytes(printer.line(), 100);
    printer.setLines(true, false);
    while (true) {
        const auto more = printer.line().receive(4096, 200ms);
        if (!more || more->empty()) {
            break;
        }
        received += *more;
    }
    EXPECT_LT(received.size(), text.size());
    EXPECT_EQ(call.wait_for(0ms), std::future_status::timeout);
    printer.setLines(true, true);
    constexpr std::size_t requestSize = 20000 + 8; // 1C 01 2B "0" 00 ... 00 04 and the checksum byte
    received += receiveBytes(printer.line(), requestSize - received.size());
    printer.line().send("\x06");
    EXPECT_EQ(call.get(), 0);
    EXPECT_EQ(received.substr(5, text.size()), text);
}

// The one test that waits for it.
TEST_F(SerialWaits, SilenceWithClearToSendOnIsCode64After15To30Seconds)
{
    const auto started = Clock::now();
    EXPECT_EQ(printJobCancel(1), 64);
    const auto lasted = Clock::now() - started;
    EXPECT_GE(lasted, 15s);
    EXPECT_LT(lasted, 32s);
    EXPECT_EQ(receiveBytes(printer.line(), 5), "\x1C\x01\xE0\x04\xF9");
    EXPECT_TRUE(printer.hearsNothing()) << "the request was sent once";
    expectThatTheNextCallWorks();
}

// Longer than any silence that would end the call.
TEST_F(SerialWaits, ABusyPrinterIsWaitedForAndTheCallGoesOn)
{
    const auto playing = printer.play([this](wire::Connection& line) {
        receiveRequest(line);
        printer.setLines(false, true);
        std::this_thread::sleep_for(32s);
        line.send("\x06"); // first: on a busy machine a step of the wait may end between the two
        printer.setLines(true, true);
    });
    EXPECT_EQ(printJobCancel(1), 0);
    playing.wait();
    expectThatTheNextCallWorks();
}

// One call waits for the printer, the others for their turn: none of them may take another step.
TEST_F(SerialWaits, ABusyPrinterHoldsUpAClosingForOneStep)
{
    std::array<std::future<int>, 3> calls;
    std::generate(calls.begin(), calls.end(),
                  [&] { return std::async(std::launch::async, printJobCancel, 1); });
    receiveRequest(printer.line());
    printer.setLines(false, true);
    EXPECT_LT(closingTime(), 15s + margin);
    for (auto& call : calls) {
        const int result = call.get();
        EXPECT_TRUE(result == -10103 || result == -1) << result; // -1: it came when all was over
    }
}

} // namespace
} // namespace telvofm::test
