// The sums of days add up, each of them.
#include "virtual_printer/fiscal/state.h"

#include <gtest/gtest.h>

namespace virtual_printer {
namespace {

TEST(PrinterSums, AddUp)
{
    Sums sums = {{{'A', 100}, {'B', 50}}, {{1, 150}}, 2, 1, 30, 10, 4};
    sums.add({{{'B', -20}, {'C', 7}}, {{1, -20}, {2, 7}}, 1, 5, 3, 20, 6});
    EXPECT_EQ(sums, (Sums{{{'A', 100}, {'B', 30}, {'C', 7}}, {{1, 130}, {2, 7}}, 3, 6, 33, 30, 10}));
    EXPECT_EQ(sums.turnover(), 137);
}

} // namespace
} // namespace virtual_printer
