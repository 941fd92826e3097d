#include "tests/fuzz/hostile_link.h"
#include "tests/unit/socket_scripted.h"

#include <array>

namespace telvofm::fuzz {
namespace {

using test::Event;
using test::network;

class HostileTcp final : public HostileLink
{
public:
    void begin() override
    {
        test::resetNetwork();
        network().keepsCalls = false;
    }
    void say(const std::string& bytes) override { network().events.push_back({Event::Kind::bytes, bytes}); }
    void fallSilent(std::chrono::milliseconds /*lasting*/) override
    {
        network().events.push_back({Event::Kind::silence, {}});
    }
    void breakDown(unsigned choice) override
    {
        constexpr std::array kinds = {Event::Kind::closed, Event::Kind::brokenRead, Event::Kind::brokenWait};
        network().events.push_back({kinds[choice % kinds.size()], {}});
    }
    void throwOnce() override { network().events.push_back({Event::Kind::throwing, "thrown by the socket"}); }
    void disturb(unsigned choice) override
    {
        network().failingSend = static_cast<int>(choice % 4);
        switch (choice / 4 % 8) {
        case 0:
            network().startsUp = false;
            break;
        case 1:
            network().addresses.reset();
            break;
        case 2:
            network().refusing = {1};
            break;
        case 3:
            network().withoutSocket = {1};
            break;
        default:
            break;
        }
    }
};

} // namespace

HostileLink& hostileTcp()
{
    static HostileTcp link;
    return link;
}

int sendsOverTcp()
{
    return network().sends;
}

} // namespace telvofm::fuzz
