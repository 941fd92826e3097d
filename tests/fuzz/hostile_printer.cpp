#include "tests/fuzz/hostile_printer.h"

#include "tests/fuzz/hostile_link.h"
#include "tests/unit/bytes.h"

namespace telvofm::fuzz {
namespace {

template <typename Do>
void onBothLinks(Do act)
{
    act(hostileTcp());
    act(hostileSerial());
}

std::string answerFrom(FuzzedBytes& input)
{
    constexpr std::size_t kinds = 5;
    switch (input.choice(kinds)) {
    case 0:
        return "\x06";
    case 1:
        return {'\x15', static_cast<char>(input.byte())};
    case 2:
    case 3: {
        const std::string_view data = input.text();
        const char terminator = (input.byte() & 1U) == 0 ? test::etx : test::etb;
        return data.empty() ? "\x04" : test::block(data, terminator);
    }
    default:
        return std::string(input.text());
    }
}

} // namespace

std::string letThePrinterSay(FuzzedBytes& input)
{
    constexpr std::size_t mostEvents = 8;
    constexpr std::size_t kinds = 8;
    onBothLinks([](HostileLink& link) { link.begin(); });
    std::string said;
    for (std::size_t left = input.choice(mostEvents); left > 0; --left) {
        const std::size_t kind = input.choice(kinds);
        if (kind == 0) {
            const std::chrono::milliseconds lasting(input.number<std::uint16_t>());
            onBothLinks([&](HostileLink& link) { link.fallSilent(lasting); });
        } else if (kind == 1) {
            const unsigned choice = input.byte();
            onBothLinks([&](HostileLink& link) { link.breakDown(choice); });
        } else if (kind == 2) {
            const unsigned choice = input.byte();
            onBothLinks([&](HostileLink& link) { link.disturb(choice); });
        } else if (kind == 3) {
            onBothLinks([](HostileLink& link) { link.throwOnce(); });
        } else if (const std::string answer = answerFrom(input); !answer.empty()) {
            said += answer;
            onBothLinks([&](HostileLink& link) { link.say(answer); });
        }
    }
    return said;
}

void letThePrinterAccept()
{
    onBothLinks([](HostileLink& link) {
        link.begin();
        link.say("\x06");
    });
}

} // namespace telvofm::fuzz
