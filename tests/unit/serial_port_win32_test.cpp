// The serial port of Windows, call by call, on scripted communications functions: how it is opened and set
// up, and what it leaves behind.
#include "link/serial_driver.h"
#include "tests/unit/win32_comm_scripted.h"

#include <gmock/gmock.h>

#include <cstring>

namespace telvofm::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;

constexpr std::uint32_t usualBaud = 57600;
constexpr std::uint32_t fastBaud = 115200;

// What has to happen, in this order, for a port of 57600 baud to be open.
const std::vector<std::string> opening = {
    R"(CreateFileA \\.\COM3 c0000000 0 3 40000000)", // read and write, alone, existing, overlapped
    "SetupComm 28800 28800",
    "GetCommState",
    "SetCommState",
    "GetCommTimeouts",
    "SetCommTimeouts",
    "GetCommState",
    "SetCommState",
    "GetCommState",
    "SetCommState",
    "SetCommMask 1fd",     // everything but EV_RXFLAG, the event character
    "PurgeComm c",         // both queues
    "EscapeCommFunction 5" // DTR on
};

// The code that an opening ends with.
std::int32_t codeOfOpening(SerialDriver& driver)
{
    try {
        driver.open();
    } catch (const Telvo06FMException& failure) {
        return failure.code;
    }
    return 0;
}

class SerialPortWin32 : public ::testing::Test
{
protected:
    // The settings of a port that was opened so.
    DCB settingsAfter(std::uint32_t baud, StopBits stopBits)
    {
        SerialDriver other("COM3", baud, stopBits);
        other.open();
        other.close();
        return comm.settings;
    }

    ScriptedComm comm;
    SerialDriver driver{"COM3", usualBaud, StopBits::one};
};

// A port that is open is looked for by it: another port must not be closed, and the same one must be.
TEST_F(SerialPortWin32, IsTheSamePortUnderBothFormsOfItsName)
{
    EXPECT_EQ(SerialDriver::portIdentity("COM3"), SerialDriver::portIdentity(R"(\\.\COM3)"));
    EXPECT_EQ(SerialDriver::portIdentity("COM3"), SerialDriver::portIdentity("COM3"));
    EXPECT_NE(SerialDriver::portIdentity("COM3"), SerialDriver::portIdentity("COM4"));
    EXPECT_NE(SerialDriver::portIdentity("COM3"), SerialDriver::portIdentity("COM13"));
}

TEST_F(SerialPortWin32, IsOpenedAndSetUpInThisOrder)
{
    driver.open();
    EXPECT_THAT(comm.takeCalls(), ElementsAreArray(opening));
    driver.close();
    EXPECT_THAT(comm.takeCalls(), ElementsAre("CloseHandle"));
    driver.close();
    EXPECT_THAT(comm.calls, ElementsAre());
}

TEST_F(SerialPortWin32, TheQueuesHoldHalfASecondsBits)
{
    settingsAfter(fastBaud, StopBits::one);
    EXPECT_THAT(comm.calls, Contains("SetupComm 57600 57600"));
}

TEST_F(SerialPortWin32, HasTheRateAndTheStopBitsItIsGiven)
{
    EXPECT_EQ(settingsAfter(usualBaud, StopBits::one).BaudRate, 57600U);
    EXPECT_EQ(settingsAfter(fastBaud, StopBits::one).BaudRate, 115200U);
    EXPECT_EQ(settingsAfter(usualBaud, StopBits::two).StopBits, TWOSTOPBITS);
    EXPECT_EQ(settingsAfter(usualBaud, StopBits::one).StopBits, ONESTOPBIT);
}

// The platform refuses one and a half stop bits beside eight data bits, and so does the port then.
TEST_F(SerialPortWin32, OneAndAHalfStopBitsAreWhatThePlatformMakesOfThem)
{
    SerialDriver other("COM3", usualBaud, StopBits::oneAndHalf);
    EXPECT_EQ(codeOfOpening(other), -10201);
    EXPECT_TRUE(comm.openPorts.empty());
}

TEST_F(SerialPortWin32, EightBitsNoParityHardwareHandshake)
{
    driver.open();
    EXPECT_EQ(comm.settings.ByteSize, 8);
    EXPECT_EQ(comm.settings.Parity, NOPARITY);
    EXPECT_FALSE(comm.settings.fParity);
    EXPECT_TRUE(comm.settings.fBinary);
    EXPECT_TRUE(comm.settings.fOutxCtsFlow);
    EXPECT_EQ(comm.settings.fRtsControl, DWORD{RTS_CONTROL_HANDSHAKE});
    EXPECT_EQ(comm.settings.fDtrControl, DWORD{DTR_CONTROL_ENABLE});
    EXPECT_FALSE(comm.settings.fOutxDsrFlow);
    EXPECT_FALSE(comm.settings.fDsrSensitivity);
    EXPECT_FALSE(comm.settings.fOutX);
    EXPECT_FALSE(comm.settings.fInX);
    EXPECT_EQ(comm.settings.EvtChar, 0x0A);
    EXPECT_EQ(comm.settings.EofChar, 0x04);
    driver.close();
}

// The port comes as another program left it: all bits of the settings on, or all off.
class PortOfAnotherProgram : public SerialPortWin32, public ::testing::WithParamInterface<int>
{
protected:
    PortOfAnotherProgram()
    {
        std::memset(&comm.settings, GetParam(), sizeof comm.settings);
        std::memset(&comm.timeouts, GetParam(), sizeof comm.timeouts);
        comm.settings.DCBlength = sizeof comm.settings;
    }
};

