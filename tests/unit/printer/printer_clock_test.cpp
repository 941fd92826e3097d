// The printer's clock: it is never before the last document, the day and the receipt that are open, whatever
// the clock that it was started with says.
#include "tests/unit/own_folder.h"
#include "virtual_printer/printers/new_printer.h"
#include "virtual_printer/printers/printer.h"

#include <gtest/gtest.h>

namespace virtual_printer {
namespace {

using std::chrono::minutes;

class PrinterClock : public testing::Test
{
protected:
    static Moment at(std::string_view text) { return parseMoment(text, Edge::first).value(); }

    // Another start at this moment of the clock that it gets.
    [[nodiscard]] Printer startAt(std::string_view text)
    {
        clock = at(text);
        return {Memory(folder.file("printer.db")), readyToSell(), [this] { return clock; }};
    }

    static void send(Printer& printer, unsigned char command, const std::vector<std::string>& fields)
    {
        EXPECT_EQ(printer.execute({1, command, fields}, CodePage::windows1250).refusal, Refusal::none);
    }

    static void sell(Printer& printer)
    {
        send(printer, 0x20, {"0", "1", "0", "0", "1", "0"});
        send(printer, 0x24, {"0", "Chlieb", "0", "A", "1", "0", "ks"});
        send(printer, 0x22, {"0", "0"});
    }

