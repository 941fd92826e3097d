#include "tests/sweep/event_reader.h"

namespace telvofm::test::sweep {
namespace {

using Act = WireEvent::Act;

std::string nameOf(Act act)
{
    constexpr std::string_view names[] = {"sent",   "a refused send", "received", "a silent wait",
                                          "an end", "a purge",        "a pause",  "CTS off"};
    return std::string(names[static_cast<std::size_t>(act)]);
}

std::string inHexadecimal(std::string_view bytes)
{
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text;
    for (const char byte : bytes) {
        text.push_back(digits[static_cast<Byte>(byte) / 16]);
        text.push_back(digits[static_cast<Byte>(byte) % 16]);
    }
    return text;
}

std::string textOf(const WireEvent& event)
{
    return nameOf(event.act) + " " + inHexadecimal(event.bytes) + " " + std::to_string(event.lasted.count());
}

} // namespace

const WireEvent& EventReader::next(std::string_view due)
{
    if (position == events.size()) {
        throw Deviation{"the call ended where was due: " + std::string(due)};
    }
    return events[position++];
}

Milliseconds EventReader::lastMoment() const
{
    return position == 0 ? events.front().at - events.front().lasted : events[position - 1].at;
}

void EventReader::expectEnd() const
{
    if (position != events.size()) {
        throw Deviation{"the call went on with " + textOf(events[position])};
    }
}

void EventReader::expectPause(Milliseconds time)
{
    const WireEvent& event = next("a pause");
    if (event.act != Act::paused || event.lasted != time) {
        throw Deviation{"a pause was due, not " + textOf(event)};
    }
}

void EventReader::expectPurge()
{
    const WireEvent& event = next("a purge");
    if (event.act == Act::closed) {
        throw CallEnds{transportFailed};
    }
    if (event.act != Act::purged) {
        throw Deviation{"a purge was due, not " + textOf(event)};
    }
}

void EventReader::beginTry()
{
    received.clear();
}

void EventReader::expectUnit(std::string_view unit)
{
    if (link == Link::tcp) {
        expectSent(unit);
        return;
    }
    if (nextIs(Act::linesOff)) {
        ++position;
        throw CallEnds{notReady};
    }
    for (const char byte : unit) {
        expectSent({&byte, 1});
    }
}

void EventReader::expectByte(Byte byte)
{
    const char single = static_cast<char>(byte);
    expectSent({&single, 1});
}

void EventReader::expectSent(std::string_view bytes)
{
    const WireEvent& event = next("sent " + inHexadecimal(bytes));
    if ((event.act != Act::sent && event.act != Act::sendFailed) || event.bytes != bytes) {
        throw Deviation{inHexadecimal(bytes) + " was due, not " + textOf(event)};
    }
    if (event.act == Act::sendFailed) {
        throw CallEnds{transportFailed};
    }
}

Byte EventReader::takeReceived()
{
    const auto byte = static_cast<Byte>(received.front());
    received.erase(0, 1);
    return byte;
}

// Whether a step of a wait has brought nothing; what it has brought is taken.
bool EventReader::isSilent(const WireEvent& event, Milliseconds step)
{
    if (event.act == Act::closed) {
        throw CallEnds{transportFailed};
    }
    if (event.act == Act::received) {
        received = event.bytes;
        return false;
    }
    if (event.act != Act::silent || event.lasted != step) {
        throw Deviation{"a wait of " + std::to_string(step.count()) + " ms was due, not " + textOf(event)};
    }
    return true;
}

bool EventReader::isSilentStep()
{
    return received.empty() && isSilent(next("a wait"), tcpStep);
}

// Steps of fifteen seconds until the lines have been on for longer than that without a byte.
Byte EventReader::serialByte()
{
    Milliseconds since = lastMoment();
    while (received.empty()) {
        const WireEvent& event = next("a wait");
        if (!isSilent(event, serialStep)) {
            continue;
        }
        if (nextIs(Act::linesOff)) {
            ++position;
            since = lastMoment();
        } else if (event.at - since > serialStep) {
            throw CallEnds{silentAlthoughReady};
        }
    }
    return takeReceived();
}

} // namespace telvofm::test::sweep
