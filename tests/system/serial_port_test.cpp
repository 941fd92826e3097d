// The platform's serial port: which code each kind of broken port comes to, and what a name means.
#include "link/serial_driver.h"
#include "link/serial_path_posix.h"
#include "link/telvo06fm_exception.h"
#include "tests/system/serial_printer.h"
#include "tests/unit/own_folder.h"

#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

namespace telvofm::test {
namespace {

using namespace std::chrono_literals;

std::int32_t codeOfOpening(const std::string& name)
{
    SerialDriver driver(name, 57600, StopBits::one);
    try {
        driver.open();
    } catch (const Telvo06FMException& failure) {
        return failure.code;
    }
    return 0;
}

TEST(SerialPath, ANumberIsThePortBeforeIt)
{
    EXPECT_EQ(serialPath(R"(\\.\COM1)"), "/dev/ttyS0");
    EXPECT_EQ(serialPath(R"(\\.\COM12)"), "/dev/ttyS11");
    EXPECT_EQ(serialPath(R"(\\.\COM007)"), "/dev/ttyS6");
}

TEST(SerialPath, AnAbsolutePathIsItself)
{
    EXPECT_EQ(serialPath(R"(\\.\COM/dev/ttyUSB0)"), "/dev/ttyUSB0");
    EXPECT_EQ(serialPath(R"(\\.\COM/)"), "/");
}

TEST(SerialPath, AnythingElseHasNoFile)
{
    for (const char* name :
         {R"(\\.\COM)", R"(\\.\COMX)", R"(\\.\COM0)", R"(\\.\COM-1)", R"(\\.\COM+1)", R"(\\.\COM 1)",
          R"(\\.\COM1x)", R"(\\.\COM99999999999)", R"(\\.\LPT1)", R"(\\.\LPT/dev/null)", "COM1", ""}) {
        EXPECT_EQ(serialPath(name), "") << name;
    }
}

TEST(SerialPort, AMissingPortIsItsOwnCode)
{
    const OwnFolder folder;
    EXPECT_EQ(codeOfOpening("COM" + folder.file("missing")), -10200);
    EXPECT_EQ(codeOfOpening("COMX"), -10200);
    EXPECT_EQ(codeOfOpening("COM0"), -10200);
}

TEST(SerialPort, AFileThatIsNoTerminalIsAFailure)
{
    const OwnFolder folder;
    std::ofstream(folder.file("file")) << "content";
    EXPECT_EQ(codeOfOpening("COM" + folder.file("file")), -10201);
    EXPECT_EQ(codeOfOpening("COM" + folder.path.string()), -10201);
    EXPECT_EQ(codeOfOpening("COM/dev/null"), -10201);
}

TEST(SerialPort, NothingCanBeSetOfAFileThatIsNoTerminal)
{
    CSerial port;
    ASSERT_TRUE(port.openPort(R"(\\.\COM/dev/null)", 0));
    CSerial::ModemStatus status{};
    EXPECT_FALSE(port.setLine(57600, StopBits::one));
    EXPECT_FALSE(port.setBlockingReads());
    EXPECT_FALSE(port.setHardwareHandshake());
    EXPECT_FALSE(port.setSpecialCharacters('\n', '\4'));
    EXPECT_FALSE(port.purge());
    EXPECT_FALSE(port.raiseDataTerminalReady());
    EXPECT_FALSE(port.modemStatus(status));
    EXPECT_EQ(port.lastError(), std::uint32_t{ENOTTY});
}

// Run by the administrator, the test becomes another user for the moment: to the former no file is closed.
TEST(SerialPort, APortThatMayNotBeOpenedIsAFailure)
{
    const OwnFolder folder;
    const std::string path = folder.file("closed");
    std::ofstream(path) << "content";
    ASSERT_EQ(::chmod(path.c_str(), 0), 0);
    constexpr uid_t nobody = 65534;
    const uid_t self = ::geteuid();
    if (self == 0) {
        ASSERT_EQ(::seteuid(nobody), 0);
    }
    const std::int32_t code = codeOfOpening("COM" + path);
    if (self == 0) {
        ASSERT_EQ(::seteuid(self), 0);
    }
    EXPECT_EQ(code, -10201);
}

class OpenSerialPort : public ::testing::Test
{
protected:
    OwnFolder folder;
    SerialPrinter printer{folder.file("lines")};
};

TEST_F(OpenSerialPort, ReadsNothingWithoutWaitingWhenNothingIsThere)
{
    SerialDriver driver(printer.name(), 57600, StopBits::one);
    driver.open();
    LinkDriver::Byte byte = 0;
    EXPECT_EQ(driver.readRaw(&byte, 1, &byte), 0);
}

TEST_F(OpenSerialPort, WaitsForTheGivenTime)
{
    SerialDriver driver(printer.name(), 57600, StopBits::one);
    driver.open();
    const auto started = std::chrono::steady_clock::now();
    EXPECT_THROW(driver.readByte(false, 150), Telvo06FMException);
    EXPECT_GE(std::chrono::steady_clock::now() - started, 150ms);
    printer.line().send("x");
    EXPECT_EQ(driver.readByte(false, 5000), 'x');
}

TEST_F(OpenSerialPort, TellsThatTheTimeIsOverByACountOfZero)
{
    CSerial port;
    ASSERT_TRUE(port.openPort(R"(\\.\)" + printer.name(), 0));
    ASSERT_TRUE(port.setLine(57600, StopBits::one));
    std::array<char, 8> bytes{};
    std::size_t count = bytes.size();
    EXPECT_TRUE(port.readPort(bytes, 1ms, count));
    EXPECT_EQ(count, 0U);
}

TEST_F(OpenSerialPort, FailsWithAnErrorOfItsOwnWhenTheLineHangsUp)
{
    CSerial port;
    ASSERT_TRUE(port.openPort(R"(\\.\)" + printer.name(), 0));
    ASSERT_TRUE(port.setLine(57600, StopBits::one));
    printer.line().close();
    std::array<char, 8> bytes{};
    std::size_t count = 0;
    errno = 0;
    EXPECT_FALSE(port.readPort(bytes, 5000ms, count));
    EXPECT_EQ(count, 0U);
    EXPECT_EQ(port.lastError(), std::uint32_t{EIO});
}

TEST_F(OpenSerialPort, ClosedTwiceLeavesTheFileAloneThatHasItsNumberThen)
{
    CSerial port;
    ASSERT_TRUE(port.openPort(R"(\\.\)" + printer.name(), 0));
    port.closePort();
    const int next = ::open("/dev/null", O_RDONLY | O_CLOEXEC); // takes the lowest number that is free
    port.closePort();
    EXPECT_EQ(::fcntl(next, F_GETFD), FD_CLOEXEC);
    ::close(next);
}

TEST_F(OpenSerialPort, ThatIsClosedMakesNoCallOfTheSystem)
{
    CSerial port;
    errno = 0;
    port.closePort();
    EXPECT_EQ(errno, 0);
}

TEST_F(OpenSerialPort, KeepsNoSettingOfAnotherProgram)
{
    const int terminal = ::open(printer.terminal().c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    termios settings{};
    ASSERT_EQ(::tcgetattr(terminal, &settings), 0);
    settings.c_cc[VEOF] = 'e';
    settings.c_cc[VEOL] = 'l';
    settings.c_cc[VMIN] = 7;
    settings.c_cc[VTIME] = 7;
    ASSERT_EQ(::tcsetattr(terminal, TCSANOW, &settings), 0);

    SerialDriver driver(printer.name(), 57600, StopBits::one);
    driver.open();
    ASSERT_EQ(::tcgetattr(terminal, &settings), 0);
    EXPECT_EQ(settings.c_cc[VEOF], 0x04);
    EXPECT_EQ(settings.c_cc[VEOL], 0x0A);
    EXPECT_EQ(settings.c_cc[VMIN], 1);
    EXPECT_EQ(settings.c_cc[VTIME], 0);
    ::close(terminal);
}

TEST_F(OpenSerialPort, CanBeOpenedTwiceAndEachHandleClosesByItself)
{
    SerialDriver first(printer.name(), 57600, StopBits::one);
    first.open();
    {
        SerialDriver second(printer.name(), 57600, StopBits::one);
        second.open();
    }
    EXPECT_EQ(first.writeRaw("x"), 1U);
    EXPECT_EQ(receiveBytes(printer.line(), 1), "x");
}

} // namespace
} // namespace telvofm::test
