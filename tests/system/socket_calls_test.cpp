// The TCP driver's calls of the system: what is asked of the socket, and what becomes of calls that are cut
// short or interrupted.
#include "link/tcp_driver.h"
#include "link/telvo06fm_exception.h"
#include "tests/system/printer_thread.h"
#include "tests/system/system_calls.h"
#include "tests/unit/bytes.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <future>
#include <unistd.h>

namespace telvofm::test {
namespace {

using ::testing::ElementsAre;

const std::string request = bytes({0x1C, 0x01, 0xE0, 0x04});

class SocketCalls : public ::testing::Test
{
protected:
    // Opens a connection, has a command accepted and closes again; what the printer received.
    std::string exchange()
    {
        std::promise<std::string> received;
        PrinterThread printer([&](wire::Connection& connection) {
            std::string all = receiveBytes(connection, 1);
            connection.send("\x06");
            received.set_value(all += receiveUntilClosed(connection));
        });
        TcpDriver driver(printer.address());
        driver.open();
        EXPECT_EQ(driver.sendCommand(request), 0x06);
        driver.close();
        return received.get_future().get();
    }

    SystemCalls calls;
};

TEST_F(SocketCalls, NoOptionOfTheSocketIsChanged)
{
    EXPECT_EQ(exchange(), request + "\xF9");
    EXPECT_EQ(calls.socketOptionsSet, 0);
}

TEST_F(SocketCalls, ARequestAndItsChecksumByteAreOneSendEach)
{
    exchange();
    EXPECT_THAT(calls.sends, ElementsAre(4, 1));
}

TEST_F(SocketCalls, AnAnswerIsWaitedForInStepsOfThreeSeconds)
{
    exchange();
    EXPECT_THAT(calls.socketWaits, ElementsAre(3000));
}

// The rest of a request that the system takes in part is lost: this is meant.
TEST_F(SocketCalls, APartialSendIsNotRepeated)
{
    calls.mostBytesPerSend = 2;
    EXPECT_EQ(exchange(), request.substr(0, 2) + "\xF9");
    EXPECT_THAT(calls.sends, ElementsAre(4, 1));
}

TEST_F(SocketCalls, RawBytesCountAsWrittenWhenTheyAreSentInPart)
{
    std::promise<std::string> received;
    PrinterThread printer(
        [&](wire::Connection& connection) { received.set_value(receiveUntilClosed(connection)); });
    TcpDriver driver(printer.address());
    driver.open();
    calls.mostBytesPerSend = 3;
    EXPECT_EQ(driver.writeRaw("abcdef"), 6U);
    driver.close();
    EXPECT_EQ(received.get_future().get(), "abc");
}

// The system takes so many bytes of one call and cuts the rest. Nothing of the bytes is looked at here, so
// that one can stand for all.
TEST_F(SocketCalls, MoreBytesThanTheSystemTakesAtOnceAreNotSentAtAll)
{
    constexpr std::size_t most = 0x7FFFF000;
    PrinterThread printer([](wire::Connection& connection) { receiveUntilClosed(connection); });
    TcpDriver driver(printer.address());
    driver.open();
    calls.mostBytesPerSend = 1;
    const char byte = 'x';
    EXPECT_EQ(driver.writeRaw({&byte, most}), most);
    EXPECT_THAT(calls.sends, ElementsAre(most));
    EXPECT_THROW(driver.writeRaw({&byte, most + 1}), Telvo06FMException);
    EXPECT_THROW(driver.writeRaw({&byte, 2 * most + 2}), Telvo06FMException);
    EXPECT_THAT(calls.sends, ElementsAre(most));
    driver.close();
}

TEST_F(SocketCalls, AnInterruptedConnectIsWaitedFor)
{
    calls.connectsToInterrupt = 1;
    EXPECT_EQ(exchange(), request + "\xF9");
    EXPECT_EQ(calls.connectsToInterrupt, 0);
    EXPECT_THAT(calls.socketWaits, ElementsAre(::testing::Lt(0), 3000))
        << "as long as the system waits itself";
}

TEST_F(SocketCalls, AnInterruptedConnectThatIsRefusedThenFails)
{
    const auto address = [] {
        const wire::Listener listener;
        return "127.0.0.1:" + std::to_string(listener.port());
    }();
    calls.connectsToInterrupt = 1;
    TcpDriver driver(address);
    try {
        driver.open();
        FAIL() << "nobody listens there";
    } catch (const Telvo06FMException& failure) {
        EXPECT_EQ(failure.code, -10201);
    }
    EXPECT_EQ(calls.connectsToInterrupt, 0);
}

TEST_F(SocketCalls, InterruptedSendsAndReceivesAreRepeated)
{
    calls.sendsToInterrupt = 3;
    calls.receivesToInterrupt = 3;
    EXPECT_EQ(exchange(), request + "\xF9");
    EXPECT_EQ(calls.sendsToInterrupt, 0);
    EXPECT_EQ(calls.receivesToInterrupt, 0);
}

// What an exchange, or an opening, comes to when the system fails it.
template <typename Run>
std::int32_t codeOfFailure(Run run)
{
    try {
        run();
    } catch (const Telvo06FMException& failure) {
        return failure.code;
    }
    return 0;
}

TEST_F(SocketCalls, AnInterruptedConnectIsWaitedForThroughMoreSignals)
{
    calls.connectsToInterrupt = 1;
    calls.waitErrors = {EINTR, EINTR};
    EXPECT_EQ(exchange(), request + "\xF9");
    EXPECT_TRUE(calls.waitErrors.empty());
}

TEST_F(SocketCalls, AnInterruptedConnectWhoseWaitFailsIsAFailure)
{
    const wire::Listener listener;
    TcpDriver driver("127.0.0.1:" + std::to_string(listener.port()));
    calls.connectsToInterrupt = 1;
    calls.waitErrors = {ENOMEM};
    EXPECT_EQ(codeOfFailure([&] { driver.open(); }), -10201);
}

TEST_F(SocketCalls, AnInterruptedConnectWhoseOutcomeIsNotToldIsAFailure)
{
    const wire::Listener listener;
    TcpDriver driver("127.0.0.1:" + std::to_string(listener.port()));
    calls.connectsToInterrupt = 1;
    calls.socketQueriesToFail = 1;
    EXPECT_EQ(codeOfFailure([&] { driver.open(); }), -10201);
    EXPECT_EQ(calls.socketQueriesToFail, 0);
}

// As after an opening that has failed.
TEST_F(SocketCalls, ALinkThatIsNotOpenIsNotWaitedFor)
{
    TcpDriver driver("127.0.0.1:1");
    EXPECT_EQ(codeOfFailure([&] { driver.readByte(false, 0); }), -10201);
    EXPECT_EQ(codeOfFailure([&] { driver.readByte(true, 20000); }), -10201);
    EXPECT_THAT(calls.socketWaits, ::testing::IsEmpty());
}

TEST_F(SocketCalls, ASystemWithoutSocketsIsAFailureAndTheNextOpenWorks)
{
    const wire::Listener listener;
    TcpDriver driver("127.0.0.1:" + std::to_string(listener.port()));
    calls.socketsToRefuse = 1;
    EXPECT_EQ(codeOfFailure([&] { driver.open(); }), -10201);
    EXPECT_EQ(codeOfFailure([&] { driver.open(); }), 0);
    driver.close();
}

TEST_F(SocketCalls, ASocketThatTheSystemRefusesIsNone)
{
    const wire::Listener listener;
    const auto addresses = Socket::resolve("127.0.0.1", std::to_string(listener.port()));
    ASSERT_TRUE(addresses);
    Socket socket;
    calls.socketsToRefuse = 1;
    EXPECT_FALSE(socket.create(addresses->front()));
    EXPECT_TRUE(socket.create(addresses->front()));
    socket.close();
}

TEST_F(SocketCalls, AnInterruptedWaitForAnAnswerGoesOnAndOneThatFailsIsAFailure)
{
    PrinterThread printer([](wire::Connection& connection) { receiveUntilClosed(connection); });
    TcpDriver driver(printer.address());
    driver.open();
    calls.waitErrors = {EINTR, EINTR, ENOMEM};
    EXPECT_EQ(codeOfFailure([&] { driver.sendCommand(request); }), -10201);
    EXPECT_TRUE(calls.waitErrors.empty());
    driver.close();
}

TEST_F(SocketCalls, AnInterruptedWaitForAnAnswerGoesOnForTheRestOfItsTime)
{
    calls.waitErrors = {EINTR};
    const auto began = std::chrono::steady_clock::now();
    EXPECT_EQ(exchange(), request + "\xF9");
    const auto lasted =
        std::chrono::ceil<std::chrono::milliseconds>(std::chrono::steady_clock::now() - began);
    const auto leastLeft = 3000 - static_cast<int>(lasted.count());
    EXPECT_THAT(calls.socketWaits,
                ElementsAre(3000, ::testing::AllOf(::testing::Ge(leastLeft), ::testing::Le(3000))));
}

TEST_F(SocketCalls, AConnectionWorksBesideHundredsOfOpenFiles)
{
    std::array<int, 300> files;
    std::generate(files.begin(), files.end(), [] { return ::open("/dev/null", O_RDONLY | O_CLOEXEC); });
    EXPECT_GE(files.back(), 256) << "this machine allows too few open files";
    EXPECT_EQ(exchange(), request + "\xF9");
    std::for_each(files.begin(), files.end(), ::close);
}

// An error of a call before is none of one that succeeds.
TEST_F(SocketCalls, ASendThatSucceedsIsNotRepeated)
{
    PrinterThread printer([](wire::Connection& connection) { connection.close(); });
    TcpDriver driver(printer.address());
    driver.open();
    errno = EINTR;
    driver.writeRaw("a");
    EXPECT_THAT(calls.sends, ElementsAre(1));
}

TEST_F(SocketCalls, ASocketThatIsClosedTwiceLeavesTheFileAloneThatHasItsNumberThen)
{
    Socket socket;
    ASSERT_TRUE(socket.create(Socket::resolve("127.0.0.1", "1")->front()));
    socket.close();
    const int next = ::open("/dev/null", O_RDONLY | O_CLOEXEC); // takes the lowest number that is free
    socket.close();
    EXPECT_EQ(::fcntl(next, F_GETFD), FD_CLOEXEC);
    ::close(next);
}

TEST_F(SocketCalls, ASocketThatWasNeverMadeIsNotClosed)
{
    Socket socket;
    errno = 0;
    socket.close();
    EXPECT_EQ(errno, 0);
}

} // namespace
} // namespace telvofm::test
