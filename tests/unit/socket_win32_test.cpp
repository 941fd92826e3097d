// The sockets of Windows, call by call, on scripted socket functions; and a driver on them, which leaves
// nothing behind however its opening ends.
#include "link/tcp_driver.h"
#include "tests/unit/winsock_scripted.h"

#include <gmock/gmock.h>

#include <climits>

namespace telvofm::test {
namespace {

using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using namespace std::chrono_literals;

// The families, the stream type and TCP have these numbers: AF_INET 2, AF_INET6 23, SOCK_STREAM 1,
// IPPROTO_TCP 6. The last 0 are no flags; those of a socket are WSA_FLAG_OVERLAPPED, which `socket` itself
// would set, and WSA_FLAG_NO_HANDLE_INHERIT, so that no child process ever inherits it.
const std::vector<std::string> opening = {"WSAStartup 2.2",
                                          "getaddrinfo printer 9100 0 1 6 0", // any family
                                          "freeaddrinfo", "WSASocketW 2 1 6 81",
                                          "connect 0 to 1 of 16 bytes"};

class SocketWin32 : public ::testing::Test
{
protected:
    template <typename Call>
    static std::int32_t codeOf(Call call)
    {
        try {
            call();
        } catch (const Telvo06FMException& failure) {
            return failure.code;
        }
        return 0;
    }
    std::int32_t codeOfOpening()
    {
        return codeOf([&] { driver.open(); });
    }

    ScriptedWinsock winsock;
    TcpDriver driver{"printer:9100"};
};

TEST_F(SocketWin32, IsOpenedAndClosedInThisOrder)
{
    driver.open();
    EXPECT_THAT(winsock.takeCalls(), ElementsAreArray(opening));
    driver.close();
    EXPECT_THAT(winsock.takeCalls(), ElementsAre("closesocket 0", "WSACleanup"));
    driver.close();
    EXPECT_THAT(winsock.calls, ElementsAre());
}

TEST_F(SocketWin32, EveryAddressIsTriedWithASocketOfItsOwnFamily)
{
    winsock.addresses = {{AF_INET6, false}, {AF_INET, false}, {AF_INET6, true}, {AF_INET, true}};
    driver.open();
    EXPECT_THAT(winsock.calls,
                ElementsAre("WSAStartup 2.2", "getaddrinfo printer 9100 0 1 6 0", "freeaddrinfo",
                            "WSASocketW 23 1 6 81", "connect 0 to 1 of 28 bytes", "closesocket 0",
                            "WSASocketW 2 1 6 81", "connect 1 to 2 of 16 bytes", "closesocket 1",
                            "WSASocketW 23 1 6 81", "connect 2 to 3 of 28 bytes"));
    driver.close();
    EXPECT_EQ(winsock.calls.back(), "WSACleanup");
}

TEST_F(SocketWin32, EveryStepThatFailsEndsTheOpeningAndLeavesNothingBehind)
{
    for (const auto& [failing, expected] : std::vector<std::pair<std::string, std::vector<std::string>>>{
             {"WSAStartup", {opening[0]}},
             {"getaddrinfo", {opening[0], opening[1], "WSACleanup"}},
             {"WSASocketW", {opening[0], opening[1], opening[2], opening[3], "WSACleanup"}},
         }) {
        winsock.takeCalls();
        winsock.fail(failing);
        EXPECT_EQ(codeOfOpening(), -10201) << failing;
        EXPECT_THAT(winsock.calls, ElementsAreArray(expected));
    }
    winsock.addresses = {{AF_INET, false}};
    EXPECT_EQ(codeOfOpening(), -10201);
    EXPECT_TRUE(winsock.openSockets.empty());
}

// SD_BOTH, so that no other operation begins, and then the end of those that have begun: a send that waits
// for room lets a shutdown wait.
TEST_F(SocketWin32, IsCutInBothDirectionsAndUnderBlockedCallsAndStaysOpen)
{
    driver.open();
    winsock.takeCalls();
    driver.cut();
    EXPECT_THAT(winsock.takeCalls(), ElementsAre("shutdown 0 2", "CancelIoEx 0 all"));
    driver.close();
    EXPECT_THAT(winsock.takeCalls(), ElementsAre("closesocket 0", "WSACleanup"));
}

// The number of no socket stands for the whole process elsewhere.
TEST_F(SocketWin32, IsCutWithoutACallWhenThereIsNone)
{
    driver.cut();
    EXPECT_THAT(winsock.calls, ElementsAre());
}

class OpenSocketWin32 : public SocketWin32
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(Socket::startUp());
        const auto addresses = Socket::resolve("printer", "9100");
        ASSERT_TRUE(addresses && addresses->size() == 1 && socket.create(addresses->front()) &&
                    socket.connect(addresses->front()));
        winsock.takeCalls();
    }
    void TearDown() override
    {
        socket.close();
        socket.close(); // does nothing
        Socket::cleanUp();
    }

