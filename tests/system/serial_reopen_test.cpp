// Serial ports that can be opened once at a time: an open lets go whatever session holds the port.
#include "tests/system/closing_time.h"
#include "tests/system/exclusive_terminals.h"
#include "tests/system/serial_link_fixture.h"

#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <unistd.h>

namespace telvofm::test {
namespace {

using namespace std::chrono_literals;

class SerialReopen : public SerialLinkTest
{
protected:
    static bool isHeld(const SerialPrinter& port)
    {
        const int opened = ::open(port.terminal().c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
        if (opened != -1) {
            ::close(opened);
        }
        return opened == -1 && errno == EBUSY;
    }

    [[nodiscard]] std::string otherForm() const { return R"(\\.\)" + printer.name(); }
};

TEST_F(SerialReopen, ThePortRefusesASecondHandle)
{
    EXPECT_TRUE(isHeld(printer));
    closeFM();
    EXPECT_FALSE(isHeld(printer));
}

TEST_F(SerialReopen, WithoutAClosing)
{
    EXPECT_EQ(openFM(printer.name().c_str()), 0);
    EXPECT_EQ(openFM(printer.name().c_str()), 0);
    expectThatTheNextCallWorks();
    closeFM();
    EXPECT_FALSE(isHeld(printer));
    EXPECT_EQ(openFM(printer.name().c_str()), 0);
    expectThatTheNextCallWorks();
}

TEST_F(SerialReopen, AfterACallThatFailed)
{
    failTheNextPurge();
    EXPECT_EQ(printJobCancel(1), -10201);
    EXPECT_EQ(openFM(printer.name().c_str()), 0);
    expectThatTheNextCallWorks();
}

TEST_F(SerialReopen, AfterAnOpenThatFailed)
{
    failTheNextPurge();
    EXPECT_EQ(openFM(printer.name().c_str()), -1);
    EXPECT_FALSE(isHeld(printer));
    EXPECT_EQ(openFM(printer.name().c_str()), 0);
    expectThatTheNextCallWorks();
}

TEST_F(SerialReopen, UnderEachFormOfItsName)
{
    EXPECT_EQ(openFM(otherForm().c_str()), 0);
    EXPECT_EQ(openFM(printer.name().c_str()), 0);
    expectThatTheNextCallWorks();
}

TEST_F(SerialReopen, ThroughASymbolicLink)
{
    const std::string link = folder.file("printer");
    std::filesystem::create_symlink(printer.terminal(), link);
    EXPECT_EQ(openFM(("COM" + link).c_str()), 0);
    expectThatTheNextCallWorks();
    EXPECT_EQ(openFM(printer.name().c_str()), 0);
    expectThatTheNextCallWorks();
}

TEST_F(SerialReopen, WithEveryOpenExport)
{
    EXPECT_EQ(openFMBaud(printer.name().c_str(), 115200), 0);
    EXPECT_EQ(openFMStopBit(printer.name().c_str(), 2), 0);
    EXPECT_EQ(openFMBaud(otherForm().c_str(), 57600), 0);
    EXPECT_EQ(openFMBaud("COM1", 9600), 0) << "the link that is held";
    EXPECT_EQ(openFM(printer.name().c_str()), 0);
    expectThatTheNextCallWorks();
}

// The session that holds the port is neither the current one nor the one that was replaced last.
TEST_F(SerialReopen, WhenAReplacedSessionHoldsIt)
{
    SerialPrinter second(folder.file("second lines"));
    wire::Listener third; // its queue takes the connection, which stays open
    ASSERT_EQ(openFM(second.name().c_str()), 0);
    ASSERT_EQ(openFM(("127.0.0.1:" + std::to_string(third.port())).c_str()), 0);
    EXPECT_TRUE(isHeld(printer)) << "another port leaves it open";
    EXPECT_EQ(openFM(printer.name().c_str()), 0);
    EXPECT_TRUE(isHeld(second)) << "another port leaves it open";
    closeFM();
    EXPECT_FALSE(isHeld(printer));
    EXPECT_EQ(openFM(second.name().c_str()), 0);
}

TEST_F(SerialReopen, LeavesTcpSessionsOpen)
{
    wire::Listener listener;
    const std::string address = "127.0.0.1:" + std::to_string(listener.port());
    ASSERT_EQ(openFM(address.c_str()), 0);
    const wire::Connection replaced = listener.accept(5s);
    ASSERT_EQ(openFM(address.c_str()), 0);
    const wire::Connection current = listener.accept(5s);

    EXPECT_EQ(openFM(printer.name().c_str()), 0);
    EXPECT_EQ(replaced.receive(1, 100ms), std::string()) << "silent, not closed";
    EXPECT_EQ(current.receive(1, 100ms), std::string()) << "silent, not closed";
    expectThatTheNextCallWorks();
}

TEST_F(SerialReopen, AfterAClosingWithAReplacedSession)
{
    PrinterThread another(acceptAll);
    ASSERT_EQ(openFM(another.address().c_str()), 0);
    closeFM();
    EXPECT_TRUE(isHeld(printer)) << "out of reach of the closing";
    EXPECT_EQ(openFM(printer.name().c_str()), 0);
    expectThatTheNextCallWorks();
}

// The closing waits for the answer of a running call, and nobody can find its session any more.
TEST_F(SerialReopen, WaitsForTheClosingOfAnotherThread)
{
    auto call = std::async(std::launch::async, printJobCancel, 1);
    receiveRequest(printer.line());
    auto closing = std::async(std::launch::async, closeFM);
    EXPECT_EQ(closing.wait_for(300ms), std::future_status::timeout);
    auto opening = std::async(std::launch::async, [this] { return openFM(printer.name().c_str()); });
    EXPECT_EQ(opening.wait_for(300ms), std::future_status::timeout);
    printer.line().send("\x06");
    EXPECT_EQ(call.get(), 0);
    EXPECT_EQ(opening.get(), 0);
    closing.get();
    expectThatTheNextCallWorks();
}

// Another port's closing is none of its business.
TEST_F(SerialReopen, DoesNotWaitForTheClosingOfAnotherPort)
{
    SerialPrinter second(folder.file("second lines"));
    auto call = std::async(std::launch::async, printJobCancel, 1);
    receiveRequest(printer.line());
    auto closing = std::async(std::launch::async, closeFM);
    EXPECT_EQ(closing.wait_for(300ms), std::future_status::timeout);
    EXPECT_EQ(openFM(second.name().c_str()), 0);
    EXPECT_EQ(closing.wait_for(0ms), std::future_status::timeout);
    printer.line().send("\x06");
    EXPECT_EQ(call.get(), 0);
}

TEST_F(SerialReopen, EndsACallThatWaitsOnTheOldSession)
{
    printer.setLines(true, false);
    auto call = std::async(std::launch::async, printJobCancel, 1);
    EXPECT_EQ(call.wait_for(300ms), std::future_status::timeout);
    const auto started = std::chrono::steady_clock::now();
    EXPECT_EQ(openFM(printer.name().c_str()), 0);
    EXPECT_LT(std::chrono::steady_clock::now() - started, margin);
    EXPECT_EQ(call.get(), -10103);
    printer.setLines(true, true);
    expectThatTheNextCallWorks();
}

// Which nobody can find any more but the call itself.
TEST_F(SerialReopen, EndsACallThatWaitsOnASessionThatWasReplaced)
{
    printer.setLines(true, false);
    auto call = std::async(std::launch::async, printJobCancel, 1);
    EXPECT_EQ(call.wait_for(300ms), std::future_status::timeout);
    wire::Listener another; // its queue takes the connection
    ASSERT_EQ(openFM(("127.0.0.1:" + std::to_string(another.port())).c_str()), 0);
    EXPECT_EQ(openFM(printer.name().c_str()), 0);
    EXPECT_EQ(call.get(), -10103);
    printer.setLines(true, true);
    expectThatTheNextCallWorks();
}

} // namespace
} // namespace telvofm::test
