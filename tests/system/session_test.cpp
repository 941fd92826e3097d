// The session over a real connection: opening, failing to open, opening twice, raw access.
#include "telvofm.h"
#include "tests/system/printer_thread.h"
#include "tests/unit/own_folder.h"

#include <gtest/gtest.h>

#include <array>
#include <future>

namespace telvofm::test {
namespace {

class SessionTest : public ::testing::Test
{
protected:
    void SetUp() override { setLogginOff(); }
    // For a test that fails on its way; the others close before their printer ends.
    void TearDown() override { closeFM(); }

    [[nodiscard]] std::string refusingAddress() const
    {
        return "127.0.0.1:" + std::to_string(refusing.port());
    }

    static bool isSilentAndNotClosed(const wire::Connection& connection)
    {
        return connection.receive(1, std::chrono::milliseconds(100)) == std::string();
    }

private:
    wire::Listener refusing{false};
};

TEST_F(SessionTest, RunsFromOpenToClose)
{
    PrinterThread printer(acceptAll);
    EXPECT_EQ(printJobCancel(1), -1);
    EXPECT_EQ(openFM(printer.address().c_str()), 0);
    EXPECT_EQ(getVersion(), 106);
    EXPECT_EQ(printJobCancel(1), 0);
    closeFM();
    EXPECT_EQ(printJobCancel(1), -1);
    closeFM();
    EXPECT_EQ(openFM(printer.address().c_str()), 0);
    EXPECT_EQ(printJobCancel(1), 0);
    closeFM();
}

TEST_F(SessionTest, ARefusedPortIsMinusOneAndLeavesALinkThatFails)
{
    EXPECT_EQ(openFM(refusingAddress().c_str()), -1);
    EXPECT_EQ(printJobCancel(1), -10201);
    std::array<unsigned char, 1> byte{};
    EXPECT_EQ(rawWrite(byte.data(), 1), -1);
    EXPECT_EQ(rawRead(byte.data(), 1, &byte), -1);
    closeFM();
    EXPECT_EQ(printJobCancel(1), -1);
}

TEST_F(SessionTest, AHostThatDoesNotResolveIsMinusOne)
{
    // No name server is asked for a label of more than 63 characters.
    EXPECT_EQ(openFM((std::string(300, 'x') + ":9100").c_str()), -1);
    EXPECT_EQ(printJobCancel(1), -10201);
}

TEST_F(SessionTest, APortThatIsNoneIsMinusOne)
{
    EXPECT_EQ(openFM("127.0.0.1:no-such-service"), -1);
}

TEST_F(SessionTest, AFailedOpenDoesNotHinderTheNext)
{
    PrinterThread printer(acceptAll);
    EXPECT_EQ(openFM(refusingAddress().c_str()), -1);
    EXPECT_EQ(openFM(printer.address().c_str()), 0);
    EXPECT_EQ(printJobCancel(1), 0);
    closeFM();
}

TEST_F(SessionTest, LowerCaseIsAHostAndUpperCaseAPort)
{
    const auto printedBy = [](const char* name) {
        ::testing::internal::CaptureStdout();
        openFM(name);
        closeFM();
        std::string printed = ::testing::internal::GetCapturedStdout();
        std::erase(printed, '\r');
        return printed;
    };
    EXPECT_EQ(printedBy("com3:no-such-service"), "host: com3 port: no-such-service\n");
    EXPECT_EQ(printedBy("xCOM3:no-such-service"), "host: xCOM3 port: no-such-service\n");
    EXPECT_EQ(printedBy("COMX:no-such-service"), "");
    EXPECT_EQ(printedBy("\\\\.\\COM:no-such-service"), "");
}

// The first connection stays open and out of reach.
TEST_F(SessionTest, ASecondOpenLeavesTheFirstConnectionOpen)
{
    wire::Listener first;
    PrinterThread second(acceptAll);
    const std::string firstAddress = "127.0.0.1:" + std::to_string(first.port());
    ASSERT_EQ(openFM(firstAddress.c_str()), 0);
    wire::Connection connection = first.accept(std::chrono::seconds(5));
    ASSERT_TRUE(connection.isOpen());

    ASSERT_EQ(openFM(second.address().c_str()), 0);
    EXPECT_EQ(printJobCancel(1), 0);
    closeFM();
    EXPECT_TRUE(isSilentAndNotClosed(connection));
    EXPECT_EQ(printJobCancel(1), -1);
}

TEST_F(SessionTest, IsOpenedAsOftenAsTheHostLikesWithoutAClosing)
{
    const wire::Listener listener;
    const std::string address = "127.0.0.1:" + std::to_string(listener.port());
    for (int count = 0; count < 8; ++count) {
        EXPECT_EQ(openFM(address.c_str()), 0) << count;
    }
}

// A serial open closes no TCP session, neither the current one nor a replaced one, whatever comes of it.
TEST_F(SessionTest, AMistypedSerialNameLeavesTcpConnectionsOpen)
{
    for (const char* const name : {"COMX", "COM0", "COM", "COM-no-such", R"(\\.\COM)"}) {
        wire::Listener listener;
        const std::string address = "127.0.0.1:" + std::to_string(listener.port());
        ASSERT_EQ(openFM(address.c_str()), 0);
        const wire::Connection replaced = listener.accept(std::chrono::seconds(5));
        ASSERT_EQ(openFM(address.c_str()), 0);
        const wire::Connection current = listener.accept(std::chrono::seconds(5));

        EXPECT_EQ(openFM(name), -1);
        EXPECT_EQ(openFMBaud(name, 115200), -1);
        EXPECT_EQ(openFMStopBit(name, 2), -1);
        EXPECT_TRUE(isSilentAndNotClosed(replaced)) << name;
        EXPECT_TRUE(isSilentAndNotClosed(current)) << name;
        closeFM();
    }
}

TEST_F(SessionTest, RawBytesTravelAsTheyAre)
{
    std::promise<std::string> received;
    PrinterThread printer([&](wire::Connection& connection) {
        received.set_value(receiveBytes(connection, 4));
        connection.send("xyz");
        receiveUntilClosed(connection);
    });
    ASSERT_EQ(openFM(printer.address().c_str()), 0);
    const std::array<unsigned char, 4> sent{0x1C, 0x00, 0x11, 0xFF};
    EXPECT_EQ(rawWrite(sent.data(), 4), 4);
    EXPECT_EQ(received.get_future().get(), std::string("\x1C\0\x11\xFF", 4));

    std::array<unsigned char, 3> buffer{};
    EXPECT_EQ(rawRead(buffer.data(), 3, nullptr), 0);
    EXPECT_EQ(rawRead(nullptr, 3, buffer.data()), -1);
    EXPECT_EQ(rawRead(buffer.data(), 3, buffer.data()), 3);
    EXPECT_EQ(buffer, (std::array<unsigned char, 3>{'x', 'y', 'z'}));
    EXPECT_EQ(rawWrite(nullptr, 1), -1);
    EXPECT_EQ(rawWrite(sent.data(), -1), -1);
    closeFM();
}

TEST_F(SessionTest, UnspecifiedDataGetsItsChecksumByteAndItsCode)
{
    std::promise<std::string> received;
    PrinterThread printer([&](wire::Connection& connection) {
        received.set_value(receiveBytes(connection, 5));
        connection.send("\x15\x09");
        receiveUntilClosed(connection);
    });
    ASSERT_EQ(openFM(printer.address().c_str()), 0);
    EXPECT_EQ(sendUnspecifiedData("\x1C\x01\xE0\x04"), 9);
    EXPECT_EQ(received.get_future().get(), "\x1C\x01\xE0\x04\xF9");
    closeFM();
}

TEST_F(SessionTest, LogSettingsSurviveTheSession)
{
    const OwnFolder folder;
    PrinterThread printer(acceptAll);
    setLogginOn(folder.file("calls.txt").c_str());
    openFM(printer.address().c_str());
    closeFM();
    closeFM();
    std::string content = contentOf(folder.file("calls.txt"));
    std::erase(content, '\r');
    EXPECT_EQ(content, "openFM port name " + printer.address() + "\ncloseFM \ncloseFM \n");
}

} // namespace
} // namespace telvofm::test