    Socket socket;
};

TEST_F(OpenSocketWin32, ANameThatDoesNotResolveHasNoAddresses)
{
    winsock.fail("getaddrinfo");
    EXPECT_FALSE(Socket::resolve("printer", "9100").has_value());
    EXPECT_THAT(winsock.calls, ElementsAre("getaddrinfo printer 9100 0 1 6 0"));
}

TEST_F(OpenSocketWin32, SendsAllBytesOnceAndWithoutFlags)
{
    EXPECT_TRUE(socket.send("abc"));
    EXPECT_THAT(winsock.takeCalls(), ElementsAre("send 0 abc 0"));
    winsock.fail("send");
    EXPECT_FALSE(socket.send("abc"));
}

// The rest of a send that took only a part is not sent: this is meant.
TEST_F(OpenSocketWin32, APartialSendIsNotRepeated)
{
    winsock.takenBySend = 2;
    EXPECT_TRUE(socket.send("abc"));
    EXPECT_THAT(winsock.calls, ElementsAre("send 0 abc 0"));
}

// The platform's length is an int. Nothing of the bytes is looked at here, so that one can stand for all.
TEST_F(OpenSocketWin32, MoreBytesThanThePlatformCanCountAreNotSentAtAll)
{
    constexpr std::size_t most = INT_MAX;
    const char byte = 0;
    EXPECT_TRUE(socket.send({&byte, most}));
    EXPECT_THAT(winsock.takeCalls(), ElementsAre("send 0 2147483647 bytes 0"));
    for (const std::size_t tooMany : {most + 1, 2 * most, 2 * most + 2, 2 * most + 3}) {
        EXPECT_FALSE(socket.send({&byte, tooMany})) << tooMany;
    }
    EXPECT_THAT(winsock.calls, ElementsAre());
}

TEST_F(SocketWin32, MoreBytesThanThePlatformCanCountAreAFailureOfTheDriver)
{
    driver.open();
    winsock.takeCalls();
    const char byte = 0;
    EXPECT_EQ(codeOf([&] { driver.writeRaw({&byte, std::size_t{INT_MAX} + 1}); }), -10201);
    EXPECT_THAT(winsock.calls, ElementsAre());
    driver.close();
}

TEST_F(OpenSocketWin32, WaitsInSecondsAndMicroseconds)
{
    EXPECT_EQ(socket.waitReadable(3s), Socket::Wait::silent);
    EXPECT_EQ(socket.waitReadable(1250ms), Socket::Wait::silent);
    EXPECT_EQ(socket.waitReadable(999ms), Socket::Wait::silent);
    EXPECT_EQ(socket.waitReadable(0ms), Socket::Wait::silent);
    EXPECT_THAT(winsock.calls, ElementsAre("select 0 3 s 0 us", "select 0 1 s 250000 us",
                                           "select 0 0 s 999000 us", "select 0 0 s 0 us"));
    winsock.arriving = {"a"};
    EXPECT_EQ(socket.waitReadable(3s), Socket::Wait::readable);
    winsock.fail("select");
    EXPECT_EQ(socket.waitReadable(3s), Socket::Wait::failed);
}

TEST_F(OpenSocketWin32, ReceivesUpToTheSizeOfTheBuffer)
{
    std::array<char, 4> buffer{};
    winsock.arriving = {"abcdef", ""};
    EXPECT_EQ(socket.receive(buffer), 4);
    EXPECT_EQ(std::string(buffer.data(), 4), "abcd");
    EXPECT_EQ(socket.receive(buffer), 2);
    EXPECT_EQ(std::string(buffer.data(), 2), "ef");
    EXPECT_EQ(socket.receive(buffer), 0) << "the peer has closed";
    winsock.fail("recv");
    EXPECT_LT(socket.receive(buffer), 0);
    EXPECT_THAT(winsock.calls, ElementsAre("recv 0 4 0", "recv 0 4 0", "recv 0 4 0", "recv 0 4 0"));
}

} // namespace
} // namespace telvofm::test
