// The serial driver's calls of the system, on a pseudo-terminal: the wait for room to write, and whose
// terminal it is.
#include "link/serial_driver.h"
#include "link/telvo06fm_exception.h"
#include "tests/system/serial_printer.h"
#include "tests/system/system_calls.h"
#include "tests/unit/own_folder.h"

#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <unistd.h>

namespace telvofm::test {
namespace {

using namespace std::chrono_literals;

class SerialCalls : public ::testing::Test
{
protected:
    // Until no more goes in. The system moves what it holds for a moment longer and has a little room again,
    // but never as much as `more`.
    void fillLine()
    {
        const int line = ::open(printer.terminal().c_str(), O_WRONLY | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
        ASSERT_NE(line, -1);
        for (ssize_t count = 0; count >= 0; count = ::write(line, more.data(), more.size())) {
            inLine += static_cast<std::size_t>(count);
        }
        ::close(line);
    }

    std::size_t inLine = 0; // that much was filled in

    const std::string more = std::string(16384, 'x');
    OwnFolder folder;
    SerialPrinter printer{folder.file("lines")};
    SystemCalls calls;
};

TEST_F(SerialCalls, AByteWaitsFifteenSecondsForRoom)
{
    SerialDriver driver(printer.name(), 57600, StopBits::one);
    driver.open();
    fillLine();
    try {
        driver.writeRaw(more);
        FAIL() << "there is no room";
    } catch (const Telvo06FMException& failure) {
        EXPECT_EQ(failure.code, -10201);
    }
    EXPECT_EQ(calls.waitedForTerminal, 15000ms);
}

// The system's error of an earlier opening is none of the wait's.
TEST_F(SerialCalls, AWaitForRoomInAPortThatWasMissingOnceIsNoMissingPort)
{
    const std::string plugged = folder.file("plugged");
    SerialDriver driver("COM" + plugged, 57600, StopBits::one);
    try {
        driver.open();
        FAIL() << "there is no port";
    } catch (const Telvo06FMException& failure) {
        EXPECT_EQ(failure.code, code::portMissing);
    }
    std::filesystem::create_symlink(printer.terminal(), plugged);
    driver.open();
    fillLine();
    try {
        driver.writeRaw(more);
        FAIL() << "there is no room";
    } catch (const Telvo06FMException& failure) {
        EXPECT_EQ(failure.code, code::transportFailure);
    }
}

TEST_F(SerialCalls, ASignalProlongsNoWaitForRoomAndShortensNone)
{
    SerialDriver driver(printer.name(), 57600, StopBits::one);
    driver.open();
    fillLine();
    calls.waitsForRoomToInterrupt = 1;
    const auto start = std::chrono::steady_clock::now();
    EXPECT_THROW(driver.writeRaw(more), Telvo06FMException);
    EXPECT_EQ(calls.waitsForRoomToInterrupt, 0);
    EXPECT_LE(calls.waitedForTerminal, 15000ms);
    EXPECT_GE(std::chrono::steady_clock::now() - start, 14999ms); // the real time counts, too
}

TEST_F(SerialCalls, AByteIsWrittenWhenThereIsRoomAgain)
{
    SerialDriver driver(printer.name(), 57600, StopBits::one);
    driver.open();
    fillLine();
    int timesFull = 0;
    calls.whenTerminalIsFull = [&] {
        ++timesFull;
        while (!printer.line().receive(more.size(), 0ms)->empty()) {
        }
    };
    EXPECT_EQ(driver.writeRaw(more), more.size());
    EXPECT_GT(timesFull, 0);
    EXPECT_EQ(calls.waitedForTerminal, 0ms);
}

// Raw bytes of another thread can take the room between the wait for it and the write, and a signal can come.
TEST_F(SerialCalls, AByteWaitsAgainWhenItsRoomWasTaken)
{
    SerialDriver driver(printer.name(), 57600, StopBits::one);
    driver.open();
    calls.terminalWriteErrors = {EAGAIN, EINTR, EAGAIN};
    EXPECT_EQ(driver.writeRaw("ab"), 2U);
    EXPECT_TRUE(calls.terminalWriteErrors.empty());
    EXPECT_EQ(printer.line().receive(1, 5s), "a"); // each by itself: the line may deliver the second later
    EXPECT_EQ(printer.line().receive(1, 5s), "b");
}

TEST_F(SerialCalls, AByteWhoseRoomIsAlwaysTakenFailsAfterFifteenSeconds)
{
    SerialDriver driver(printer.name(), 57600, StopBits::one);
    driver.open();
    calls.whenTerminalIsFull = [] { FAIL() << "the terminal has room"; };
    calls.terminalWriteErrors.assign(100, EAGAIN);
    EXPECT_THROW(driver.writeRaw("a"), Telvo06FMException);
    const std::size_t tries = 100 - calls.terminalWriteErrors.size();
    EXPECT_GE(tries, 15U);
    EXPECT_LE(tries, 16U);
}

// A line that is broken is not waited for.
TEST_F(SerialCalls, AByteThatCannotBeWrittenFailsAtOnce)
{
    SerialDriver driver(printer.name(), 57600, StopBits::one);
    driver.open();
    calls.terminalWriteErrors = {EIO, EIO};
    EXPECT_THROW(driver.writeRaw("a"), Telvo06FMException);
    EXPECT_EQ(calls.terminalWriteErrors.size(), 1U);
}

TEST_F(SerialCalls, AWaitForRoomThatFailsIsAFailureAtOnce)
{
    SerialDriver driver(printer.name(), 57600, StopBits::one);
    driver.open();
    calls.waitErrors = {EINTR, ENOMEM};
    EXPECT_THROW(driver.writeRaw("a"), Telvo06FMException);
    EXPECT_TRUE(calls.waitErrors.empty());
    EXPECT_TRUE(printer.hearsNothing());
}

// What the terminal has not delivered yet, which is less than all. Data-set-ready has no part in it.
TEST_F(SerialCalls, WhatThePrinterHoldsBackIsThrownAwayAndWhatFlowsIsNot)
{
    for (const bool clearToSend : {true, false}) {
        CSerial port;
        ASSERT_TRUE(port.openPort(R"(\\.\)" + printer.name(), 0));
        ASSERT_TRUE(port.setLine(57600, StopBits::one));
        inLine = 0;
        fillLine();
        printer.setLines(clearToSend, !clearToSend);
        EXPECT_TRUE(port.purge());
        const auto patience = clearToSend ? 5000ms : 100ms; // what flows comes, however late
        std::size_t received = 0;
        for (std::size_t count = 1; count > 0 && received < inLine; received += count) {
            count = printer.line().receive(more.size(), patience)->size();
        }
        EXPECT_EQ(received == inLine, clearToSend) << received << " of " << inLine;
    }
}

// Another thread's raw access can take the byte between the wait for it and the read.
TEST_F(SerialCalls, AnAnswerThatWasTakenIsWaitedForAgain)
{
    SerialDriver driver(printer.name(), 57600, StopBits::one);
    driver.open();
    const auto answers = printer.play([](wire::Connection& line) {
        receiveBytes(line, 5);
        line.send("\x06");
    });
    calls.terminalReadErrors = {EAGAIN, EINTR};
    EXPECT_EQ(driver.sendCommand("\x1C\x01\xE0\x04"), 0x06);
    EXPECT_TRUE(calls.terminalReadErrors.empty());
}

TEST_F(SerialCalls, RawBytesThatAreThereAreReadInSpiteOfASignal)
{
    SerialDriver driver(printer.name(), 57600, StopBits::one);
    driver.open();
    printer.line().send("\x06");
    printer.waitUntilDelivered(1);
    calls.terminalReadErrors = {EINTR};
    LinkDriver::Byte byte = 0;
    EXPECT_EQ(driver.readRaw(&byte, 1, &byte), 1);
    EXPECT_EQ(byte, 0x06);
}

TEST_F(SerialCalls, AWaitForAnAnswerThatFailsIsAFailure)
{
    SerialDriver driver(printer.name(), 57600, StopBits::one);
    driver.open();
    calls.waitErrors = {EINTR, ENOMEM};
    try {
        driver.readByte(false, 5000);
        FAIL() << "the wait has failed";
    } catch (const Telvo06FMException& failure) {
        EXPECT_EQ(failure.code, -10201);
    }
}

TEST_F(SerialCalls, AReadThatFailsIsAFailure)
{
    SerialDriver driver(printer.name(), 57600, StopBits::one);
    driver.open();
    printer.line().send("x");
    calls.terminalReadErrors = {EIO};
    try {
        driver.readByte(false, 5000);
        FAIL() << "the port has failed";
    } catch (const Telvo06FMException& failure) {
        EXPECT_EQ(failure.code, -10201);
    }
}

TEST_F(SerialCalls, AReadThatFailsIsNotRestedAfter)
{
    CSerial port;
    ASSERT_TRUE(port.openPort(R"(\\.\)" + printer.name(), 0));
    printer.line().send("x");
    calls.terminalReadErrors = {EIO};
    std::array<char, 100> bytes{};
    std::size_t count = 0;
    EXPECT_FALSE(port.readPort(bytes, 5000ms, count));
    EXPECT_EQ(calls.rests, 0);
}

// How often the library rests while so many bytes of a reply of 100 bytes come late.
class LateBytes : public SerialCalls
{
protected:
    int restsWithMissing(std::size_t missing)
    {
        SerialDriver driver(printer.name(), 57600, StopBits::one);
        driver.open();
        const std::string data(100, 'd');
        // The length byte is 99, a "c". The 100 characters cancel out in pairs: 3A, 63 and 03 are left of the
        // checksum.
        const std::string block = ":c" + data + "\x03\x5A";
        const std::size_t early = block.size() - missing;
        printer.line().send(block.substr(0, early));
        printer.waitUntilDelivered(static_cast<int>(early));
        bool isSent = false;
        calls.whenTerminalIsEmpty = [&] {
            if (!isSent) {
                printer.line().send(block.substr(early));
                isSent = true;
            }
        };
        calls.rests = 0;
        EXPECT_EQ(driver.queryStrict("\x1C\x01\x9F\x04"), data);
        EXPECT_TRUE(isSent);
        return calls.rests;
    }
};

TEST_F(LateBytes, AreGatheredInARestWhileManyAreMissing)
{
    EXPECT_EQ(restsWithMissing(24), 1);
}

// Of the data itself one has come: the start and the length are read by themselves.
TEST_F(LateBytes, AreGatheredBehindASingleOneToo)
{
    EXPECT_GE(restsWithMissing(101), 1);
}

TEST_F(LateBytes, AreTakenAtOnceWhenFewAreMissing)
{
    EXPECT_EQ(restsWithMissing(23), 0);
}

// A host without a terminal of its own must not get the printer's: it would be ended by a hang-up of the
// line.
TEST_F(SerialCalls, AnOpenPortDoesNotBecomeTheTerminalOfTheHost)
{
    const auto host = [&] {
        ::setsid();
        SerialDriver driver(printer.name(), 57600, StopBits::one);
        driver.open();
        const bool hasTerminal = ::open("/dev/tty", O_RDONLY | O_CLOEXEC) != -1 || errno != ENXIO;
        ::_exit(hasTerminal ? 1 : 0);
    };
    EXPECT_EXIT(host(), ::testing::ExitedWithCode(0), "");
}

} // namespace
} // namespace telvofm::test
