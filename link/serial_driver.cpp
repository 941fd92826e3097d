#include "link/serial_driver.h"

#include "link/raw_log.h"

#include <cstdio>

namespace telvofm {
namespace {

constexpr std::chrono::milliseconds answerLimit{15000};

// The name as the port layer takes it: with the prefix of the device names in front of COM.
std::string deviceName(std::string_view name)
{
    return std::string(name.substr(0, 3) == "COM" ? R"(\\.\)" : "").append(name);
}

// Runs an exchange; what the standard library throws in it is printed and becomes a code of our own.
template <typename Exchange>
auto translated(Exchange exchange)
{
    try {
        return exchange();
    } catch (const Telvo06FMException&) {
        throw;
    } catch (const std::exception& failure) {
        std::puts(failure.what());
        std::fflush(stdout);
        throw Telvo06FMException(code::serialRuntimeFailure);
    }
}

} // namespace

SerialDriver::SerialDriver(std::string_view name, std::uint32_t baud, StopBits stopBits)
    : BlockProtocol(deviceName(name), serialRules), lineBaud(baud), lineStopBits(stopBits)
{
}

void SerialDriver::open()
{
    isOpen = false;
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

LinkDriver::Byte SerialDriver::sendCommand(std::string_view request)
{
    return translated([&] { return BlockProtocol::sendCommand(request); });
}

void SerialDriver::sendBlocks(std::string_view data, bool lastPart)
{
    translated([&] { BlockProtocol::sendBlocks(data, lastPart); });
}

std::string SerialDriver::query(std::string_view request)
{
    return translated([&] { return BlockProtocol::query(request); });
}

std::string SerialDriver::queryStrict(std::string_view request)
{
    return translated([&] { return BlockProtocol::queryStrict(request); });
}

std::size_t SerialDriver::writeRaw(std::string_view bytes)
{
    requireOpen();
    if (!isClearToSend()) {
        throw Telvo06FMException(code::portNotReady);
    }
    for (const char byte : bytes) {
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
    writeWhenReady(single);
    rawLog().record(RawLog::sent, {&single, 1});
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
    while (count > 0) {
        const std::size_t taken = readLine({target, count}, answerLimit);
        if (taken > 0) {
            rawLog().record(RawLog::received, {target, taken});
            target += taken;
            count -= taken;
            silentSince = now();
        } else if (!isClearToSend()) {
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
