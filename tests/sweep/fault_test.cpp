// What a sweep goes through: every fault of a small call, counted by hand, so that no fault drops out of it
// unnoticed.
#include "tests/sweep/fault.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>

namespace telvofm::test::sweep {
namespace {

using Kind = Fault::Kind;

// Three bytes to the printer; an acknowledge and two bytes of a block come back.
const Extent extent = {3, {Role::answer, Role::blockStart, Role::blockData}};

std::ptrdiff_t countOf(const std::vector<Fault>& faults, Kind kind, Direction direction)
{
    return std::count_if(faults.begin(), faults.end(), [&](const Fault& fault) {
        return fault.kind == kind && fault.direction == direction;
    });
}

void expectAtEveryByte(const std::vector<Fault>& faults, std::ptrdiff_t delays)
{
    for (const Direction direction : {Direction::toPrinter, Direction::toTill}) {
        // In front of each of three bytes and behind the last.
        EXPECT_EQ(countOf(faults, Kind::closed, direction), 4);
        EXPECT_EQ(countOf(faults, Kind::lost, direction), 4);
        EXPECT_EQ(countOf(faults, Kind::inserted, direction), 4 * 11);
        EXPECT_EQ(countOf(faults, Kind::flipped, direction), 3 * 8);
        EXPECT_EQ(countOf(faults, Kind::deleted, direction), 3);
        EXPECT_EQ(countOf(faults, Kind::doubled, direction), 3);
        EXPECT_EQ(countOf(faults, Kind::delayed, direction), 3 * delays);
    }
    EXPECT_EQ(countOf(faults, Kind::none, Direction::toPrinter) +
                  countOf(faults, Kind::none, Direction::toTill),
              0);
    EXPECT_EQ(countOf(faults, Kind::busy, Direction::toPrinter), 0);
}

TEST(AllFaults, OverTcpABusyPrinterSaysSoInFrontOfAnswersAndBlocks)
{
    const auto faults = allFaults(extent, Link::tcp);
    expectAtEveryByte(faults, 12);
    EXPECT_EQ(countOf(faults, Kind::busy, Direction::toTill), 2);
    EXPECT_EQ(faults.size(), 238U); // 2 * (8 + 44 + 24 + 3 + 3 + 36) + 2
}

TEST(AllFaults, OnASerialLineItTakesItsLinesAwayAtAnyByte)
{
    const auto faults = allFaults(extent, Link::serial);
    expectAtEveryByte(faults, 4);
    EXPECT_EQ(countOf(faults, Kind::busy, Direction::toTill), 3);
    EXPECT_EQ(faults.size(), 191U); // 2 * (8 + 44 + 24 + 3 + 3 + 12) + 3
}

// Only the fault behind the last byte stands where no byte is.
TEST(AllFaults, EachStandsAtAByte)
{
    for (const Fault& fault : allFaults(extent, Link::tcp)) {
        EXPECT_EQ(fault.isAtEnd, fault.position == 3) << textOf(fault);
        EXPECT_LE(fault.position, 3U) << textOf(fault);
    }
}

TEST(AllFaults, EachBitIsFlippedAndEachWaitIsMissedAndMet)
{
    int bits = 0;
    std::vector<int> delays;
    for (const Fault& fault : allFaults({1, {}}, Link::tcp)) {
        bits += fault.kind == Kind::flipped ? fault.value : 0;
        if (fault.kind == Kind::delayed) {
            delays.push_back(static_cast<int>(fault.delay.count()));
        }
    }
    EXPECT_EQ(bits, 255);
    EXPECT_EQ(delays,
              (std::vector{2999, 3001, 5999, 6001, 8999, 9001, 11999, 12001, 14999, 15001, 17999, 18001}));
}

} // namespace
} // namespace telvofm::test::sweep
