// One stream socket of the platform, call by call: each function is one call of the socket interface,
// repeated only when a signal interrupts it. The TCP driver makes the protocol out of these; a test can put
// scripted ones in their place. There is one implementation per platform.
#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace telvofm {

// One resolved address, as the platform wants it back.
struct SocketAddress
{
    int family;
    int type;
    int protocol;
    std::size_t size;
    alignas(8) std::array<std::byte, 128> storage;
};

class Socket
{
public:
    enum class Wait
    {
        readable,
        silent,
        failed
    };

    // The socket interface of the process; each successful startUp is paired with one cleanUp.
    static bool startUp();
    static void cleanUp();
    // Nothing when the name does not resolve.
    static std::optional<std::vector<SocketAddress>> resolve(const std::string& host,
                                                             const std::string& port);

    bool create(const SocketAddress& address);
    [[nodiscard]] bool connect(const SocketAddress& address) const;
    void close();
    // Ends what other threads do with the connection; the socket stays theirs until it is closed.
    void shutDown() const;
    // One send of all bytes; false when it fails. It never raises a signal in the host program.
    [[nodiscard]] bool send(std::string_view bytes) const;
    [[nodiscard]] Wait waitReadable(std::chrono::milliseconds limit) const;
    // The number of bytes received; 0 when the peer has closed, negative on failure.
    [[nodiscard]] std::ptrdiff_t receive(std::span<char> buffer) const;

private:
    static constexpr std::uintptr_t invalid = ~std::uintptr_t{0};

    std::uintptr_t handle = invalid;
};

} // namespace telvofm
