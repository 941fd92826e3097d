// Reads and writes on the serial port of Windows, on scripted communications functions: operations that are
// done at once, while they are waited for, too late, or never.
#include "link/serial_driver.h"
#include "tests/unit/win32_comm_scripted.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace telvofm::test {
namespace {

using ::testing::ElementsAre;
using Course = Transfer::Course;
using namespace std::chrono_literals;

class SerialTransferWin32 : public ::testing::Test
{
protected:
    void SetUp() override
    {
        port.openLine(R"(\\.\COM3)", 57600, StopBits::one);
        comm.takeCalls();
    }
    void TearDown() override
    {
        EXPECT_TRUE(comm.events.empty()) << "each operation closes its event";
        port.closePort();
    }

    // What a read of at most `size` bytes brings.
    std::string read(std::size_t size, std::chrono::milliseconds limit = 15s)
    {
        std::string buffer(size, '?');
        buffer.resize(port.readLine(buffer, limit));
        return buffer;
    }

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

    ScriptedComm comm;
    CSerialEx port;
};

TEST_F(SerialTransferWin32, AReadThatIsDoneAtOnceIsNotWaitedFor)
{
    comm.reads = {{Course::atOnce, "a"}};
    EXPECT_EQ(read(1), "a");
    EXPECT_THAT(comm.calls, ElementsAre("ClearCommError", "ReadFile 1", "GetOverlappedResult waiting"));
}

TEST_F(SerialTransferWin32, AReadIsWaitedForAsLongAsItsLimit)
{
    comm.reads = {{Course::waitedFor, "a"}};
    EXPECT_EQ(read(1), "a");
    EXPECT_THAT(comm.calls, ElementsAre("ClearCommError", "ReadFile 1", "WaitForSingleObject 15000",
                                        "GetOverlappedResult waiting"));
}

// A read waits for all that it asks for, so it must not ask for more than is there, nor for nothing.
TEST_F(SerialTransferWin32, AReadAsksForWhatIsThereAndForOneByteWhenNothingIs)
{
    comm.queued = 3;
    comm.reads = {{Course::atOnce, "abc"}, {Course::atOnce, "de"}, {Course::waitedFor, "f"}};
    EXPECT_EQ(read(256), "abc");
    EXPECT_EQ(read(2), "de");
    comm.queued = 0;
    EXPECT_EQ(read(256), "f");
    EXPECT_THAT(comm.calls,
                ElementsAre("ClearCommError", "ReadFile 3", "GetOverlappedResult waiting", "ClearCommError",
                            "ReadFile 2", "GetOverlappedResult waiting", "ClearCommError", "ReadFile 1",
                            "WaitForSingleObject 15000", "GetOverlappedResult waiting"));
}

// The operation has the caller's memory until its result has come.
TEST_F(SerialTransferWin32, AReadThatRunsOutOfTimeIsCancelledAndItsEndWaitedFor)
{
    EXPECT_EQ(read(1, 150ms), "");
    EXPECT_THAT(comm.calls, ElementsAre("ClearCommError", "ReadFile 1", "WaitForSingleObject 150", "CancelIo",
                                        "GetOverlappedResult waiting"));
}

TEST_F(SerialTransferWin32, AByteThatComesBeforeTheCancelCounts)
{
    comm.reads = {{Course::late, "a"}};
    EXPECT_EQ(read(1), "a");
}

TEST_F(SerialTransferWin32, AReadWithoutWaitingTakesOnlyWhatIsThere)
{
    EXPECT_EQ(read(1, 0ms), "");
    EXPECT_THAT(comm.takeCalls(), ElementsAre("ClearCommError", "ReadFile 1", "WaitForSingleObject 0",
                                              "CancelIo", "GetOverlappedResult waiting"));
    comm.reads = {{Course::atOnce, "a"}};
    EXPECT_EQ(read(1, 0ms), "a");
}

TEST_F(SerialTransferWin32, AWaitThatFailsEndsTheOperation)
{
    comm.reads = {{Course::waitedFor, "a"}};
    comm.fail("WaitForSingleObject", ERROR_INVALID_HANDLE);
    EXPECT_EQ(codeOf([&] { read(1); }), -10201);
    EXPECT_TRUE(comm.operations.empty());
}

// As when an adapter is pulled out.
TEST_F(SerialTransferWin32, AReadThatFailsBeforeTheCancelIsNoSilence)
{
    comm.reads = {{Course::late, "", ERROR_GEN_FAILURE}};
    EXPECT_EQ(codeOf([&] { read(1); }), -10201);
}

TEST_F(SerialTransferWin32, AFailingReadHasTheCodeOfItsError)
{
    for (const auto& [error, code] :
         {std::pair{DWORD{ERROR_FILE_NOT_FOUND}, -10200}, {DWORD{ERROR_GEN_FAILURE}, -10201}}) {
        comm.reads = {{Course::refused, "", error}, {Course::broken, "", error}};
        EXPECT_EQ(codeOf([&] { read(1); }), code);
        EXPECT_EQ(codeOf([&] { read(1); }), code);
        comm.fail("ClearCommError", error);
        EXPECT_EQ(codeOf([&] { read(1); }), code);
        comm.fail("CreateEventA", error);
        EXPECT_EQ(codeOf([&] { read(1); }), code);
    }
    EXPECT_TRUE(comm.reads.empty());
    EXPECT_EQ(read(1), "") << "and the next read is in order";
}

TEST_F(SerialTransferWin32, AWriteMovesOneByteWithinFifteenSeconds)
{
    port.writeToLine('a');
    EXPECT_EQ(comm.written, "a");
    EXPECT_THAT(comm.calls,
                ElementsAre("WriteFile 1", "WaitForSingleObject 15000", "GetOverlappedResult waiting"));
}

TEST_F(SerialTransferWin32, AWriteThatIsDoneAtOnceIsNotWaitedFor)
{
    comm.writes = {{Course::atOnce, "a"}};
    port.writeToLine('a');
    EXPECT_THAT(comm.calls, ElementsAre("WriteFile 1", "GetOverlappedResult waiting"));
}

TEST_F(SerialTransferWin32, AWriteThatRunsOutOfTimeIsCancelledAndFails)
{
    comm.writes = {{Course::silent, ""}};
    EXPECT_EQ(codeOf([&] { port.writeToLine('a'); }), -10201);
    EXPECT_EQ(port.lastError(), DWORD{ERROR_TIMEOUT});
    EXPECT_THAT(comm.calls, ElementsAre("WriteFile 1", "WaitForSingleObject 15000", "CancelIo",
                                        "GetOverlappedResult waiting"));
}

TEST_F(SerialTransferWin32, AWriteThatIsDoneBeforeTheCancelCounts)
{
    comm.writes = {{Course::late, "a"}};
    EXPECT_EQ(codeOf([&] { port.writeToLine('a'); }), 0);
}

TEST_F(SerialTransferWin32, AWriteThatMovesNothingFails)
{
    comm.writes = {{Course::waitedFor, ""}};
    EXPECT_EQ(codeOf([&] { port.writeToLine('a'); }), -10201);
}

TEST_F(SerialTransferWin32, AFailingWriteHasTheCodeOfItsError)
{
    for (const auto& [error, code] :
         {std::pair{DWORD{ERROR_FILE_NOT_FOUND}, -10200}, {DWORD{ERROR_GEN_FAILURE}, -10201}}) {
        comm.writes = {{Course::refused, "", error}, {Course::broken, "", error}};
        EXPECT_EQ(codeOf([&] { port.writeToLine('a'); }), code);
        EXPECT_EQ(codeOf([&] { port.writeToLine('a'); }), code);
        comm.fail("CreateEventA", error);
        EXPECT_EQ(codeOf([&] { port.writeToLine('a'); }), code);
    }
    EXPECT_TRUE(comm.writes.empty());
}

TEST_F(SerialTransferWin32, TheModemLinesAreThoseOfThePort)
{
    comm.modemLines = {MS_CTS_ON, MS_DSR_ON, MS_CTS_ON | MS_DSR_ON, MS_RING_ON | MS_RLSD_ON};
    for (const auto& [clearToSend, dataSetReady] :
         {std::pair{true, false}, {false, true}, {true, true}, {false, false}}) {
        CSerial::ModemStatus status{.clearToSend = !clearToSend, .dataSetReady = !dataSetReady};
        EXPECT_TRUE(port.modemStatus(status));
        EXPECT_EQ(status.clearToSend, clearToSend);
        EXPECT_EQ(status.dataSetReady, dataSetReady);
    }
    comm.fail("GetCommModemStatus", ERROR_GEN_FAILURE);
    EXPECT_FALSE(port.isClearToSend());
}

// The lines are asked for anew at each look, and nothing else is called between the looks.
TEST_F(SerialTransferWin32, ADriverLooksAtTheModemLinesUntilDataSetReadyIsOn)
{
    port.closePort();
    SerialDriver driver("COM3", 57600, StopBits::one);
    driver.open();
    comm.takeCalls();
    comm.modemLines = {MS_CTS_ON, MS_CTS_ON, MS_RING_ON, MS_DSR_ON};
    EXPECT_EQ(driver.writeRaw("a"), 1U);
    EXPECT_EQ(comm.written, "a");
    EXPECT_THAT(comm.takeCalls(),
                ElementsAre("GetCommModemStatus", // for CTS, before the first byte
                            "GetCommModemStatus", "GetCommModemStatus", "GetCommModemStatus", "WriteFile 1",
                            "WaitForSingleObject 15000", "GetOverlappedResult waiting"));
    driver.close();
}

// After a thousand looks in vain and one more it rests a millisecond before each.
TEST_F(SerialTransferWin32, ADriverThatMissesDataSetReadyForLongRestsBetweenTheLooks)
{
    constexpr std::ptrdiff_t looksInVain = 1000;
    port.closePort();
    SerialDriver driver("COM3", 57600, StopBits::one);
    driver.open();
    comm.takeCalls();
    comm.modemLines.assign(1 + looksInVain + 5, MS_CTS_ON); // the first look is for CTS
    EXPECT_EQ(driver.writeRaw("a"), 1U);
    const auto firstRest = std::ranges::find(comm.calls, "Sleep 1");
    EXPECT_EQ(std::ranges::count(comm.calls.begin(), firstRest, "GetCommModemStatus"), 1 + looksInVain + 1);
    EXPECT_THAT(std::vector(firstRest, firstRest + 4),
                ElementsAre("Sleep 1", "GetCommModemStatus", "Sleep 1", "GetCommModemStatus"));
    driver.close();
}

TEST_F(SerialTransferWin32, APortThatIsGoneWhileDataSetReadyIsMissingIsAFailure)
{
    port.closePort();
    SerialDriver driver("COM3", 57600, StopBits::one);
    driver.open();
    comm.modemLines.assign(10, MS_CTS_ON);
    comm.fail("GetCommModemStatus", ERROR_GEN_FAILURE, 3);
    EXPECT_EQ(codeOf([&] { driver.writeRaw("a"); }), -10201);
    EXPECT_EQ(comm.written, "");
    driver.close();
}

TEST_F(SerialTransferWin32, APurgeEmptiesBothQueues)
{
    port.purgeLine();
    EXPECT_THAT(comm.calls, ElementsAre("PurgeComm c"));
    comm.fail("PurgeComm", ERROR_GEN_FAILURE);
    EXPECT_EQ(codeOf([&] { port.purgeLine(); }), -10201);
}

// 32 bits of milliseconds run over after 49 days.
TEST_F(SerialTransferWin32, TheClockGoesOnBeyond32Bits)
{
    EXPECT_EQ(CSerial::now(), 4294967296ms);
    CSerial::pause(50ms);
    EXPECT_THAT(comm.calls, ElementsAre("Sleep 50"));
    EXPECT_EQ(CSerial::now(), 4294967346ms);
}

} // namespace
} // namespace telvofm::test
