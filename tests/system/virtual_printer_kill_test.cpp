// The virtual printer is killed at each step of a till's day, at any moment of the step, and started again:
// what it has answered has happened, what it was at has happened once or not at all, and the day goes on.
#include "tests/system/printer_process.h"
#include "tests/system/raw_till.h"
#include "tests/unit/own_folder.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <optional>
#include <random>

namespace telvofm::test {
namespace {

using Clock = std::chrono::steady_clock;

// A request, and what the till can read of the printer behind it, apart from the numbers that go on.
struct Step
{
    std::string request;
    std::string state;
    std::string total;
    std::string due;
    bool isWithinReceipt = true; // one is open before it
};

std::string item(unsigned char command, const std::string& name, const std::string& price)
{
    std::vector<std::string> fields = {"0", name, price, "A", "1", price, "ks"};
    if (command == 0x25) {
        fields.emplace_back("");
    }
    return request(command, fields);
}

const std::vector<Step>& stepsOfDay()
{
    static const std::vector<Step> steps = {
        {request(0x29, {"0"}), "closed", "0.00", "0.00", false},
        {request(0x20, {"0", "0", "0", "0", "1", "0"}), "open", "0.00", "0.00", false},
        {item(0x24, "Chlieb", "1.50"), "open", "1.50", "1.50"},
        {item(0x24, "Maslo", "2.25"), "open", "3.75", "3.75"},
        {request(0x26, {"0", "zlava", "0", "0.25", "A"}), "open", "3.50", "3.50"},
        {item(0x25, "Chlieb", "1.50"), "open", "2.00", "2.00"},
        {request(0x30, {"0", "2", "2.00", "0.50", "0", ""}), "paying", "2.00", "1.50"},
        {request(0x30, {"0", "1", "2.00", "0", "0", ""}), "paying", "2.00", "0.00"},
        {request(0x22, {"0", "0"}), "closed", "0.00", "0.00"},
        {request(0x20, {"0", "0", "0", "0", "1", "0"}), "open", "0.00", "0.00", false},
        {request(0x2B, {"0", ""}), "closed", "0.00", "0.00"},
        {request(0x50, {"Z", "0"}), "closed", "0.00", "0.00", false},
    };
    return steps;
}

// Where the printer stands: how many days it has closed, and how many steps of the next one it has done.
struct Stand
{
    int days = 0;
    int steps = 0;
    bool operator==(const Stand&) const = default;
};

Stand behind(Stand stand)
{
    ++stand.steps;
    return stand.steps == static_cast<int>(stepsOfDay().size()) ? Stand{stand.days + 1, 0} : stand;
}

bool standsAt(const RawTill& till, Stand stand)
{
    const auto& steps = stepsOfDay();
    // The last steps: the receipt is ended, another one begun and cancelled, the day closed.
    const int left = static_cast<int>(steps.size()) - stand.steps;
    const int receipts = stand.days + (left <= 3 ? 1 : 0);
    const int cancelled = stand.days + (left == 1 ? 1 : 0);
    const Step none = {"", "closed", "0.00", "0.00"};
    const Step& last = stand.steps == 0 ? none : steps[static_cast<std::size_t>(stand.steps - 1)];
    const auto is = [&](const std::string& variable, const std::string& value) {
        return till.variable(variable) == value;
    };
    // Each receipt is 2.00, of which 0.50 are paid by card.
    return is("STATE", last.state) && is("TOTAL", last.total) && is("DUE", last.due) &&
           is("DAY", stand.steps == 0 ? "closed" : "open") && is("CLOSURES", std::to_string(stand.days)) &&
           is("LAST_RECEIPT", std::to_string(receipts)) && is("RECEIPTS_EVER", std::to_string(receipts)) &&
           is("TURNOVER_EVER", std::to_string(2 * receipts) + ".00") &&
           is("DOCUMENTS", std::to_string(stand.days + receipts + cancelled));
}

class VirtualPrinterKill : public testing::Test
{
protected:
    void start()
    {
        printer.emplace(std::vector<std::string>{"--listen", "127.0.0.1:0", "--data", folder.path.string()});
        till.emplace(printer->port());
    }

    // Takes the printer to this step, kills it there at any moment, and sees where it stands afterwards.
    void killAt(int target)
    {
        while (stand.steps != target) {
            const Clock::time_point before = Clock::now();
            till->say(next());
            ASSERT_EQ(till->hear(1), "\x06") << "step " << stand.steps;
            durations[static_cast<std::size_t>(stand.steps)] = Clock::now() - before;
            stand = behind(stand);
        }
        const Clock::duration delay = anyMomentOf(target);
        till->say(next());
        for (const Clock::time_point before = Clock::now(); Clock::now() - before < delay;) {
        }
        printer->kill();
        const std::string answer = till->heard();
        ASSERT_TRUE(answer.empty() || answer == "\x06");
        start();
        find(!answer.empty());
    }

    // Behind the step that was answered; otherwise before or behind the one that was not.
    void find(bool isAnswered)
    {
        const bool hasHappened = standsAt(*till, behind(stand));
        ASSERT_TRUE(hasHappened || (!isAnswered && standsAt(*till, stand)))
            << "killed at step " << stand.steps << (isAnswered ? ", answered" : "");
        stand = hasHappened ? behind(stand) : stand;
        killedBefore += hasHappened ? 0 : 1;
        const bool isReceiptOpen = stepsOfDay()[static_cast<std::size_t>(stand.steps)].isWithinReceipt;
        if (isReceiptOpen) {
            EXPECT_EQ(printer->line(), "               POWER LOST");
        }
    }

    [[nodiscard]] const std::string& next() const
    {
        return stepsOfDay()[static_cast<std::size_t>(stand.steps)].request;
    }
    Clock::duration anyMomentOf(int step)
    {
        constexpr double aLittleBehind = 1.3;
        std::uniform_real_distribution<double> part(0, aLittleBehind);
        return std::chrono::duration_cast<Clock::duration>(durations[static_cast<std::size_t>(step)] *
                                                           part(random));
    }

    OwnFolder folder;
    std::optional<PrinterProcess> printer;
    std::optional<RawTill> till;
    Stand stand;
    std::vector<Clock::duration> durations =
        std::vector<Clock::duration>(stepsOfDay().size(), std::chrono::milliseconds(1));
    std::mt19937 random{std::random_device{}()};
    int killedBefore = 0;
};

// Each step as often as the build or the variable TELVOFM_KILLS says.
TEST_F(VirtualPrinterKill, LosesNothingAndDoublesNothing)
{
    const char* const wanted = std::getenv("TELVOFM_KILLS");
    const int times = wanted == nullptr ? TELVOFM_KILLS_OF_EACH_STEP : std::atoi(wanted);
    start();
    for (int i = 0; i < times; ++i) {
        for (int step = 0; step < static_cast<int>(stepsOfDay().size()); ++step) {
            killAt(step);
            ASSERT_FALSE(HasFailure());
        }
    }
    for (int closure = 1; closure <= stand.days; ++closure) {
        EXPECT_TRUE(till->isAccepted(0xF5, {std::to_string(closure)})) << "the journal of day " << closure;
    }
    std::printf("%d days, %d times killed before the step was committed\n", stand.days, killedBefore);
}

} // namespace
} // namespace telvofm::test
