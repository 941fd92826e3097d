// Raw access, commands, time-outs, openings and closings beside each other, with a printer that never stops
// talking: nothing may break. Which call gets which byte is open, and so are their codes. It runs for two
// seconds, or as long as TELVOFM_RACE_SECONDS says.
#include "telvofm.h"
#include "tests/system/closing_time.h"
#include "tests/system/serial_printer.h"
#include "tests/unit/bytes.h"
#include "tests/unit/own_folder.h"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <vector>

namespace telvofm::test {
namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

Clock::duration raceTime()
{
    const char* seconds = std::getenv("TELVOFM_RACE_SECONDS");
    return std::chrono::seconds(seconds == nullptr ? 2 : std::atoi(seconds));
}

std::string chatter()
{
    return "\x13\x06\x11" + block(std::string(200, 'x'), etb) + "\x13" + block("abc", etx) + "\x04";
}

class RawAccessRace : public ::testing::Test
{
protected:
    void SetUp() override { setLogginOff(); }
    void TearDown() override { closeFM(); }

    void run(const std::string& name)
    {
        const auto end = Clock::now() + raceTime();
        std::vector<std::thread> threads;
        std::array<std::atomic<long>, 6> rounds{};
        const auto repeat = [&](std::size_t which, const std::function<void()>& call) {
            threads.emplace_back([&, which, call] {
                while (Clock::now() < end) {
                    call();
                    ++rounds[which];
                }
            });
        };
        repeat(0, [] { printJobCancel(1); });
        repeat(1, [] {
            ResultObject* const journal = createResultObject();
            getJournal_ResultObject(1, journal);
            destroyResultObject(journal);
        });
        repeat(2, [] {
            std::array<unsigned char, 300> buffer{};
            rawRead(buffer.data(), 300, &buffer);
        });
        repeat(3, [] {
            const std::array<unsigned char, 5> bytes{0x1C, 0x01, 0xE0, 0x04, 0xF9};
            rawWrite(bytes.data(), 5);
        });
        repeat(4, [] { setTcpTimeout(7); });
        repeat(5, [&] {
            openFM(name.c_str());
            const long before = rounds[2];
            const auto enough = Clock::now() + 20ms;
            while (rounds[2] < before + 5 && Clock::now() < enough) {
                std::this_thread::yield();
            }
            closeFM();
        });
        for (auto& thread : threads) {
            thread.join();
        }
        EXPECT_LT(Clock::now() - end, 2 * margin + 15s) << "a call was left behind";
        std::printf("rounds of each thread:");
        for (const auto& count : rounds) {
            std::printf(" %ld", count.load());
            EXPECT_GT(count, 0);
        }
        std::printf("\n");
    }
};

TEST_F(RawAccessRace, OverTcp)
{
    {
        PrinterThread printer([](wire::Connection& connection) {
            const std::string bytes = chatter();
            while (connection.receive(4096, 0ms)) {
                connection.send(bytes);
            }
        });
        run(printer.address());
    }
    PrinterThread another(acceptAll);
    ASSERT_EQ(openFM(another.address().c_str()), 0);
    EXPECT_EQ(printJobCancel(1), 0);
    closeFM();
}

TEST_F(RawAccessRace, OnASerialLine)
{
    const OwnFolder folder;
    SerialPrinter printer{folder.file("lines")};
    {
        std::atomic<bool> isOver = false;
        const auto playing = printer.play([&](wire::Connection& line) {
            const std::string bytes = chatter();
            while (!isOver) {
                static_cast<void>(line.receive(4096, 0ms));
                line.send(bytes);
            }
        });
        run(printer.name());
        isOver = true;
        openFM(printer.name().c_str()); // takes what stands in the line, so that the printer gets to its end
    }
    ASSERT_EQ(openFM(printer.name().c_str()), 0);
    while (!printer.line().receive(4096, 0ms).value_or("").empty()) {
    }
    const auto playing = printer.play([](wire::Connection& line) {
        receiveRequest(line);
        line.send("\x06");
    });
    EXPECT_EQ(printJobCancel(1), 0);
}

} // namespace
} // namespace telvofm::test