    telvofm::test::OwnFolder folder;
    Moment clock{};
};

TEST_F(PrinterClock, GoesOnFromTheLastDocumentWhenItIsStartedBeforeIt)
{
    {
        Printer printer = startAt("2026-01-31 12:00");
        send(printer, 0x29, {"0"});
        sell(printer);
    }
    Printer printer = startAt("2026-01-31 11:00");
    EXPECT_EQ(printer.now(), at("2026-01-31 12:00"));
    clock += minutes(1);
    EXPECT_EQ(printer.now(), at("2026-01-31 12:01"));
    sell(printer);
    send(printer, 0x50, {"Z", "0"});
    send(printer, 0xBF, {"2026-01-31 13:00"});
    EXPECT_EQ(printer.now(), at("2026-01-31 13:00"));
}

TEST_F(PrinterClock, GoesOnFromTheOpenReceiptWhenItIsStartedBeforeIt)
{
    {
        Printer printer = startAt("2026-01-31 22:00");
        send(printer, 0x29, {"0"});
        clock = at("2026-01-31 23:59");
        send(printer, 0x20, {"0", "1", "0", "0", "1", "0"});
        send(printer, 0x24, {"0", "Chlieb", "0", "A", "1", "0", "ks"});
    }
    Printer printer = startAt("2025-12-31 23:00");
    EXPECT_EQ(printer.now(), at("2026-01-31 23:59"));
    send(printer, 0x22, {"0", "0"});
    EXPECT_EQ(printer.state().standing->lastDocument, at("2026-01-31 23:59"));
    clock += minutes(2);
    EXPECT_EQ(printer.now(), at("2026-02-01 00:01"));
}

// Otherwise the day would be longer than its 24 hours, and nobody would be told.
TEST_F(PrinterClock, GoesOnFromTheOpenDayWhenItIsStartedBeforeIt)
{
    {
        Printer printer = startAt("2026-01-31 12:00");
        send(printer, 0x29, {"0"});
    }
    Printer printer = startAt("2026-01-30 09:00");
    EXPECT_EQ(printer.now(), at("2026-01-31 12:00"));
    clock += minutes(24 * 60 + 1);
    EXPECT_EQ(printer.execute({1, 0x50, {"X", "0"}}, CodePage::windows1250).refusal, Refusal::dayTooLong);
}

TEST_F(PrinterClock, StandsStillBehindTheOpenReceiptWhenItIsMovedBack)
{
    Printer printer = startAt("2026-01-31 12:00");
    send(printer, 0x29, {"0"});
    clock = at("2026-01-31 12:30");
    send(printer, 0x20, {"0", "1", "0", "0", "1", "0"});
    clock = at("2026-01-31 11:00");
    EXPECT_EQ(printer.now(), at("2026-01-31 12:30"));
    send(printer, 0x2B, {"0", ""});
    EXPECT_EQ(printer.state().standing->lastDocument, at("2026-01-31 12:30"));
}

// A year later than 9999 has no date that could be written.
TEST_F(PrinterClock, StandsAtTheEndOfTheLastYear)
{
    auto time = std::chrono::steady_clock::time_point(std::chrono::hours(1));
    const auto present = [&time] { return time; };
    const Clock slow = clockFrom(at("9999-12-31 23:59"), 1, lastMoment, present);
    const Clock fast = clockFrom(at("2026-01-31 12:00"), 86'400, lastMoment, present);
    time += std::chrono::milliseconds(1500);
    EXPECT_EQ(toText(slow()), "9999-12-31 23:59:01");
    EXPECT_EQ(fast(), at("2026-02-02 00:00"));
    time += minutes(1);
    EXPECT_EQ(toText(slow()), "9999-12-31 23:59:59");
    // 7973 years and 11 months of it; in nanoseconds there is room for 292 years.
    time = std::chrono::steady_clock::time_point(std::chrono::hours(1)) + std::chrono::hours(24 * 20);
    EXPECT_EQ(fast(), at("2026-01-31 12:00") + std::chrono::days(86'400 * 20));
    time += std::chrono::hours(24 * 365);
    EXPECT_EQ(toText(fast()), "9999-12-31 23:59:59");
}

TEST_F(PrinterClock, StandsAtTheEndOfTheLastYearAlsoWhenATillHasSetIt)
{
    Printer printer = startAt("2026-01-31 12:00");
    send(printer, 0xBF, {"9999-12-31 23:59"});
    clock += minutes(5);
    EXPECT_EQ(toText(printer.now()), "9999-12-31 23:59:59");
    send(printer, 0xBF, {"9999-12-31 23:59"});
    EXPECT_EQ(toText(printer.now()), "9999-12-31 23:59:00");
    clock += std::chrono::seconds(10);
    EXPECT_EQ(toText(printer.now()), "9999-12-31 23:59:10");
}

// As clocks of the place do at the end of summer.
TEST_F(PrinterClock, StandsStillWhileTheOneThatItWasStartedWithIsBehind)
{
    Printer printer = startAt("2026-10-25 02:59");
    send(printer, 0x29, {"0"});
    sell(printer);
    clock = at("2026-10-25 02:00");
    EXPECT_EQ(printer.now(), at("2026-10-25 02:59"));
    sell(printer);
    clock = at("2026-10-25 03:00");
    EXPECT_EQ(printer.now(), at("2026-10-25 03:00"));
}

// Also the moment at which it stands: from there it runs again.
TEST_F(PrinterClock, RunsFromWhatATillSetsItToWhileItStandsStill)
{
    for (const char* const wanted : {"2026-10-25 03:10", "2026-10-25 02:59"}) {
        Printer printer(Memory(), readyToSell(), [this] { return clock; });
        clock = at("2026-10-25 02:59");
        send(printer, 0x29, {"0"});
        sell(printer);
        send(printer, 0x50, {"Z", "0"});
        clock = at("2026-10-25 02:00");
        send(printer, 0xBF, {wanted});
        EXPECT_EQ(printer.now(), at(wanted));
        clock += minutes(1);
        EXPECT_EQ(printer.now(), at(wanted) + minutes(1));
    }
}

// What a start adds to a clock that is behind is not kept: the next one may be right.
TEST_F(PrinterClock, IsAgainTheOneThatItIsStartedWithAfterAStartWithOneThatWasBehind)
{
    {
        Printer printer = startAt("2026-01-31 12:00");
        send(printer, 0x29, {"0"});
        sell(printer);
        send(printer, 0x50, {"Z", "0"});
    }
    EXPECT_EQ(startAt("2020-01-01 12:00").now(), at("2026-01-31 12:00"));
    EXPECT_EQ(startAt("2026-02-01 08:00").now(), at("2026-02-01 08:00"));
    EXPECT_EQ(startAt("2026-01-31 11:00").now(), at("2026-01-31 12:00"));
}

// What a till sets goes on over starts, and is no more than what the till has moved it by.
TEST_F(PrinterClock, IsMovedByWhatATillHasSetAlsoAfterAStartWithOneThatWasBehind)
{
    {
        Printer printer = startAt("2026-01-31 12:00");
        send(printer, 0x29, {"0"});
        sell(printer);
        send(printer, 0x50, {"Z", "0"});
    }
    {
        Printer printer = startAt("2020-01-01 12:00");
        send(printer, 0xBF, {"2026-01-31 12:30"});
        EXPECT_EQ(printer.now(), at("2026-01-31 12:30"));
    }
    EXPECT_EQ(startAt("2026-02-01 08:00").now(), at("2026-02-01 08:30"));
}

} // namespace
} // namespace virtual_printer
