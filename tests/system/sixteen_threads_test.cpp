// Sixteen threads on one session: commands, refused commands and questions, while the logs are switched, raw
// bytes are sent, and sessions are closed and opened. Nothing may break, nobody may get another's answer, and
// the printer must have done what the calls report. It runs for a second, or as long as TELVOFM_RACE_SECONDS
// says.
#include "telvofm.h"
#include "tests/system/closing_time.h"
#include "tests/system/echoing_printer.h"
#include "tests/unit/own_folder.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <thread>
#include <vector>

namespace telvofm::test {
namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

// What came of the calls of some threads.
struct Outcomes
{
    std::atomic<long> done = 0;
    std::atomic<long> refused = 0; // 7
    std::atomic<long> damaged = 0; // 2
    std::atomic<long> notOpen = 0; // -1
    std::atomic<long> unknown = 0; // -10201: the session was closed meanwhile
    std::atomic<long> other = 0;

    void count(int result)
    {
        switch (result) {
        case 0:
            ++done;
            break;
        case 7:
            ++refused;
            break;
        case 2:
            ++damaged;
            break;
        case -1:
            ++notOpen;
            break;
        case -10201:
            ++unknown;
            break;
        default:
            std::printf("a call has returned %d\n", result);
            ++other;
        }
    }
    [[nodiscard]] long all() const { return done + refused + damaged + notOpen + unknown + other; }
};

class SixteenThreads : public ::testing::Test
{
protected:
    ~SixteenThreads() override
    {
        seRawLogginOff();
        setLogginOff();
    }

    void repeat(const std::function<void()>& call)
    {
        threads.emplace_back([this, call] {
            while (goesOn()) {
                call();
            }
        });
    }

    // Longer on a machine that has other things to do, until each kind of call has been answered.
    [[nodiscard]] bool goesOn() const
    {
        const auto now = Clock::now();
        const bool isAnswered = sales.done > 0 && refusedSales.refused > 0 && questions.done > 0;
        return now < end || (!isAnswered && now < end + patience);
    }

    // While a few more calls are made, but not for long: there may be no session.
    void waitForCalls() const
    {
        const long before = sales.all() + questions.all();
        const auto enough = Clock::now() + 100ms;
        while (sales.all() + questions.all() < before + 10 && Clock::now() < enough) {
            std::this_thread::yield();
        }
    }

    void sell(const char* name, Outcomes& outcomes)
    {
        repeat([=, &outcomes] { outcomes.count(itemSale(1, 0, name, 1.0, 'A', 1.0, 1.0, "ks")); });
    }

    void ask(const std::string& name)
    {
        repeat([=, this] {
            std::array<char, 64> text{};
            const int result = getVariable(1, name.c_str(), text.data(), static_cast<int>(text.size()));
            questions.count(result);
            anothers += result == 0 && name != text.data() ? 1 : 0;
        });
    }

    void askForObject(const std::string& name)
    {
        repeat([=, this] {
            ResultObject* const object = createResultObject();
            const int result = getVariableResultObject(1, name.c_str(), object);
            questions.count(result);
            anothers += result == 0 && name != getResultObjectString(object) ? 1 : 0;
            destroyResultObject(object);
        });
    }

    static Clock::duration raceTime()
    {
        const char* seconds = std::getenv("TELVOFM_RACE_SECONDS");
        return std::chrono::seconds(seconds == nullptr ? 1 : std::atoi(seconds));
    }

    static constexpr std::chrono::seconds patience{60};

    const OwnFolder folder;
    EchoingPrinter printer;
    Outcomes sales;
    Outcomes refusedSales;
    Outcomes questions;
    std::atomic<long> anothers = 0; // answers of other calls
    std::atomic<long> sessions = 0;
    Clock::time_point end = Clock::now() + raceTime();
    std::vector<std::thread> threads;
};

TEST_F(SixteenThreads, GetTheirOwnAnswersWhateverElseHappens)
{
    for (int seller = 0; seller < 4; ++seller) {
        sell("Chlieb", sales);
    }
    for (int seller = 0; seller < 3; ++seller) {
        sell("Mlieko", refusedSales);
    }
    for (const char* name : {"FIRST", "SECOND VARIABLE", "THIRD"}) {
        ask(name);
    }
    askForObject("AN OBJECT");
    askForObject("ANOTHER");
    repeat([this] {
        setLogginOn("/dev/null"); // it would grow for as long as this runs
        waitForCalls();
        setLogginOff();
        waitForCalls();
    });
    repeat([this] {
        setRawLogginOn(folder.file("raw.log").c_str()); // empties it
        waitForCalls();
        seRawLogginOff();
    });
    repeat([this] {
        const unsigned char noise = 0x55;
        rawWrite(&noise, 1);
        waitForCalls();
    });
    repeat([this] {
        sessions += openFM(printer.address().c_str()) == 0 ? 1 : 0;
        for (int calls = 0; calls < 5; ++calls) {
            waitForCalls();
        }
        closeFM();
    });
    EXPECT_EQ(threads.size(), 16U);
    for (auto& thread : threads) {
        thread.join();
    }
    EXPECT_LT(Clock::now() - end, patience + 2 * margin) << "a call was left behind";
    closeFM();

    std::printf("sales %ld, refused %ld, questions %ld, sessions %ld; unknown %ld, damaged %ld\n",
                sales.done.load(), refusedSales.refused.load(), questions.done.load(), sessions.load(),
                sales.unknown + refusedSales.unknown + questions.unknown,
                sales.damaged + refusedSales.damaged + questions.damaged);
    EXPECT_EQ(anothers, 0);
    EXPECT_EQ(sales.other + refusedSales.other + questions.other, 0);
    EXPECT_EQ(refusedSales.done, 0);
    EXPECT_EQ(sales.refused + questions.refused, 0);
    for (const auto& [reported, said, unknown] :
         {std::array{sales.done.load(), printer.accepted.load(), sales.unknown.load()},
          std::array{refusedSales.refused.load(), printer.refused.load(), refusedSales.unknown.load()},
          std::array{questions.done.load(), printer.replies.load(), questions.unknown.load()}}) {
        EXPECT_GT(reported, 0);
        EXPECT_LE(reported, said);
        EXPECT_LE(said, reported + unknown);
    }
    ASSERT_EQ(openFM(printer.address().c_str()), 0);
    EXPECT_EQ(printJobCancel(1), 0);
    closeFM();
}

} // namespace
} // namespace telvofm::test
