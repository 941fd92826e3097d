// A till on a socket of its own, which says what it likes and hears what comes.
#pragma once

#include "tests/system/till_bytes.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <string>
#include <string_view>
#include <sys/socket.h>
#include <unistd.h>

namespace telvofm::test {

class RawTill
{
public:
    explicit RawTill(int port) : connection(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0))
    {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(static_cast<std::uint16_t>(port));
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        EXPECT_EQ(::connect(connection, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
        constexpr timeval longest = {30, 0}; // so that a silent printer fails the test and does not hang it
        ::setsockopt(connection, SOL_SOCKET, SO_RCVTIMEO, &longest, sizeof longest);
        constexpr int on = 1;
        ::setsockopt(connection, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    }
    RawTill(const RawTill&) = delete;
    RawTill& operator=(const RawTill&) = delete;
    ~RawTill() { ::close(connection); }

    void say(std::string_view bytes) const
    {
        EXPECT_EQ(::send(connection, bytes.data(), bytes.size(), MSG_NOSIGNAL),
                  static_cast<ssize_t>(bytes.size()));
    }

    // So many bytes; fewer when the connection ends.
    [[nodiscard]] std::string hear(std::size_t size) const
    {
        std::string bytes(size, '\0');
        const ssize_t count = ::recv(connection, bytes.data(), bytes.size(), MSG_WAITALL);
        bytes.resize(count < 0 ? 0 : static_cast<std::size_t>(count));
        return bytes;
    }

    // What has come so far.
    [[nodiscard]] std::string heard() const
    {
        std::string bytes(256, '\0');
        const ssize_t count = ::recv(connection, bytes.data(), bytes.size(), MSG_DONTWAIT);
        bytes.resize(count < 0 ? 0 : static_cast<std::size_t>(count));
        return bytes;
    }

    // Whether the printer has closed the connection; waits for it or for a byte.
    [[nodiscard]] bool isClosed() const
    {
        char byte = 0;
        return ::recv(connection, &byte, 1, MSG_PEEK) == 0;
    }

    [[nodiscard]] bool isAccepted(unsigned char command, const std::vector<std::string>& fields = {}) const
    {
        say(request(command, fields));
        const std::string answer = hear(1);
        if (answer == "\x15") {
            ADD_FAILURE() << "refused with " << static_cast<int>(static_cast<unsigned char>(hear(1).at(0)));
        }
        return answer == "\x06";
    }

    // What a variable is; its line fits one block.
    [[nodiscard]] std::string variable(const std::string& name) const
    {
        say(request(0x92, {name}));
        const std::string head = hear(2);
        EXPECT_EQ(head.substr(0, 1), ":") << name;
        const std::string rest = hear(static_cast<unsigned char>(head.at(1)) + std::size_t{3});
        say("\x03");
        return rest.substr(0, rest.find('\r'));
    }

    // Hangs up so that the printer sees an error instead of an end.
    void reset() const
    {
        constexpr linger atOnce = {1, 0};
        ::setsockopt(connection, SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
    }

    [[nodiscard]] int socket() const { return connection; }

private:
    int connection;
};

} // namespace telvofm::test
