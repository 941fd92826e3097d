// The printer's end of the wire: a listening socket on the loopback address, and the byte connection that a
// script is played on. There is one implementation per platform.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace wire {

class Connection
{
public:
    Connection() = default;
    explicit Connection(std::intptr_t openHandle, bool isSocket = true) : handle(openHandle), socket(isSocket)
    {
    }
    Connection(Connection&& other) noexcept;
    Connection& operator=(Connection&& other) noexcept;
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    ~Connection() { close(); }

    [[nodiscard]] bool isOpen() const { return handle != -1; }
    void send(std::string_view bytes) const;
    // At most `count` bytes; an empty text when nothing comes in time; nothing when the other end has closed.
    [[nodiscard]] std::optional<std::string> receive(std::size_t count,
                                                     std::chrono::milliseconds limit) const;
    void close();
    // Hangs up so that the other end sees an error instead of an end.
    void reset();
    // Hangs up so that the other end sees nothing, as when a machine has lost its power; false when this
    // system or its user may not do that.
    bool vanish();

private:
    std::intptr_t handle = -1;
    bool socket = true;
};

class Listener
{
public:
    // One that does not listen refuses every connection, and no other program can take its port meanwhile.
    explicit Listener(bool listens = true);
    ~Listener();
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;

    [[nodiscard]] std::uint16_t port() const { return boundPort; }
    // A closed connection when none comes in time.
    [[nodiscard]] Connection accept(std::chrono::milliseconds limit) const;

private:
    std::intptr_t handle = -1;
    std::uint16_t boundPort = 0;
};

// To whoever listens on the loopback address; closed when nobody does.
Connection connectTo(std::uint16_t port);

// A pseudo-terminal: the connection is its controlling end, `path` the terminal's name. Closed where there is
// none.
Connection openPseudoTerminal(std::string& path);

// A variable of this process's environment.
void setEnvironment(const std::string& name, const std::string& value);

} // namespace wire
