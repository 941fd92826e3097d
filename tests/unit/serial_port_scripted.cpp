#include "tests/unit/serial_port_scripted.h"

#include <algorithm>
#include <stdexcept>

namespace telvofm::test {
namespace {

// A script that has ended is a silent line whose printer holds its lines on; a mistake in a test must not
// wait for ever.
constexpr std::chrono::milliseconds silenceAtTheEnd{15001};

std::string hexadecimal(char byte)
{
    constexpr std::string_view digits = "0123456789abcdef";
    const auto value = static_cast<unsigned char>(byte);
    return {digits[value >> 4U], digits[value & 0x0FU]};
}

// Notes the call down; the error that it fails with, 0 when it succeeds.
std::uint32_t errorOf(const std::string& name, const std::string& arguments = {})
{
    ScriptedPort& current = port();
    if (current.keepsCalls) {
        current.calls.push_back(arguments.empty() ? name : name + " " + arguments);
    }
    if (current.accompaniment && name == current.accompaniedCall && current.callsBeforeAccompaniment-- == 0) {
        std::exchange(current.accompaniment, nullptr)();
    }
    if (name != current.failingCall || current.callsBeforeFailure-- > 0) {
        return 0;
    }
    current.failingCall.clear();
    return current.failingError;
}

std::string text(std::chrono::milliseconds time)
{
    return std::to_string(time.count());
}

} // namespace

void ScriptedPort::fail(std::string name, std::uint32_t error, int before)
{
    failingCall = std::move(name);
    failingError = error;
    callsBeforeFailure = before;
}

void ScriptedPort::meanwhile(std::string name, std::function<void()> action, int before)
{
    accompaniedCall = std::move(name);
    accompaniment = std::move(action);
    callsBeforeAccompaniment = before;
}

std::string ScriptedPort::written() const
{
    constexpr std::string_view prefix = "write ";
    constexpr int hexadecimalBase = 16;
    std::string bytes;
    for (const std::string& call : calls) {
        if (call.starts_with(prefix)) {
            bytes.push_back(
                static_cast<char>(std::stoi(call.substr(prefix.size(), 2), nullptr, hexadecimalBase)));
        }
    }
    return bytes;
}

std::ptrdiff_t ScriptedPort::count(const std::string& call) const
{
    return std::count(calls.begin(), calls.end(), call);
}

ScriptedPort& port()
{
    static ScriptedPort current;
    return current;
}

void resetPort()
{
    port() = ScriptedPort();
}

} // namespace telvofm::test

namespace telvofm {

using test::errorOf;
using test::port;
using test::PortEvent;

bool CSerial::openPort(const std::string& name, std::uint32_t queueSize)
{
    error = errorOf("open", name + " " + std::to_string(queueSize));
    handle = error == 0 ? 1 : closed;
    return error == 0;
}

void CSerial::closePort()
{
    if (handle != closed) {
        errorOf("close");
        handle = closed;
    }
}

bool CSerial::setLine(std::uint32_t baud, StopBits stopBits)
{
    error = errorOf("line", std::to_string(baud) + " " + std::to_string(static_cast<int>(stopBits)));
    return error == 0;
}

bool CSerial::setBlockingReads()
{
    error = errorOf("blocking reads");
    return error == 0;
}

bool CSerial::setHardwareHandshake()
{
    error = errorOf("handshake");
    return error == 0;
}

bool CSerial::setSpecialCharacters(char event, char endOfFile)
{
    error = errorOf("characters", test::hexadecimal(event) + " " + test::hexadecimal(endOfFile));
    return error == 0;
}

bool CSerial::setEventMask()
{
    error = errorOf("mask");
    return error == 0;
}

bool CSerial::purge()
{
    error = errorOf("purge");
    port().waiting.clear();
    return error == 0;
}

bool CSerial::raiseDataTerminalReady()
{
    error = errorOf("raise DTR");
    return error == 0;
}

bool CSerial::modemStatus(ModemStatus& status)
{
    error = errorOf("look");
    status = test::bothOn;
    if (!port().looks.empty()) {
        status = port().looks.front();
        port().looks.pop_front();
    }
    return error == 0;
}

bool CSerial::writePort(char byte, std::chrono::milliseconds limit)
{
    ++port().writes;
    error = errorOf("write", test::hexadecimal(byte) + " " + test::text(limit));
    return error == 0;
}

bool CSerial::readPort(std::span<char> buffer, std::chrono::milliseconds limit, std::size_t& count)
{
    error = errorOf("read", std::to_string(buffer.size()) + " " + test::text(limit));
    count = 0;
    test::ScriptedPort& current = port();
    if (error == 0 && current.waiting.empty() && limit.count() > 0) {
        PortEvent event = test::silence(test::silenceAtTheEnd);
        if (!current.events.empty()) {
            event = current.events.front();
            current.events.pop_front();
        }
        if (event.kind == PortEvent::Kind::throwing) {
            throw std::runtime_error(event.bytes);
        }
        if (event.kind == PortEvent::Kind::bytes) {
            current.waiting = event.bytes;
        }
        current.clock += event.lasting;
        error = event.error;
    }
    if (error != 0) {
        return false;
    }
    count = std::min(buffer.size(), current.waiting.size());
    std::copy_n(current.waiting.begin(), count, buffer.begin());
    current.waiting.erase(0, count);
    return true;
}

std::string CSerial::identity(const std::string& name)
{
    return name;
}

std::chrono::milliseconds CSerial::now()
{
    return port().clock;
}

void CSerial::pause(std::chrono::milliseconds time)
{
    errorOf("pause", test::text(time));
    port().clock += time;
}

} // namespace telvofm
