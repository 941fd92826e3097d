#include "link/serial_port_ex.h"

#include "link/telvo06fm_exception.h"

namespace telvofm {
namespace {

constexpr std::chrono::milliseconds writeLimit{15000};
constexpr char eventCharacter = 0x0A;
constexpr char endOfFileCharacter = 0x04;

} // namespace

void CSerialEx::openLine(const std::string& name, std::uint32_t baud, StopBits stopBits)
{
    closePort();
    try {
        require(openPort(name, baud / 2));
        require(setLine(baud, stopBits));
        require(setBlockingReads());
        require(setHardwareHandshake());
        require(setSpecialCharacters(eventCharacter, endOfFileCharacter));
        require(setEventMask());
        require(purge());
        require(raiseDataTerminalReady());
    } catch (...) {
        closePort();
        throw;
    }
}

void CSerialEx::purgeLine()
{
    require(purge());
}

// A port that has gone away is a failure, and not one that is never ready.
bool CSerialEx::isDataSetReady()
{
    ModemStatus status{};
    require(modemStatus(status));
    return status.dataSetReady;
}

void CSerialEx::writeToLine(char byte)
{
    require(writePort(byte, writeLimit));
}

std::size_t CSerialEx::readLine(std::span<char> buffer, std::chrono::milliseconds limit)
{
    std::size_t count = 0;
    require(readPort(buffer, limit, count));
    return count;
}

bool CSerialEx::isClearToSend()
{
    ModemStatus status{};
    return modemStatus(status) && status.clearToSend;
}

void CSerialEx::require(bool succeeded)
{
    constexpr std::uint32_t portMissing = 2;
    if (!succeeded) {
        throw Telvo06FMException(lastError() == portMissing ? code::portMissing : code::transportFailure);
    }
}

} // namespace telvofm
