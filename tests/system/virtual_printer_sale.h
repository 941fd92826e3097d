// A sale of the library's on a virtual printer that is a process of its own, and the paper that comes of it.
#pragma once

#include "telvofm.h"
#include "tests/system/printer_process.h"

#include <gtest/gtest.h>

namespace telvofm::test {

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

} // namespace telvofm::test
