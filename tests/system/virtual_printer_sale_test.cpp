// The library sells on the virtual printer over TCP.
#include "tests/system/virtual_printer_sale.h"
#include "tests/unit/own_folder.h"

#include <functional>

namespace telvofm::test {
namespace {

TEST_F(SaleOnVirtualPrinter, OverTcp)
{
    const PrinterProcess printer = printerWith({"--listen", "127.0.0.1:0"});
    ASSERT_EQ(openFM(printer.address().c_str()), 0);
    expectThatAReceiptIsSold(printer);
}

// Whatever was acknowledged is there again, and nothing twice.
TEST_F(SaleOnVirtualPrinter, GoesOnWhenThePrinterIsKilledBehindEachCall)
{
    const OwnFolder folder;
    const std::vector<std::function<int()>> calls = {
        [] { return sellingDayBegin(1, 0); },
        [] { return paragonBegin(1, 0, 1, 0, 0, 1, 0); },
        [] { return itemSale(1, 0, "Ro\x9Eok", 3.20, 'A', 2.0, 1.60, "ks"); },
        [] { return subTotalDiscount(1, 0, "Zlava", 0, 0.20, ' '); },
        [] { return payment(1, 0, 1, 3.00, 5.00, 0, "Hotovos\x9D"); },
        [] { return paragonEnd(1, 0, 0); },
        [] { return printReport(1, 'Z', 0); },
    };
    const std::vector<std::string> link = {"--listen", "127.0.0.1:0", "--data", folder.path.string()};
    for (std::size_t step = 0; step < calls.size(); ++step) {
        PrinterProcess printer = printerWith(link);
        ASSERT_EQ(openFM(printer.address().c_str()), 0);
        ASSERT_EQ(calls[step](), 0) << "step " << step;
        printer.kill();
        closeFM();
    }
    const PrinterProcess printer = printerWith(link);
    ASSERT_EQ(openFM(printer.address().c_str()), 0);
    EXPECT_STREQ(getVariableStr(1, "RECEIPTS_EVER"), "1");
    EXPECT_STREQ(getVariableStr(1, "CLOSURES"), "1");
}

} // namespace
} // namespace telvofm::test
