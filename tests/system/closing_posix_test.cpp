// Links that are held, lost and opened again, as the other end and the system see it.
#include "telvofm.h"
#include "tests/system/closing_time.h"
#include "tests/system/printer_thread.h"

#include <gtest/gtest.h>

#include <ctime>
#include <filesystem>
#include <future>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>
#include <vector>

namespace telvofm::test {
namespace {

using namespace std::chrono_literals;

constexpr int rounds = 1000;

std::ptrdiff_t openDescriptors()
{
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
}

// A port of the loopback address with one listening socket on it; it stays taken when that one closes, so
// that no other process can answer in its place.
class Port
{
public:
    Port() : holder(bound(0)), listener(bound(ownPort()))
    {
        constexpr int backlog = 0;
        EXPECT_EQ(::listen(listener, backlog), 0);
    }
    Port(const Port&) = delete;
    Port& operator=(const Port&) = delete;
    ~Port()
    {
        refuseFromNowOn();
        ::close(holder);
    }

    [[nodiscard]] std::string address() const { return "127.0.0.1:" + std::to_string(ownPort()); }
    [[nodiscard]] wire::Connection accept() const
    {
        return wire::Connection(::accept4(listener, nullptr, nullptr, SOCK_CLOEXEC));
    }
    void refuseFromNowOn() { ::close(std::exchange(listener, -1)); }

    // A connection that nobody accepts: it takes the place of others.
    [[nodiscard]] wire::Connection connectInVain() const
    {
        const sockaddr_in target = loopback(ownPort());
        const int waiting = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
        static_cast<void>(::connect(waiting, reinterpret_cast<const sockaddr*>(&target), sizeof target));
        return wire::Connection(waiting);
    }

private:
    static sockaddr_in loopback(std::uint16_t port)
    {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(port);
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        return address;
    }
    static int bound(std::uint16_t port)
    {
        const int made = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
        const int on = 1;
        ::setsockopt(made, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
        const sockaddr_in address = loopback(port);
        EXPECT_EQ(::bind(made, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
        return made;
    }
    [[nodiscard]] std::uint16_t ownPort() const
    {
        sockaddr_in address{};
        socklen_t size = sizeof address;
        ::getsockname(holder, reinterpret_cast<sockaddr*>(&address), &size);
        return ntohs(address.sin_port);
    }

    int holder;
    int listener;
};

class HeldLink : public ::testing::Test
{
protected:
    void SetUp() override { setLogginOff(); }
    void TearDown() override { closeFM(); }

    // A link is opened, its printer accepts no other connection, and the link is opened again.
    static void loseTheLink()
    {
        Port port;
        ASSERT_EQ(openFM(port.address().c_str()), 0);
        const wire::Connection first = port.accept();
        port.refuseFromNowOn();
        ASSERT_EQ(openFMBaud("COM1", 9600), -1);
        ASSERT_EQ(first.receive(1, 5s), std::nullopt) << "the first connection is still open";
        ASSERT_EQ(printJobCancel(1), -10201);
    }
};

TEST_F(HeldLink, ThatCannotBeOpenedAgainIsClosed)
{
    loseTheLink();
    EXPECT_EQ(sendUnspecifiedData("\x1C\x01\xE0\x04"), -10201);
    unsigned char byte = 0;
    EXPECT_EQ(rawWrite(&byte, 1), -1);
    EXPECT_EQ(rawRead(&byte, 1, &byte), -1);
    EXPECT_LT(closingTime(), margin);
    EXPECT_EQ(printJobCancel(1), -1);
}

TEST_F(HeldLink, KeepsNoDescriptorWhenItCannotBeOpenedAgain)
{
    ::testing::internal::CaptureStdout();
    loseTheLink();
    closeFM();
    const auto before = openDescriptors();
    for (int round = 0; round < rounds && !HasFatalFailure(); ++round) {
        loseTheLink();
        closeFM();
    }
    EXPECT_EQ(openDescriptors(), before);
    ::testing::internal::GetCapturedStdout();
}

TEST_F(HeldLink, KeepsNoDescriptorAfterManySessions)
{
    ::testing::internal::CaptureStdout();
    Port port;
    const auto before = openDescriptors();
    for (int round = 0; round < rounds; ++round) {
        ASSERT_EQ(openFM(port.address().c_str()), 0);
        const wire::Connection connection = port.accept();
        ASSERT_EQ(openFMBaud("COM1", 9600), 0) << "opened again where it was open";
        const wire::Connection again = port.accept();
        closeFM();
    }
    EXPECT_EQ(openDescriptors(), before);
    ::testing::internal::GetCapturedStdout();
}

// The queue of the port is full: the system goes on asking for minutes.
TEST_F(HeldLink, ThatIsStillConnectingIsClosedWithinAStep)
{
    constexpr auto step = 3s;
    const Port port;
    constexpr int places = 4;
    std::vector<wire::Connection> queue;
    queue.reserve(places);
    for (int waiting = 0; waiting < places; ++waiting) {
        queue.push_back(port.connectInVain());
    }
    const std::string address = port.address();
    auto opening = std::async(std::launch::async, [&] { return openFM(address.c_str()); });
    ASSERT_EQ(opening.wait_for(500ms), std::future_status::timeout) << "the queue of the port is not full";
    EXPECT_LT(closingTime(), step + margin);
    EXPECT_EQ(opening.wait_for(step + margin), std::future_status::ready);
    EXPECT_EQ(opening.get(), -1);
}

// What the threads of this process have used of the processors.
std::chrono::nanoseconds processorTime()
{
    timespec used{};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &used);
    return std::chrono::seconds(used.tv_sec) + std::chrono::nanoseconds(used.tv_nsec);
}

TEST(WaitingForOnesTurn, TakesNoProcessor)
{
    constexpr auto wait = 500ms;
    setLogginOff();
    std::promise<void> isAsked;
    PrinterThread printer([&](wire::Connection& connection) {
        receiveRequest(connection);
        isAsked.set_value();
        receiveUntilClosed(connection);
    });
    ASSERT_EQ(openFM(printer.address().c_str()), 0);
    const auto first = std::async(std::launch::async, printJobCancel, 1);
    isAsked.get_future().wait();
    const auto before = processorTime();
    const auto second = std::async(std::launch::async, printJobCancel, 1);
    EXPECT_EQ(second.wait_for(wait), std::future_status::timeout);
    EXPECT_LT(processorTime() - before, wait / 10);
    closeFM();
}

} // namespace
} // namespace telvofm::test
