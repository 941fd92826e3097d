#include "tests/unit/socket_scripted.h"

#include <algorithm>
#include <stdexcept>

namespace telvofm::test {
namespace {

void note(std::string call)
{
    ScriptedNetwork& current = network();
    if (!current.keepsCalls) {
        return;
    }
    current.calls.push_back(std::move(call));
    if (current.accompaniment && current.calls.back().starts_with(current.accompaniedCall) &&
        current.callsBeforeAccompaniment-- == 0) {
        std::exchange(current.accompaniment, nullptr)();
    }
}

bool holds(const std::vector<int>& numbers, int number)
{
    return std::find(numbers.begin(), numbers.end(), number) != numbers.end();
}

std::string hexadecimal(std::string_view bytes)
{
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text;
    for (const char byte : bytes) {
        const auto value = static_cast<unsigned char>(byte);
        text.push_back(digits[value >> 4U]);
        text.push_back(digits[value & 0x0FU]);
    }
    return text;
}

} // namespace

void ScriptedNetwork::meanwhile(std::string call, std::function<void()> action, int before)
{
    accompaniedCall = std::move(call);
    accompaniment = std::move(action);
    callsBeforeAccompaniment = before;
}

ScriptedNetwork& network()
{
    static ScriptedNetwork current;
    return current;
}

void resetNetwork()
{
    network() = ScriptedNetwork();
}

} // namespace telvofm::test

namespace telvofm {

using test::Event;
using test::network;

bool Socket::startUp()
{
    test::note("startUp");
    return network().startsUp;
}

void Socket::cleanUp()
{
    test::note("cleanUp");
}

std::optional<std::vector<SocketAddress>> Socket::resolve(const std::string& host, const std::string& port)
{
    test::note("resolve " + host + " " + port);
    if (!network().addresses) {
        return std::nullopt;
    }
    std::vector<SocketAddress> addresses;
    for (int number = 1; number <= *network().addresses; ++number) {
        addresses.push_back({number, 0, 0, 0, {}}); // the family carries the number
    }
    return addresses;
}

bool Socket::create(const SocketAddress& address)
{
    test::note("create " + std::to_string(address.family));
    handle = 1;
    return !test::holds(network().withoutSocket, address.family);
}

bool Socket::connect(const SocketAddress& address) const
{
    test::note("connect " + std::to_string(address.family));
    return !test::holds(network().refusing, address.family);
}

void Socket::close()
{
    test::note("close");
    handle = invalid;
}

void Socket::shutDown() const
{
    test::note("shut down");
}

bool Socket::send(std::string_view bytes) const
{
    test::note(network().keepsCalls ? "send " + test::hexadecimal(bytes) : std::string());
    return ++network().sends != network().failingSend;
}

Socket::Wait Socket::waitReadable(std::chrono::milliseconds limit) const
{
    test::note("wait " + std::to_string(limit.count()));
    auto& events = network().events;
    // A script that has ended is a silent network; it must not become an endless one.
    if (events.empty() || events.front().kind == Event::Kind::silence) {
        if (!events.empty()) {
            events.pop_front();
        }
        return Wait::silent;
    }
    return events.front().kind == Event::Kind::brokenWait ? Wait::failed : Wait::readable;
}

std::ptrdiff_t Socket::receive(std::span<char> buffer) const
{
    test::note("receive " + std::to_string(buffer.size()));
    Event& event = network().events.front();
    if (event.kind == Event::Kind::throwing) {
        throw std::runtime_error(event.bytes);
    }
    if (event.kind != Event::Kind::bytes) {
        return event.kind == Event::Kind::closed ? 0 : -1;
    }
    const std::size_t taken = std::min(buffer.size(), event.bytes.size());
    std::copy_n(event.bytes.begin(), taken, buffer.begin());
    event.bytes.erase(0, taken);
    if (event.bytes.empty()) {
        network().events.pop_front();
    }
    return static_cast<std::ptrdiff_t>(taken);
}

} // namespace telvofm
