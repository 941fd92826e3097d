// Moments as tills write them and as the printer does.
#include "virtual_printer/fiscal/moment.h"

#include <gtest/gtest.h>

namespace virtual_printer {
namespace {

std::string read(std::string_view text, Edge edge = Edge::first)
{
    const auto moment = parseMoment(text, edge);
    return moment ? toText(*moment) : "none";
}

TEST(PrinterMoment, IsReadInBothWays)
{
    EXPECT_EQ(read("2026-01-31"), "2026-01-31 00:00:00");
    EXPECT_EQ(read("31.01.2026"), "2026-01-31 00:00:00");
    EXPECT_EQ(read("31.01.2026 12:05"), "2026-01-31 12:05:00");
    EXPECT_EQ(read("2024-02-29 23:59:58"), "2024-02-29 23:59:58");
}

TEST(PrinterMoment, IsTheEndOfWhatTheTextLeavesOpen)
{
    EXPECT_EQ(read("2026-01-31", Edge::last), "2026-01-31 23:59:59");
    EXPECT_EQ(read("2026-01-31 12:05", Edge::last), "2026-01-31 12:05:59");
    EXPECT_EQ(read("2026-01-31 12:05:07", Edge::last), "2026-01-31 12:05:07");
}

TEST(PrinterMoment, OfAnEmptyTextBoundsNothing)
{
    EXPECT_EQ(read("", Edge::first), "0000-01-01 00:00:00");
    EXPECT_EQ(read("", Edge::last), "9999-12-31 23:59:59");
}

TEST(PrinterMoment, IsNoneWhereThereIsNoSuchDate)
{
    for (const char* text :
         {"2026-02-29", "2026-13-01", "2026-00-10", "31.04.2026", "2026-1-31", "2026/01/31", "today",
          "2026-01-31T12:00", "2026-01-31 24:00", "2026-01-31 12:60", "2026-01-31 12:00:60", "2026-01-31 ",
          "2026-01-31 12", "2026-01-31 12:00 "}) {
        EXPECT_EQ(read(text), "none") << text;
    }
}

TEST(PrinterMoment, IsPrintedToTheMinute)
{
    EXPECT_EQ(onPaper(parseMoment("31.01.2026 12:05:59", Edge::first).value_or(Moment{})),
              "2026-01-31 12:05");
}

} // namespace
} // namespace virtual_printer
