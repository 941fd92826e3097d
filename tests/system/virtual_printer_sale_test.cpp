// The library sells on the virtual printer, over each kind of link that the printer can be reached by.
#include "telvofm.h"
#include "tests/system/printer_process.h"
#include "tests/wire/loopback.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
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

class SaleOnVirtualPrinter : public ::testing::Test
{
protected:
    void SetUp() override { setLogginOff(); }
    void TearDown() override { closeFM(); }

    static PrinterProcess printerWith(std::vector<std::string> link)
    {
        link.insert(link.end(), {"--clock", "2026-01-31 12:00"});
        return PrinterProcess(std::move(link));
    }

    // Where the printer says that it can be reached.
    static std::string addressOf(const PrinterProcess& printer, const std::string& start)
    {
        const std::string greeting = printer.line();
        EXPECT_EQ(greeting.substr(0, start.size()), start);
        return greeting.substr(std::min(start.size(), greeting.size()));
    }

    static void expectThatAReceiptIsSold(const PrinterProcess& printer)
    {
        ASSERT_EQ(sellingDayBegin(1, 0), 0);
        ASSERT_EQ(paragonBegin(1, 0, 1, 0, 0, 1, 0), 0);
        ASSERT_EQ(itemSale(1, 0, "Ro\x9Eok", 3.20, 'A', 2.0, 1.60, "ks"), 0);
        ASSERT_EQ(payment(1, 0, 1, 3.20, 5.00, 0, "Hotovos\x9D"), 0);
        ASSERT_EQ(paragonEnd(1, 0, 0), 0);
        const std::vector<std::string> receipt = {"                TELVOFM",                  //
                                                  "Receipt 1               2026-01-31 12:00", //
                                                  "----------------------------------------", //
                                                  "Rožok",                                    //
                                                  "  2 ks x 1.60                     3.20 A", //
                                                  "----------------------------------------", //
                                                  "TOTAL EUR                           3.20", //
                                                  "Hotovosť                            5.00", //
                                                  "Change                              1.80", //
                                                  "----------------------------------------", //
                                                  "VAT A 23 %  2.60 + 0.60             3.20", //
                                                  "========================================"};
        for (const std::string& line : receipt) {
            ASSERT_EQ(printer.line(), line);
        }
    }
};

TEST_F(SaleOnVirtualPrinter, OverTcp)
{
    const PrinterProcess printer = printerWith({"--listen", "127.0.0.1:0"});
    ASSERT_EQ(openFM(addressOf(printer, "listening on ").c_str()), 0);
    expectThatAReceiptIsSold(printer);
}

TEST_F(SaleOnVirtualPrinter, OnAPseudoTerminalOfThePrinter)
{
    const PrinterProcess printer = printerWith({"--pty"});
    ASSERT_EQ(openFM(("COM" + addressOf(printer, "serial line ")).c_str()), 0);
    expectThatAReceiptIsSold(printer);
}

TEST_F(SaleOnVirtualPrinter, OnASerialDevice)
{
    std::string ofPrinter;
    std::string ofTill;
    wire::Connection printerEnd = wire::openPseudoTerminal(ofPrinter);
    wire::Connection tillEnd = wire::openPseudoTerminal(ofTill);
    const PrinterProcess printer = printerWith({"--serial", ofPrinter});
    ASSERT_EQ(addressOf(printer, "serial line "), ofPrinter);
    ASSERT_EQ(openFM(("COM" + ofTill).c_str()), 0);
    const Cable cable(printerEnd, tillEnd);
    expectThatAReceiptIsSold(printer);
}

// A request waits for the acknowledgement of the bytes before it; a delayed one would cost 40 ms each time.
TEST_F(SaleOnVirtualPrinter, NoAnswerIsDelayed)
{
    constexpr int calls = 50;
    const PrinterProcess printer = printerWith({"--listen", "127.0.0.1:0"});
    ASSERT_EQ(openFM(addressOf(printer, "listening on ").c_str()), 0);
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
