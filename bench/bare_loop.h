// What an item sale costs at least: the system calls that the library makes for one, and nothing around them.
// There is one implementation per platform.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace bench {

class BareLoop
{
public:
    // Connects to a port of the loopback address.
    explicit BareLoop(std::uint16_t port);
    ~BareLoop();
    BareLoop(const BareLoop&) = delete;
    BareLoop& operator=(const BareLoop&) = delete;

    // Send, send, wait, receive; true when the printer accepts.
    [[nodiscard]] bool exchange(std::string_view request, char checksum) const;
    // Open, append, close.
    static void appendToFile(const std::string& path, std::string_view line);

private:
    std::uintptr_t handle; // wide enough for either platform
};

} // namespace bench
