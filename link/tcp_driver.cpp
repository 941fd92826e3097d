#include "link/tcp_driver.h"

#include "link/raw_log.h"

#include <algorithm>
#include <cstdio>
#include <utility>

namespace telvofm {
namespace {

constexpr LinkDriver::Byte ready = 0x11; // the printer's ready byte, and the keep-alive probe
constexpr LinkDriver::Byte busy = 0x13;
constexpr std::chrono::milliseconds waitStep{3000};
constexpr std::string_view defaultPort = "64000";

} // namespace

TcpDriver::TcpDriver(std::string address) : BlockProtocol(std::move(address), tcpRules) {}

void TcpDriver::open()
{
    if (!Socket::startUp()) {
        throw Telvo06FMException(code::transportFailure);
    }
    const auto colon = portName.find(':');
    const std::string host = portName.substr(0, colon);
    std::string port(colon == std::string::npos ? "" : portName.substr(colon + 1));
    if (port.empty()) {
        port = defaultPort;
    }
    std::printf("host: %s port: %s\n", host.c_str(), port.c_str());
    std::fflush(stdout);
    try {
        connectToFirstThatAccepts(host, port);
    } catch (...) {
        Socket::cleanUp();
        throw;
    }
    isOpen = true;
}

void TcpDriver::connectToFirstThatAccepts(const std::string& host, const std::string& port)
{
    const auto addresses = Socket::resolve(host, port);
    if (addresses) {
        for (const SocketAddress& address : *addresses) {
            if (!socket.create(address)) {
                break;
            }
            if (socket.connect(address)) {
                return;
            }
            socket.close();
        }
    }
    throw Telvo06FMException(code::transportFailure);
}

void TcpDriver::close()
{
    if (isOpen) {
        socket.close();
        Socket::cleanUp();
        isOpen = false;
    }
}

LinkDriver::Byte TcpDriver::sendCommand(std::string_view request)
{
    try {
        return BlockProtocol::sendCommand(request);
    } catch (const Telvo06FMException&) {
        throw;
    } catch (const std::exception&) {
        // Only here: the other exchanges let a run-time exception pass, which is meant.
        throw Telvo06FMException(code::uploadRefusedOrRuntimeFailure);
    }
}

std::size_t TcpDriver::writeRaw(std::string_view bytes)
{
    sendRecorded(bytes);
    return bytes.size();
}

LinkDriver::Byte TcpDriver::readByte(bool passThrough, std::int64_t waitMs)
{
    bool probeSent = false;
    for (;;) {
        while (unread.empty()) {
            waitForBytes(waitMs, probeSent);
        }
        const auto byte = static_cast<Byte>(unread.front());
        unread = unread.subspan(1);
        if (passThrough || waitMs != 0 || (byte != ready && byte != busy)) {
            return byte;
        }
        if (byte == ready && probeSent) {
            throw Telvo06FMException(code::timeout);
        }
        probeSent = false;
    }
}

// One step of waiting: afterwards bytes are there to read, or the probe has been sent.
void TcpDriver::waitForBytes(std::int64_t waitMs, bool& probeSent)
{
    const auto limit = waitMs == 0 ? waitStep : std::chrono::milliseconds(waitMs);
    switch (socket.waitReadable(limit)) {
    case Socket::Wait::failed:
        throw Telvo06FMException(code::transportFailure);
    case Socket::Wait::silent:
        if (waitMs != 0 || probeSent) {
            throw Telvo06FMException(code::timeout);
        }
        writeProtocolByte(ready);
        probeSent = true;
        return;
    case Socket::Wait::readable:
        break;
    }
    const std::ptrdiff_t received = socket.receive(inputBuffer);
    if (received <= 0) {
        // The printer is gone: waiting on would spin, as a closed socket is always readable.
        throw Telvo06FMException(code::transportFailure);
    }
    unread = std::span<const char>(inputBuffer).first(static_cast<std::size_t>(received));
    rawLog().record(RawLog::received, {unread.data(), unread.size()});
}

void TcpDriver::beginTry(Exchange /*exchange*/)
{
    unread = {};
}

void TcpDriver::writeProtocolByte(Byte byte)
{
    const char single = static_cast<char>(byte);
    sendRecorded({&single, 1});
}

LinkDriver::Byte TcpDriver::readAnswerByte()
{
    return readByte(false, 0);
}

void TcpDriver::readData(char* target, std::size_t count)
{
    while (count > 0) {
        bool probeSent = false;
        while (unread.empty()) {
            waitForBytes(0, probeSent);
        }
        const std::size_t taken = std::min(count, unread.size());
        target = std::copy_n(unread.begin(), taken, target);
        unread = unread.subspan(taken);
        count -= taken;
    }
}

void TcpDriver::sendRecorded(std::string_view bytes)
{
    rawLog().record(RawLog::sent, bytes);
    if (!socket.send(bytes)) {
        throw Telvo06FMException(code::transportFailure);
    }
}

} // namespace telvofm