TEST_P(PortOfAnotherProgram, EveryByteOfTheLineComesAsItIs)
{
    driver.open();
    EXPECT_FALSE(comm.settings.fNull) << "drops bytes 00";
    EXPECT_FALSE(comm.settings.fErrorChar) << "replaces bytes";
    EXPECT_EQ(comm.settings.ErrorChar, 0);
    EXPECT_FALSE(comm.settings.fAbortOnError) << "one line error would make the next calls fail";
    EXPECT_FALSE(comm.settings.fTXContinueOnXoff);
    EXPECT_EQ(comm.settings.ByteSize, 8);
    EXPECT_EQ(comm.settings.Parity, NOPARITY);
    EXPECT_EQ(comm.settings.StopBits, ONESTOPBIT);
    EXPECT_FALSE(comm.settings.fParity);
    EXPECT_TRUE(comm.settings.fBinary);
    EXPECT_TRUE(comm.settings.fOutxCtsFlow);
    EXPECT_EQ(comm.settings.fRtsControl, DWORD{RTS_CONTROL_HANDSHAKE});
    EXPECT_EQ(comm.settings.fDtrControl, DWORD{DTR_CONTROL_ENABLE});
    EXPECT_FALSE(comm.settings.fOutxDsrFlow);
    EXPECT_FALSE(comm.settings.fDsrSensitivity);
    EXPECT_FALSE(comm.settings.fOutX);
    EXPECT_FALSE(comm.settings.fInX);
    driver.close();
}

// Both equal would be refused, although neither is in use.
TEST_P(PortOfAnotherProgram, TheCharactersOfInBandFlowControlDiffer)
{
    driver.open();
    EXPECT_EQ(comm.settings.XonChar, 0x11);
    EXPECT_EQ(comm.settings.XoffChar, 0x13);
    driver.close();
}

// Limits of a larger queue would be refused; limits of 0 would hold the printer off too late.
TEST_P(PortOfAnotherProgram, ThePrinterIsHeldOffBeforeTheQueueIsFull)
{
    driver.open();
    EXPECT_EQ(comm.settings.XonLim, 2048) << "go on when so few bytes are left in the queue";
    EXPECT_EQ(comm.settings.XoffLim, 512) << "stop when so few bytes fit into the queue";
    driver.close();
}

TEST_P(PortOfAnotherProgram, NoTimeOutOfThePortsOwnEndsAReadOrAWrite)
{
    driver.open();
    EXPECT_EQ(comm.timeouts.ReadIntervalTimeout, 0U);
    EXPECT_EQ(comm.timeouts.ReadTotalTimeoutMultiplier, 0U);
    EXPECT_EQ(comm.timeouts.ReadTotalTimeoutConstant, 0U);
    EXPECT_EQ(comm.timeouts.WriteTotalTimeoutMultiplier, 0U);
    EXPECT_EQ(comm.timeouts.WriteTotalTimeoutConstant, 0U);
    driver.close();
}

INSTANTIATE_TEST_SUITE_P(AllBits, PortOfAnotherProgram, ::testing::Values(0x00, 0xFF));

TEST_F(SerialPortWin32, APortThatIsNotThereHasACodeOfItsOwn)
{
    comm.fail("CreateFileA", ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(codeOfOpening(driver), -10200);
    EXPECT_THAT(comm.calls, ElementsAre(opening.front()));
}

TEST_F(SerialPortWin32, EveryStepThatFailsEndsTheOpeningAndClosesThePort)
{
    std::map<std::string, int> timesCalled;
    for (std::size_t step = 0; step < opening.size(); ++step) {
        const std::string name = opening[step].substr(0, opening[step].find(' '));
        for (const auto& [error, code] :
             {std::pair{DWORD{ERROR_FILE_NOT_FOUND}, -10200}, {DWORD{ERROR_GEN_FAILURE}, -10201}}) {
            comm.takeCalls();
            comm.fail(name, error, timesCalled[name]);
            EXPECT_EQ(codeOfOpening(driver), code) << opening[step];
            std::vector<std::string> expected(opening.begin(), opening.begin() + static_cast<int>(step) + 1);
            if (step > 0) {
                expected.emplace_back("CloseHandle");
            }
            EXPECT_THAT(comm.calls, ElementsAreArray(expected));
        }
        ++timesCalled[name];
    }
}

// As Windows does it, unlike Wine.
TEST_F(SerialPortWin32, ASecondHandleOnThePortIsRefused)
{
    driver.open();
    SerialDriver second("COM3", usualBaud, StopBits::one);
    EXPECT_EQ(codeOfOpening(second), -10201);
    driver.close();
    EXPECT_EQ(codeOfOpening(second), 0);
    second.close();
}

TEST_F(SerialPortWin32, TheSameDriverOpenedAgainGivesItsHandleBackFirst)
{
    driver.open();
    comm.takeCalls();
    driver.open();
    EXPECT_EQ(comm.calls.front(), "CloseHandle");
    driver.close();
}

TEST_F(SerialPortWin32, TheDestructorClosesThePort)
{
    {
        SerialDriver other("COM3", usualBaud, StopBits::one);
        other.open();
    }
    EXPECT_EQ(comm.calls.back(), "CloseHandle");
}

} // namespace
} // namespace telvofm::test
