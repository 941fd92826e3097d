// What `telvofm doctor` finds out about a serial port of Windows, on scripted communications functions: a
// port that another program holds, one that is gone, lines that are off.
#include "tests/unit/win32_comm_scripted.h"
#include "tools/doctor.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <string_view>

namespace telvofm::test {
namespace {

using namespace std::literals;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using tools::Findings;
using tools::Health;

// The system's list of devices; without one it cannot be asked.
std::string_view devices;

DWORD WINAPI queryDosDevice(const char* name, char* target, DWORD size)
{
    EXPECT_EQ(name, nullptr);
    if (size < devices.size() || devices.empty()) {
        ::SetLastError(devices.empty() ? ERROR_FILE_NOT_FOUND : ERROR_INSUFFICIENT_BUFFER);
        return 0;
    }
    std::copy(devices.begin(), devices.end(), target);
    return static_cast<DWORD>(devices.size());
}

// "port good", "cts bad" ...
std::vector<std::string> summaryOf(const Findings& findings)
{
    std::vector<std::string> words;
    std::transform(findings.begin(), findings.end(), std::back_inserter(words),
                   [](const tools::Finding& one) {
                       return one.about + (one.health == Health::good  ? " good"
                                           : one.health == Health::bad ? " bad"
                                                                       : " unknown");
                   });
    return words;
}

class DoctorWin32 : public ::testing::Test
{
protected:
    DoctorWin32() { devices = "NUL\0COM10\0CompositeBattery\0COM9\0COMRADE\0\0"sv; }

    ScriptedComm comm;
};

TEST_F(DoctorWin32, FindsAPortThatIsWell)
{
    EXPECT_THAT(summaryOf(tools::examineSerialPort("COM3")),
                ElementsAre("port good", "holder good", "cts good", "dsr good"));
    // Read and write, alone, existing; it is not touched, and closed again.
    EXPECT_THAT(comm.takeCalls(),
                ElementsAre(R"(CreateFileA \\.\COM3 c0000000 0 3 0)", "GetCommModemStatus", "CloseHandle"));
    EXPECT_THAT(summaryOf(tools::examineSerialPort(R"(\\.\COM10)")),
                ElementsAre("port good", "holder good", "cts good", "dsr good"));
    EXPECT_EQ(comm.calls.front(), R"(CreateFileA \\.\COM10 c0000000 0 3 0)");
}

TEST_F(DoctorWin32, FindsAPortThatAnotherProgramHolds)
{
    const HANDLE other =
        ::CreateFileA(R"(\\.\COM3)", GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    const Findings found = tools::examineSerialPort("COM3");
    ::CloseHandle(other);
    ASSERT_THAT(summaryOf(found), ElementsAre("holder bad"));
    EXPECT_EQ(found[0].sentence, "Another program holds COM3.");
    EXPECT_THAT(found[0].advice, HasSubstr("End it"));

    comm.fail("CreateFileA", ERROR_SHARING_VIOLATION);
    EXPECT_THAT(summaryOf(tools::examineSerialPort("COM3")), ElementsAre("holder bad"));
}

TEST_F(DoctorWin32, FindsAPortThatIsNotThereAndNamesOneThatIs)
{
    comm.fail("CreateFileA", ERROR_FILE_NOT_FOUND);
    const Findings missing = tools::examineSerialPort("COM3");
    ASSERT_THAT(summaryOf(missing), ElementsAre("port bad"));
    EXPECT_EQ(missing[0].sentence, "There is no port COM3.");
    EXPECT_EQ(missing[0].advice, "Plug its adapter in, or name COM9.");

    devices = "NUL\0\0"sv;
    comm.fail("CreateFileA", ERROR_PATH_NOT_FOUND);
    const Findings alone = tools::examineSerialPort("COM3");
    ASSERT_THAT(summaryOf(alone), ElementsAre("port bad"));
    EXPECT_EQ(alone[0].advice, "Plug its adapter in.");
}

TEST_F(DoctorWin32, FindsAPortThatTheSystemCannotOpen)
{
    comm.fail("CreateFileA", ERROR_GEN_FAILURE);
    const Findings found = tools::examineSerialPort("COM3");
    ASSERT_THAT(summaryOf(found), ElementsAre("port bad"));
    EXPECT_EQ(found[0].sentence, "COM3 cannot be opened: error 31.");
}

TEST_F(DoctorWin32, FindsLinesThatAreOff)
{
    comm.modemLines = {MS_DSR_ON, MS_CTS_ON, 0};
    const Findings withoutCts = tools::examineSerialPort("COM3");
    EXPECT_THAT(summaryOf(withoutCts), ElementsAre("port good", "holder good", "cts bad", "dsr good"));
    EXPECT_THAT(withoutCts[2].sentence, HasSubstr("CTS is off: a call returns -10103"));
    const Findings withoutDsr = tools::examineSerialPort("COM3");
    EXPECT_THAT(summaryOf(withoutDsr), ElementsAre("port good", "holder good", "cts good", "dsr bad"));
    EXPECT_THAT(withoutDsr[3].sentence, HasSubstr("DSR is off: a call waits for it"));
    EXPECT_THAT(summaryOf(tools::examineSerialPort("COM3")),
                ElementsAre("port good", "holder good", "cts bad", "dsr bad"));
}

TEST_F(DoctorWin32, FindsAPortWithoutLines)
{
    comm.fail("GetCommModemStatus", ERROR_INVALID_FUNCTION);
    EXPECT_THAT(summaryOf(tools::examineSerialPort("COM3")),
                ElementsAre("port good", "holder good", "lines bad"));
}

TEST_F(DoctorWin32, ListsThePortsByTheirNumbersHoweverManyDevicesThereAre)
{
    EXPECT_THAT(tools::serialPorts(), ElementsAre("COM9", "COM10"));
    const std::string many = std::string(100'000, 'x') + "\0COM7\0\0"s;
    devices = many;
    EXPECT_THAT(tools::serialPorts(), ElementsAre("COM7"));
    devices = {};
    EXPECT_THAT(tools::serialPorts(), ElementsAre());
}

} // namespace
} // namespace telvofm::test

// The pointer through which it is called; without ours the system's import library has it.
extern "C" {
decltype(&::QueryDosDeviceA) __imp_QueryDosDeviceA = telvofm::test::queryDosDevice;
}
