#include "link/serial_driver.h"

#include "link/raw_log.h"

namespace telvofm {
namespace {

constexpr std::chrono::milliseconds answerLimit{15000};

// The name as the port layer takes it: with the prefix of the device names in front of COM.
std::string deviceName(std::string_view name)
{
    return std::string(name.substr(0, 3) == "COM" ? R"(\\.\)" : "").append(name);
}

} // namespace

SerialDriver::SerialDriver(std::string_view name, std::uint32_t baud, StopBits stopBits)
    : BlockProtocol(deviceName(name), serialRules), lineBaud(baud), lineStopBits(stopBits)
{
}

void SerialDriver::open()
{
    isOpen = false;
    startAnew();
    openLine(portName, lineBaud, lineStopBits);
    isOpen = true;
}

void SerialDriver::close()
{
    if (isOpen) {
        closePort();
        isOpen = false;
    }
}

std::size_t SerialDriver::writeRaw(std::string_view bytes)
{
    requireOpen();
    if (!isClearToSend()) {
        throw Telvo06FMException(code::portNotReady);
    }
    for (const char byte : bytes) {
        if (wasCut()) {
            endIfInterrupted(); // what is left of a long request
        }
        writeProtocolByte(static_cast<Byte>(byte));
    }
    return bytes.size();
}

LinkDriver::Byte SerialDriver::readByte(bool /*passThrough*/, std::int64_t waitMs)
{
    char byte = 0;
    if (readLine({&byte, 1}, std::chrono::milliseconds(waitMs)) == 0) {
        throw Telvo06FMException(code::timeout);
    }
    rawLog().record(RawLog::received, {&byte, 1});
    return static_cast<Byte>(byte);
}

std::int64_t SerialDriver::readRaw(Byte* buffer, std::int64_t count, const void* marker)
{
    requireOpen();
    return LinkDriver::readRaw(buffer, count, marker);
}

std::string SerialDriver::portIdentity(std::string_view name)
{
    return identity(deviceName(name));
}

void SerialDriver::beginTry(Exchange exchange)
{
    requireOpen();
    if (exchange == Exchange::strictQuery) {
        return;
    }
    if (exchange == Exchange::query) {
        constexpr std::chrono::milliseconds printerRest{50};
        pause(printerRest);
    }
    purgeLine();
}

// Without a look at CTS, unlike the beginning of a write: this is meant.
void SerialDriver::writeProtocolByte(Byte byte)
{
    const char single = static_cast<char>(byte);
    waitForDataSetReady();
    writeToLine(single);
    rawLog().record(RawLog::sent, {&single, 1});
}

// No limit in time, and at first no pause between looks: a line that steers the flow is off for moments. A
// printer that is switched off holds it off for hours, and must not take a processor for them.
void SerialDriver::waitForDataSetReady()
{
    constexpr std::int64_t looksWithoutPause = 1000;
    constexpr std::chrono::milliseconds rest{1};
    for (std::int64_t looks = 1; !isDataSetReady(); ++looks) {
        endIfInterrupted();
        if (looks > looksWithoutPause) {
            pause(rest);
        }
    }
}

LinkDriver::Byte SerialDriver::readAnswerByte()
{
    char byte = 0;
    readData(&byte, 1);
    return static_cast<Byte>(byte);
}

void SerialDriver::readData(char* target, std::size_t count)
{
    requireOpen();
    auto silentSince = now();
    for (;;) {
        const std::size_t taken = readLine({target, count}, answerLimit);
        if (taken > 0) {
            rawLog().record(RawLog::received, {target, taken});
            target += taken;
            count -= taken;
            if (count == 0) {
                return;
            }
        }
        endIfInterrupted();
        if (taken > 0 || !isClearToSend()) {
            silentSince = now();
        } else if (now() - silentSince > answerLimit) {
            throw Telvo06FMException(code::silentWithClearToSend);
        }
    }
}

void SerialDriver::requireOpen() const
{
    if (!isOpen) {
        throw Telvo06FMException(code::portNotReady);
    }
}

} // namespace telvofm
