// A serial port that follows a script: link/serial_port.h without a port and with a clock of its own, so that
// waits of 15 seconds take no time. Every call is noted down in order.
#pragma once

#include "link/serial_port.h"

#include <deque>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace telvofm::test {

// What a read meets once the bytes that are there have been taken.
struct PortEvent
{
    enum class Kind
    {
        bytes,
        silence, // the wait ends without a byte; the clock has moved by `lasting`
        failure, // the read fails with `error`
        throwing // the standard library throws, with `bytes` as its text
    };

    Kind kind;
    std::string bytes;
    std::chrono::milliseconds lasting{0};
    std::uint32_t error = 0;
};

inline PortEvent arrive(std::string bytes)
{
    return {.kind = PortEvent::Kind::bytes, .bytes = std::move(bytes)};
}
inline PortEvent silence(std::chrono::milliseconds lasting)
{
    return {.kind = PortEvent::Kind::silence, .bytes = {}, .lasting = lasting};
}
inline PortEvent brokenRead(std::uint32_t error)
{
    return {.kind = PortEvent::Kind::failure, .bytes = {}, .error = error};
}
inline PortEvent throwing(std::string text)
{
    return {.kind = PortEvent::Kind::throwing, .bytes = std::move(text)};
}

inline constexpr CSerial::ModemStatus bothOn{.clearToSend = true, .dataSetReady = true};
inline constexpr CSerial::ModemStatus onlyDsr{.clearToSend = false, .dataSetReady = true};
inline constexpr CSerial::ModemStatus onlyCts{.clearToSend = true, .dataSetReady = false};

struct ScriptedPort
{
    // Bytes that have been received and not yet read; a purge discards them.
    std::string waiting;
    std::deque<PortEvent> events;
    // What successive looks at the modem lines see; afterwards both are on.
    std::deque<CSerial::ModemStatus> looks;
    std::chrono::milliseconds clock{1000};

    // Every call in order: "open \\.\COM1 28800", "purge", "look", "write 1c 15000", "read 1 15000", ...
    std::vector<std::string> calls;
    bool keepsCalls = true; // who makes millions of them does not
    int writes = 0;         // counted always

    // The call of that name fails with that error, after `before` calls of the name that succeed.
    void fail(std::string name, std::uint32_t error, int before = 0);
    // What another thread does while a call of that name runs, after `before` others of the name.
    void meanwhile(std::string name, std::function<void()> action, int before = 0);
    void play(std::initializer_list<PortEvent> script) { events.assign(script); }
    std::vector<std::string> takeCalls() { return std::exchange(calls, {}); }
    // The bytes that were written, as they are.
    [[nodiscard]] std::string written() const;
    [[nodiscard]] std::ptrdiff_t count(const std::string& call) const;

    std::string failingCall;
    std::uint32_t failingError = 0;
    int callsBeforeFailure = 0;
    std::string accompaniedCall;
    std::function<void()> accompaniment;
    int callsBeforeAccompaniment = 0;
};

// The port of the running test; `resetPort` gives each test its own.
ScriptedPort& port();
void resetPort();

} // namespace telvofm::test
