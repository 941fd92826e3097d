#include "link/tcp_driver.h"

#include "link/raw_log.h"
#include "link/standard_output.h"

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
    close(); // a link that is opened again loses no socket
    startAnew();
    input.discard(); // what the connection before has left behind
    if (!Socket::startUp()) {
        throw Telvo06FMException(code::transportFailure);
    }
    try {
        connectToFirstThatAccepts();
    } catch (...) {
        Socket::cleanUp();
        throw;
    }
    isOpen = true;
}

void TcpDriver::connectToFirstThatAccepts()
{
    const auto colon = portName.find(':');
    const std::string host = portName.substr(0, colon);
    std::string port(colon == std::string::npos ? "" : portName.substr(colon + 1));
    if (port.empty()) {
        port = defaultPort;
    }
    writeLine("host: " + host + " port: " + port);
    const auto addresses = Socket::resolve(host, port);
    if (addresses) {
        for (const SocketAddress& address : *addresses) {
            endIfInterrupted();
            if (!createSocket(address)) {
                break;
            }
            if (socket.connect(address)) {
                return;
            }
            closeSocket();
        }
    }
    throw Telvo06FMException(code::transportFailure);
}

void TcpDriver::close()
{
    if (isOpen) {
        closeSocket();
        Socket::cleanUp();
        isOpen = false;
    }
}

// Also under a connecting that takes its time.
void TcpDriver::cut()
{
    LinkDriver::cut();
    const std::scoped_lock lock(socketChanges);
    socket.shutDown();
}

bool TcpDriver::createSocket(const SocketAddress& address)
{
    const std::scoped_lock lock(socketChanges);
    return socket.create(address);
}

void TcpDriver::closeSocket()
{
    const std::scoped_lock lock(socketChanges);
    socket.close();
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
        char received = 0;
        while (input.take({&received, 1}) == 0) {
            waitForBytes(waitMs, probeSent);
        }
        const auto byte = static_cast<Byte>(received);
        if (passThrough || waitMs != 0 || (byte != ready && byte != busy)) {
            return byte;
        }
        if (byte == ready && probeSent) {
            throw Telvo06FMException(code::timeout);
        }
        endIfInterrupted();
        probeSent = false;
    }
}

// One step of waiting: afterwards bytes may be there to take, or the probe has been sent.
void TcpDriver::waitForBytes(std::int64_t waitMs, bool& probeSent)
{
    const auto limit = waitMs == 0 ? waitStep : std::chrono::milliseconds(waitMs);
    const auto fillings = input.fillings();
    switch (socket.waitReadable(limit)) {
    case Socket::Wait::failed:
        throw Telvo06FMException(code::transportFailure);
    case Socket::Wait::silent:
        endIfInterrupted();
        if (waitMs != 0 || probeSent) {
            throw Telvo06FMException(code::timeout);
        }
        writeProtocolByte(ready);
        probeSent = true;
        return;
    case Socket::Wait::readable:
        break;
    }
    input.fillOnceSince(fillings, [this](std::span<char> room) {
        const std::ptrdiff_t received = socket.receive(room);
        if (received <= 0) {
            // The printer is gone: waiting on would spin, as a closed socket is always readable.
            throw Telvo06FMException(code::transportFailure);
        }
        const auto count = static_cast<std::size_t>(received);
        rawLog().record(RawLog::received, {room.data(), count});
        return count;
    });
}

void TcpDriver::beginTry(Exchange /*exchange*/)
{
    input.discard();
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
    std::span<char> missing(target, count);
    bool probeSent = false;
    for (;;) {
        const std::size_t taken = input.take(missing);
        missing = missing.subspan(taken);
        if (missing.empty()) {
            return;
        }
        if (taken > 0) {
            endIfInterrupted();
            probeSent = false;
        }
        waitForBytes(0, probeSent);
    }
}

void TcpDriver::sendRecorded(std::string_view bytes)
{
    rawLog().record(RawLog::sent, bytes);
    // One that was cut off may have sent a part, which the platform reports as a success.
    if (!socket.send(bytes) || wasCut()) {
        throw Telvo06FMException(code::transportFailure);
    }
}

} // namespace telvofm
