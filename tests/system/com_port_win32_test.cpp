// A COM port of Wine's: what the library sets, as the other end of the pseudo-terminal behind the port sees
// it, and what remains when it is closed. tests/wire/serial_under_wine.sh starts this program and leads the
// line to it.
#include "telvofm.h"
#include "tests/system/open_handles_win32.h"
#include "tests/system/printer_thread.h"
#include "tests/wire/modem_lines.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <future>

namespace telvofm::test {
namespace {

using namespace std::chrono_literals;

// The printer's end of the line, the port at this end, and the files of its modem lines and its settings.
wire::Connection line;
std::string port;
std::string modemLines;
std::string lineSettings;

std::string contentOf(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// The bridge notes the settings down before it carries a byte on to the printer.
std::string settingsSeenByThePrinter()
{
    EXPECT_EQ(line.receive(1, 30s), "x");
    return contentOf(lineSettings);
}

// A program that was here before had a use of its own for the port.
std::string leaveThePortAsAnotherProgramDoes()
{
    const HANDLE opened = ::CreateFileA((R"(\\.\)" + port).c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                                        OPEN_EXISTING, 0, nullptr);
    DCB settings{};
    settings.DCBlength = sizeof settings;
    EXPECT_TRUE(::GetCommState(opened, &settings));
    settings.BaudRate = 9600;
    settings.StopBits = TWOSTOPBITS;
    settings.fOutxCtsFlow = FALSE;
    settings.fRtsControl = RTS_CONTROL_DISABLE;
    settings.fDtrControl = DTR_CONTROL_DISABLE;
    settings.fOutX = TRUE;
    settings.fInX = TRUE;
    EXPECT_TRUE(::SetCommState(opened, &settings));
    DWORD written = 0;
    EXPECT_TRUE(::WriteFile(opened, "x", 1, &written, nullptr));
    const std::string seen = settingsSeenByThePrinter();
    ::CloseHandle(opened);
    return seen;
}

class ComPort : public ::testing::Test
{
protected:
    ComPort() { wire::resetModemLines(modemLines); }
    void TearDown() override { closeFM(); }

    // The settings that the open export comes to.
    template <typename Open>
    std::string settingsAfter(Open open)
    {
        EXPECT_EQ(leaveThePortAsAnotherProgramDoes(), "9600 baud 2 stop bits XON/XOFF");
        EXPECT_EQ(open(), 0);
        const unsigned char byte = 'x';
        EXPECT_EQ(rawWrite(&byte, 1), 1);
        std::string seen = settingsSeenByThePrinter();
        closeFM();
        return seen;
    }
};

TEST_F(ComPort, HasTheSettingsOfItsOpenExport)
{
    const char* name = port.c_str();
    EXPECT_EQ(settingsAfter([&] { return openFM(name); }), "57600 baud 1 stop bit RTS/CTS");
    EXPECT_EQ(settingsAfter([&] { return openFMBaud(name, 115200); }), "115200 baud 1 stop bit RTS/CTS");
    EXPECT_EQ(settingsAfter([&] { return openFMBaud(name, 57600); }), "57600 baud 1 stop bit RTS/CTS");
    EXPECT_EQ(settingsAfter([&] { return openFMStopBit(name, 1); }), "57600 baud 1 stop bit RTS/CTS");
    EXPECT_EQ(settingsAfter([&] { return openFMStopBit(name, 2); }), "57600 baud 2 stop bits RTS/CTS");
    EXPECT_EQ(settingsAfter([&] { return openFMStopBit(name, 0); }), "57600 baud 1 stop bit RTS/CTS");
    EXPECT_EQ(settingsAfter([&] { return openFMStopBit(name, 3); }), "57600 baud 1 stop bit RTS/CTS");
    EXPECT_EQ(settingsAfter([&] { return openFMStopBit(name, 4294967295U); }),
              "57600 baud 1 stop bit RTS/CTS");
}

TEST_F(ComPort, RaisesDataTerminalReady)
{
    leaveThePortAsAnotherProgramDoes();
    wire::resetModemLines(modemLines); // nothing driven
    ASSERT_EQ(openFM(port.c_str()), 0);
    const std::string lines = contentOf(modemLines);
    constexpr char dtrBit = 1;
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_NE(lines[1] & dtrBit, 0);
}

TEST_F(ComPort, HasNoMoreHandlesAfterAThousandSessions)
{
    const auto play = [](int count) {
        const auto playing = std::async(std::launch::async, [count] {
            for (int i = 0; i < count && receiveRequest(line); ++i) {
                line.send("\x06");
            }
        });
        for (int i = 0; i < count; ++i) {
            ASSERT_EQ(openFM(port.c_str()), 0);
            ASSERT_EQ(printJobCancel(1), 0);
            closeFM();
        }
    };
    play(1); // what the process opens once
    const int before = openHandles();
    play(1000);
    EXPECT_EQ(openHandles(), before);
}

// Wine lets a port be opened twice, and Windows does not: no second handle may be there.
TEST_F(ComPort, IsHeldOnceWhenItIsOpenedAgain)
{
    const std::string otherForm = R"(\\.\)" + port;
    ASSERT_EQ(openFM(port.c_str()), 0);
    const int before = openHandles();
    EXPECT_EQ(openFM(port.c_str()), 0);
    EXPECT_EQ(openFM(otherForm.c_str()), 0);
    EXPECT_EQ(openFMBaud(port.c_str(), 115200), 0);
    EXPECT_EQ(openHandles(), before);
}

} // namespace
} // namespace telvofm::test

// com_port_test --serial-name NAME --modem-lines FILE: prints "port N" and waits there for the bridge.
int main(int count, char** arguments)
{
    using namespace telvofm::test;
    ::testing::InitGoogleTest(&count, arguments);
    const char* settings = std::getenv("LINE_SETTINGS");
    if (count != 5 || settings == nullptr) {
        std::fputs("com_port_test: serial_under_wine.sh starts this program\n", stderr);
        return 2;
    }
    port = arguments[2];
    modemLines = arguments[4];
    lineSettings = settings;
    const wire::Listener listener;
    std::printf("port %d\n", listener.port());
    std::fflush(stdout);
    line = listener.accept(60s);
    const int outcome = line.isOpen() ? RUN_ALL_TESTS() : 1;
    line.close();
    return outcome;
}
