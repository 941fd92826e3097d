// Opening serial links through the three open exports: names, rates, stop bits, and a driver opened again.
#include "tests/system/serial_link_fixture.h"
#include "tests/system/started_programs_posix.h"
#include "tests/unit/bytes.h"

#include <algorithm>
#include <array>
#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

namespace telvofm::test {
namespace {

using namespace std::chrono_literals;

class SerialSession : public ::testing::Test
{
protected:
    void SetUp() override { setLogginOff(); }
    void TearDown() override { closeFM(); }

    [[nodiscard]] termios settings() const
    {
        termios now{};
        const int terminal = ::open(printer.terminal().c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
        EXPECT_EQ(::tcgetattr(terminal, &now), 0);
        ::close(terminal);
        return now;
    }

    [[nodiscard]] bool hasTwoStopBitsWith(unsigned int argument) const
    {
        EXPECT_EQ(openFMStopBit(printer.name().c_str(), argument), 0);
        const termios line = settings();
        EXPECT_EQ(::cfgetospeed(&line), speed_t{B57600});
        closeFM();
        return (line.c_cflag & CSTOPB) != 0;
    }

    // What the printer gets of a text that both code pages write differently, through `line`.
    static std::string textReceived(wire::Connection& line)
    {
        auto request = std::async(std::launch::async, [&] {
            auto received = receiveRequest(line);
            line.send("\x06");
            return received.value_or("");
        });
        EXPECT_EQ(destroyParagon(1, 0, "\x8A"), 0);
        const std::string received = request.get();
        return received.size() == 8 ? received.substr(5, 1) : received;
    }

    OwnFolder folder;
    SerialPrinter printer{folder.file("lines")};
};

TEST_F(SerialSession, OpensWith57600Baud8BitsNoParityOneStopBitAndHardwareHandshake)
{
    ASSERT_EQ(openFM(printer.name().c_str()), 0);
    const termios line = settings();
    EXPECT_EQ(::cfgetospeed(&line), speed_t{B57600});
    EXPECT_EQ(::cfgetispeed(&line), speed_t{B57600});
    EXPECT_EQ(line.c_cflag & CSIZE, tcflag_t{CS8});
    EXPECT_EQ(line.c_cflag & (PARENB | CSTOPB), tcflag_t{0});
    EXPECT_NE(line.c_cflag & CRTSCTS, tcflag_t{0});
    EXPECT_NE(line.c_cflag & CLOCAL, tcflag_t{0});
    EXPECT_EQ(line.c_iflag & (IXON | IXOFF | IXANY | ICRNL | ISTRIP), tcflag_t{0});
    EXPECT_EQ(line.c_lflag & (ICANON | ECHO | ISIG), tcflag_t{0});
    EXPECT_EQ(line.c_oflag & OPOST, tcflag_t{0});
    EXPECT_EQ(line.c_cc[VEOL], 0x0A);
    EXPECT_EQ(line.c_cc[VEOF], 0x04);
}

TEST_F(SerialSession, ThePrintersOwnSpeedIsNotTheLinks)
{
    ASSERT_EQ(openFM(printer.name().c_str()), 0);
    const auto playing = printer.play([](wire::Connection& line) {
        receiveRequest(line);
        line.send("\x06");
    });
    EXPECT_EQ(setPRNBd(1, 115200), 0);
    const termios line = settings();
    EXPECT_EQ(::cfgetospeed(&line), speed_t{B57600});
    EXPECT_EQ(::cfgetispeed(&line), speed_t{B57600});
}

TEST_F(SerialSession, RaisesDataTerminalReady)
{
    EXPECT_FALSE(printer.dataTerminalReady());
    ASSERT_EQ(openFM(printer.name().c_str()), 0);
    EXPECT_TRUE(printer.dataTerminalReady());
}

TEST_F(SerialSession, TakesBothFormsOfTheNameAndBothRates)
{
    ASSERT_EQ(openFMBaud((R"(\\.\)" + printer.name()).c_str(), 115200), 0);
    const termios fast = settings();
    EXPECT_EQ(::cfgetospeed(&fast), speed_t{B115200});
    EXPECT_EQ(textReceived(printer.line()), "\xE6");
    closeFM();
    ASSERT_EQ(openFMBaud(printer.name().c_str(), 57600), 0);
    const termios usual = settings();
    EXPECT_EQ(::cfgetospeed(&usual), speed_t{B57600});
}

// There are no one and a half stop bits here: two take their place.
TEST_F(SerialSession, StopBitsAreOneUnlessTheArgumentIs2Or15)
{
    EXPECT_FALSE(hasTwoStopBitsWith(1));
    EXPECT_TRUE(hasTwoStopBitsWith(2));
    EXPECT_TRUE(hasTwoStopBitsWith(15));
    EXPECT_FALSE(hasTwoStopBitsWith(3));
    EXPECT_FALSE(hasTwoStopBitsWith(0));
    EXPECT_FALSE(hasTwoStopBitsWith(4294967295U));
}

TEST_F(SerialSession, AnotherRateOpensTheLinkAgainThatIsHeldWhateverTheName)
{
    ASSERT_EQ(openFMBaud(printer.name().c_str(), 115200), 0);
    EXPECT_EQ(openFMBaud("COM-no-such-port", 9600), 0);
    const termios line = settings();
    EXPECT_EQ(::cfgetospeed(&line), speed_t{B115200});
    EXPECT_EQ(textReceived(printer.line()), "\xE6");
    closeFM();
    EXPECT_EQ(printJobCancel(1), -1);
}

TEST_F(SerialSession, AnotherRateTurnsConversionOnForAHeldTcpLink)
{
    wire::Listener listener;
    ASSERT_EQ(openFM(("127.0.0.1:" + std::to_string(listener.port())).c_str()), 0);
    wire::Connection first = listener.accept(5s);
    EXPECT_EQ(textReceived(first), "\x8A");
    ASSERT_EQ(openFMBaud("COM1", 9600), 0);
    wire::Connection second = listener.accept(5s);
    ASSERT_TRUE(second.isOpen());
    EXPECT_EQ(textReceived(second), "\xE6");
}

TEST_F(SerialSession, AnotherRateFailsWhenTheHeldLinkCannotBeOpenedAgain)
{
    // Through a link of its own: a terminal that both ends have closed leaves its number to other programs.
    const std::string link = folder.file("port");
    ASSERT_EQ(::symlink(printer.terminal().c_str(), link.c_str()), 0);
    ASSERT_EQ(openFM(("COM" + link).c_str()), 0);
    ASSERT_EQ(::unlink(link.c_str()), 0);
    EXPECT_EQ(openFMBaud(printer.name().c_str(), 9600), -1);
    EXPECT_EQ(printJobCancel(1), -10103);
}

TEST_F(SerialSession, AMissingPortIsMinusOneAndLeavesASessionWhosePortIsNotOpen)
{
    EXPECT_EQ(openFM(("COM" + folder.file("missing")).c_str()), -1);
    EXPECT_EQ(printJobCancel(1), -10103);
    unsigned char byte = 0;
    EXPECT_EQ(rawWrite(&byte, 1), -1);
    EXPECT_EQ(rawRead(&byte, 1, &byte), -1);
    closeFM();
    EXPECT_EQ(printJobCancel(1), -1);
    ASSERT_EQ(openFM(printer.name().c_str()), 0);
    EXPECT_EQ(textReceived(printer.line()), "\xE6");
}

TEST_F(SerialSession, WorksBesideHundredsOfOpenFiles)
{
    std::array<int, 300> files;
    std::generate(files.begin(), files.end(), [] { return ::open("/dev/null", O_RDONLY | O_CLOEXEC); });
    EXPECT_GE(files.back(), 256) << "this machine allows too few open files";
    ASSERT_EQ(openFM(printer.name().c_str()), 0);
    EXPECT_EQ(textReceived(printer.line()), "\xE6");
    closeFM();
    std::for_each(files.begin(), files.end(), ::close);
}

// A program that kept the port open would hold up who opens it next.
TEST_F(SerialSession, AProgramThatTheHostStartsDoesNotHaveThePort)
{
    const auto before = filesOfStartedPrograms();
    ASSERT_EQ(openFM(printer.name().c_str()), 0);
    EXPECT_EQ(filesOfStartedPrograms(), before);
}

TEST_F(SerialSession, AFileThatIsNoTerminalIsMinusOne)
{
    std::ofstream(folder.file("file")) << "content";
    EXPECT_EQ(openFM(("COM" + folder.file("file")).c_str()), -1);
    EXPECT_EQ(contentOf(folder.file("file")), "content");
    EXPECT_EQ(openFM("COM/dev/null"), -1);
}

} // namespace
} // namespace telvofm::test
