// Takes the place of link/serial_port_posix.cpp: a port whose line is the wire in memory.
#include "link/serial_port.h"
#include "tests/sweep/faulty_wire.h"

namespace telvofm {

using test::sweep::FaultyWire;
using test::sweep::wire;

namespace {

constexpr std::uint32_t someFailure = 5;

} // namespace

bool CSerial::openPort(const std::string& /*name*/, std::uint32_t /*queueSize*/)
{
    handle = 1;
    return true;
}

void CSerial::closePort()
{
    handle = closed;
}

bool CSerial::setLine(std::uint32_t /*baud*/, StopBits /*stopBits*/)
{
    return true;
}

bool CSerial::setBlockingReads()
{
    return true;
}

bool CSerial::setHardwareHandshake()
{
    return true;
}

bool CSerial::setSpecialCharacters(char /*event*/, char /*endOfFile*/)
{
    return true;
}

bool CSerial::setEventMask()
{
    return true;
}

bool CSerial::purge()
{
    return outcome(wire().purge());
}

bool CSerial::raiseDataTerminalReady()
{
    return true;
}

bool CSerial::modemStatus(ModemStatus& status)
{
    status = {.clearToSend = wire().isClearToSend(), .dataSetReady = true};
    return true;
}

bool CSerial::writePort(char byte, std::chrono::milliseconds limit)
{
    return outcome(wire().write(static_cast<unsigned char>(byte), limit));
}

bool CSerial::readPort(std::span<char> buffer, std::chrono::milliseconds limit, std::size_t& count)
{
    count = 0;
    const auto waited = wire().wait(limit);
    if (waited != FaultyWire::Wait::silence) {
        count = wire().take(buffer);
    }
    return outcome(waited != FaultyWire::Wait::broken);
}

std::string CSerial::identity(const std::string& name)
{
    return name;
}

std::chrono::milliseconds CSerial::now()
{
    return wire().now();
}

void CSerial::pause(std::chrono::milliseconds time)
{
    wire().pause(time);
}

bool CSerial::outcome(bool succeeded)
{
    if (!succeeded) {
        error = someFailure;
    }
    return succeeded;
}

} // namespace telvofm
