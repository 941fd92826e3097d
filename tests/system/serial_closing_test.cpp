// Closing a serial link beside calls that wait for the printer's lines.
#include "tests/system/closing_time.h"
#include "tests/system/serial_link_fixture.h"

#include <ctime>
#include <filesystem>
#include <functional>
#include <initializer_list>
#include <pthread.h>
#include <thread>

namespace telvofm::test {
namespace {

using namespace std::chrono_literals;

constexpr int closedPort = -10103;

class SerialClosing : public SerialLinkTest
{
};

TEST_F(SerialClosing, BesideAPrinterThatIsOffIsDoneAtOnce)
{
    printer.setLines(true, false);
    auto call = std::async(std::launch::async, printJobCancel, 1);
    EXPECT_EQ(call.wait_for(300ms), std::future_status::timeout);
    EXPECT_LT(closingTime(), margin);
    EXPECT_EQ(call.get(), closedPort);
    EXPECT_EQ(receiveUntilClosed(printer.line()), "");
}

TEST_F(SerialClosing, BesideRawBytesForAPrinterThatIsOffIsDoneAtOnce)
{
    printer.setLines(true, false);
    auto writing = std::async(std::launch::async, [] {
        const unsigned char byte = 'x';
        return rawWrite(&byte, 1);
    });
    EXPECT_EQ(writing.wait_for(300ms), std::future_status::timeout);
    EXPECT_LT(closingTime(), margin);
    EXPECT_EQ(writing.get(), -1);
}

// The line takes tens of seconds for these megabytes; a real one would take minutes.
TEST_F(SerialClosing, BesideALongRequestIsDoneAfterAStep)
{
    const std::string text(4U << 20U, 'x');
    auto call = std::async(std::launch::async, [&] { return destroyParagon(1, 0, text.c_str()); });
    EXPECT_EQ(receiveBytes(printer.line(), 1), "\x1C");
    const auto reading = printer.play([](wire::Connection& line) {
        while (line.receive(4096, 10s)) {
            std::this_thread::sleep_for(20ms);
        }
    });

    EXPECT_LT(closingTime(), 3s + margin);
    EXPECT_EQ(call.get(), closedPort);
}

TEST_F(SerialClosing, BesideLongRawBytesIsDoneAtOnce)
{
    const std::string bytes(32U << 20U, 'x');
    auto writing = std::async(std::launch::async, [&] {
        const auto* start = reinterpret_cast<const unsigned char*>(bytes.data());
        return rawWrite(start, static_cast<std::int64_t>(bytes.size()));
    });
    EXPECT_EQ(receiveBytes(printer.line(), 1), "x");
    const auto reading = printer.play([](wire::Connection& line) { return receiveUntilClosed(line).size(); });

    EXPECT_LT(closingTime(), margin);
    EXPECT_EQ(writing.get(), -1);
}

TEST_F(SerialClosing, BesideStrayBytesWithoutEnd)
{
    const auto playing = printer.play([](wire::Connection& line) {
        receiveRequest(line);
        while (line.receive(64, 0ms)) {
            line.send("xxxx");
        }
    });
    auto call = std::async(std::launch::async, [] {
        ResultObject* const journal = createResultObject();
        const int result = getJournal_ResultObject(1, journal);
        destroyResultObject(journal);
        return result;
    });
    EXPECT_EQ(call.wait_for(300ms), std::future_status::timeout);
    EXPECT_LT(closingTime(), margin);
    EXPECT_EQ(call.get(), closedPort);
}

// The last thing that a log shows of a till that hangs is the call in which it does.
TEST_F(SerialClosing, ItsLineIsWrittenBeforeItWaitsAndSoAreThoseOfOpenings)
{
    struct WaitingCall
    {
        std::string line;
        std::function<void()> run;
    };
    const std::string port = printer.name();
    const char* const name = port.c_str();
    const std::string opening = "openFM port name " + port + "\n";
    for (const auto& [line, run] : std::initializer_list<WaitingCall>{
             {opening, [=] { openFM(name); }},
             {opening, [=] { openFMBaud(name, 115200); }},
             {opening, [=] { openFMBaud(name, 9600); }},
             {"openFMStopBit port name " + port + "stop bit 2\n", [=] { openFMStopBit(name, 2); }},
             {"closeFM \n", [] { closeFM(); }}}) {
        const std::string log = folder.file("calls.log");
        std::filesystem::remove(log);
        setLogginOff();
        auto running = std::async(std::launch::async, printJobCancel, 1);
        receiveRequest(printer.line());
        setLogginOn(log.c_str());
        auto waiting = std::async(std::launch::async, run);
        const auto end = std::chrono::steady_clock::now() + margin;
        while (contentOf(log) != line && std::chrono::steady_clock::now() < end) {
            std::this_thread::sleep_for(1ms);
        }
        EXPECT_EQ(contentOf(log), line);
        EXPECT_EQ(waiting.wait_for(0ms), std::future_status::timeout) << line;
        printer.line().send("\x06");
        EXPECT_EQ(running.get(), 0);
    }
}

// A printer may stay off over night.
TEST_F(SerialClosing, WaitingForAPrinterThatIsOffCostsLittleProcessorTime)
{
    printer.setLines(true, false);
    std::promise<clockid_t> clockOfCaller;
    auto call = std::async(std::launch::async, [&] {
        clockid_t clock{};
        ::pthread_getcpuclockid(::pthread_self(), &clock);
        clockOfCaller.set_value(clock);
        return printJobCancel(1);
    });
    const clockid_t clock = clockOfCaller.get_future().get();
    const auto used = [clock] {
        timespec time{};
        ::clock_gettime(clock, &time);
        return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
    };
    call.wait_for(100ms); // the looks without a pause, which are meant
    const auto before = used();
    call.wait_for(1s);
    EXPECT_LT(used() - before, 330ms);
    closeFM();
    EXPECT_EQ(call.get(), closedPort);
}

TEST_F(SerialClosing, ManySessionsKeepNoDescriptor)
{
    constexpr int rounds = 1000;
    const auto openDescriptors = [] {
        return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
    };
    const auto before = openDescriptors();
    for (int round = 0; round < rounds; ++round) {
        closeFM();
        ASSERT_EQ(openFM(printer.name().c_str()), 0);
        ASSERT_EQ(openFMBaud("COM1", 9600), 0) << "opened again while it was open";
    }
    EXPECT_EQ(openDescriptors(), before);
}

} // namespace
} // namespace telvofm::test
