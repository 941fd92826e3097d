// The library sells on the virtual printer over each kind of serial line that Linux has, and without delay.
#include "tests/system/virtual_printer_sale.h"
#include "tests/wire/loopback.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <thread>

namespace telvofm::test {
namespace {

using namespace std::chrono_literals;

// Carries the bytes of one serial line to the other and back, as a cable between two machines does.
class Cable
{
public:
    Cable(wire::Connection& oneEnd, wire::Connection& otherEnd)
        : carrier([&] {
              while (!isEnding) {
                  carry(oneEnd, otherEnd);
                  carry(otherEnd, oneEnd);
              }
          })
    {
    }
    Cable(const Cable&) = delete;
    Cable& operator=(const Cable&) = delete;
    ~Cable()
    {
        isEnding = true;
        carrier.join();
    }

private:
    static void carry(const wire::Connection& from, const wire::Connection& to)
    {
        to.send(from.receive(256, 1ms).value_or(""));
    }

    std::atomic<bool> isEnding = false;
    std::thread carrier;
};

TEST_F(SaleOnVirtualPrinter, OnAPseudoTerminalOfThePrinter)
{
    const PrinterProcess printer = printerWith({"--pty"});
    ASSERT_EQ(openFM(("COM" + printer.address("serial line ")).c_str()), 0);
    expectThatAReceiptIsSold(printer);
}

TEST_F(SaleOnVirtualPrinter, OnASerialDevice)
{
    std::string ofPrinter;
    std::string ofTill;
    wire::Connection printerEnd = wire::openPseudoTerminal(ofPrinter);
    wire::Connection tillEnd = wire::openPseudoTerminal(ofTill);
    const PrinterProcess printer = printerWith({"--serial", ofPrinter});
    ASSERT_EQ(printer.address("serial line "), ofPrinter);
    ASSERT_EQ(openFM(("COM" + ofTill).c_str()), 0);
    const Cable cable(printerEnd, tillEnd);
    expectThatAReceiptIsSold(printer);
}

// A request waits for the acknowledgement of the bytes before it; a delayed one would cost 40 ms each time,
// as it does under Wine.
TEST_F(SaleOnVirtualPrinter, NoAnswerIsDelayed)
{
    constexpr int calls = 50;
    const PrinterProcess printer = printerWith({"--listen", "127.0.0.1:0"});
    ASSERT_EQ(openFM(printer.address().c_str()), 0);
    auto best = std::chrono::steady_clock::duration::max();
    for (int round = 0; round < 3; ++round) {
        const auto start = std::chrono::steady_clock::now();
        for (int call = 0; call < calls; ++call) {
            ASSERT_EQ(printJobCancel(1), 0);
        }
        best = std::min(best, std::chrono::steady_clock::now() - start);
    }
    EXPECT_LT(best, 1s);
}

} // namespace
} // namespace telvofm::test
