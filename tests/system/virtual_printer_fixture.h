// A virtual printer, a till that talks to it in bytes, and a clock that tests set.
#pragma once

#include "tests/system/till_bytes.h"
#include "virtual_printer/printers/new_printer.h"
#include "virtual_printer/printers/output_lines.h"
#include "virtual_printer/printers/till_session.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

namespace virtual_printer {

using telvofm::test::blockOf;
using telvofm::test::request;
using telvofm::test::withChecksum;

inline const std::string accepted = "\x06";

inline std::string refused(Refusal refusal)
{
    return {'\x15', static_cast<char>(refusal)};
}

inline std::string item(unsigned char command, const std::string& name, const std::string& total,
                        const std::string& vat = "A")
{
    return request(command, {"0", name, total, vat, "1.000", total, "ks "});
}

inline constexpr std::size_t columnsOfPaper = 40;

// A line of the paper with its two parts at the edges.
inline std::string line(const std::string& left, const std::string& right)
{
    return left + std::string(columnsOfPaper - left.size() - right.size(), ' ') + right;
}

// What the till hears at last, without the time that it takes.
inline std::string bytesOf(const Steps& steps)
{
    std::string bytes;
    for (const Step& step : steps) {
        if (const auto* send = std::get_if<Send>(&step.action)) {
            bytes += send->bytes;
        }
    }
    return bytes;
}

class VirtualPrinter : public testing::Test
{
protected:
    // What the printer answers to these bytes; the connection ends behind them.
    std::string answerTo(const std::string& bytes)
    {
        std::string heard = bytesOf(TillSession(station, CodePage::windows1250, codes).take(bytes, {}));
        for (const Happened& event : printer.takeHappened()) {
            for (std::string& printed : linesFor(event, columnsOfPaper, codes)) {
                paper.push_back(std::move(printed));
            }
        }
        return heard;
    }

    void openReceipt()
    {
        ASSERT_EQ(answerTo(request(0x29, {"0"}) + request(0x20, {"0", "1", "0", "0", "1", "0"})),
                  accepted + accepted);
    }

    const Codes codes;
    std::vector<std::string> paper;
    Station station{"printer", Printer(Memory(), readyToSell(),
                                       [] { return parseMoment("2026-01-01 12:00", Edge::first).value(); })};
    Printer& printer = station.printer;
};

} // namespace virtual_printer
