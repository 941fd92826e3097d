// The virtual printer's standard output: a reader that does not read, or goes away, stops nothing.
#include "tests/system/printer_process.h"
#include "tests/system/raw_till.h"

#include <csignal>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace telvofm::test {
namespace {

class UnreadPaper : public testing::Test
{
protected:
    // Each announcement is seven lines of paper.
    void announce(int times) const
    {
        constexpr std::size_t columns = 40;
        const std::string announcement = request(0x31, {"0", std::string(6 * columns + 1, 'x')});
        for (int i = 0; i < times; ++i) {
            till.say(announcement);
            ASSERT_EQ(till.hear(1), "\x06");
        }
    }

    PrinterProcess printer{{"--listen", "127.0.0.1:0"}};
    RawTill till{printer.port()};
};

// 28,000 lines: a pipe holds some 1,600 of them, and 20,000 wait.
TEST_F(UnreadPaper, StopsNothingAndTellsWhatIsLost)
{
    announce(4000);
    EXPECT_EQ(till.variable("DAY"), "closed");
    printer.askToEnd(SIGTERM);
    const std::string paper = printer.rest();
    EXPECT_THAT(paper, testing::HasSubstr("\n... "));
    EXPECT_THAT(paper, testing::HasSubstr(" lines were not read in time and are lost\n"));
    EXPECT_EQ(printer.exitCode(), 0);
}

TEST_F(UnreadPaper, HoldsUpNoEnd)
{
    announce(400);
    EXPECT_EQ(printer.end(SIGTERM), 0);
}

TEST_F(UnreadPaper, IsNoMatterWhenItsReaderHasGone)
{
    announce(1);
    printer.closeOutput();
    announce(400);
    EXPECT_EQ(till.variable("DAY"), "closed");
    EXPECT_EQ(printer.end(SIGTERM), 0);
}

} // namespace
} // namespace telvofm::test
