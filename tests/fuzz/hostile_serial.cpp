#include "tests/fuzz/hostile_link.h"
#include "tests/unit/serial_port_scripted.h"

#include <array>

namespace telvofm::fuzz {
namespace {

using test::port;
using test::PortEvent;

constexpr std::array<std::uint32_t, 4> errors = {2, 5, 995, 1167};

class HostileSerial final : public HostileLink
{
public:
    void begin() override
    {
        const auto now = port().clock; // goes on, as time does
        test::resetPort();
        port().clock = now;
        port().keepsCalls = false;
    }
    void say(const std::string& bytes) override
    {
        port().events.push_back({.kind = PortEvent::Kind::bytes, .bytes = bytes});
    }
    void fallSilent(std::chrono::milliseconds lasting) override
    {
        port().events.push_back({.kind = PortEvent::Kind::silence, .bytes = {}, .lasting = lasting});
    }
    void breakDown(unsigned choice) override
    {
        port().events.push_back(
            {.kind = PortEvent::Kind::failure, .bytes = {}, .error = errors[choice % errors.size()]});
    }
    void throwOnce() override
    {
        port().events.push_back({.kind = PortEvent::Kind::throwing, .bytes = "thrown by the port"});
    }
    void disturb(unsigned choice) override
    {
        constexpr std::array calls = {"open", "line", "purge", "raise DTR", "look", "write", "read"};
        port().looks.assign(choice % 8, choice % 2 == 0 ? test::onlyCts : test::onlyDsr);
        if (choice / 8 % 2 == 1) {
            port().fail(calls[choice % calls.size()], errors[choice % errors.size()],
                        static_cast<int>(choice % 3));
        }
    }
};

} // namespace

HostileLink& hostileSerial()
{
    static HostileSerial link;
    return link;
}

int sendsOnSerial()
{
    return port().writes;
}

} // namespace telvofm::fuzz
