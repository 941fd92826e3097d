// A till on a socket of its own, which says what it likes and hears what comes.
#pragma once

#include "tests/system/till_bytes.h"
#include "tests/wire/loopback.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace telvofm::test {

class RawTill
{
public:
    explicit RawTill(int port) : connection(wire::connectTo(static_cast<std::uint16_t>(port)))
    {
        EXPECT_TRUE(connection.isOpen());
    }

    void say(std::string_view bytes) const { connection.send(bytes); }

    // So many bytes; fewer when the connection ends, or the printer is silent for so long that the test
    // fails.
    [[nodiscard]] std::string hear(std::size_t size) const
    {
        std::string bytes;
        while (bytes.size() < size) {
            const auto more = connection.receive(size - bytes.size(), longest);
            if (!more || more->empty()) {
                break;
            }
            bytes += *more;
        }
        return bytes;
    }

    // What has come so far.
    [[nodiscard]] std::string heard() const { return connection.receive(256, {}).value_or(""); }

    // Whether the printer closes the connection before it says anything more.
    [[nodiscard]] bool isClosed() const { return !connection.receive(1, longest); }

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
    void reset() { connection.reset(); }

    // Hangs up so that the printer sees nothing; whether it could.
    [[nodiscard]] bool vanish() { return connection.vanish(); }

private:
    static constexpr std::chrono::seconds longest{30};

    wire::Connection connection;
};

} // namespace telvofm::test
