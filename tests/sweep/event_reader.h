// Reads the record of a wire as a till has to live it: each wait, each byte, and what ends the call.
#pragma once

#include "tests/sweep/fault.h"
#include "tests/sweep/wire_event.h"

#include <span>
#include <string>
#include <string_view>

namespace telvofm::test::sweep {

// The rules end the call here, with this code.
struct CallEnds
{
    int code;
};

// The record leaves the rules.
struct Deviation
{
    std::string what;
};

class EventReader
{
public:
    EventReader(std::span<const WireEvent> all, Link kindOfLink) : events(all), link(kindOfLink) {}

    void expectPause(Milliseconds time);
    void expectPurge();
    // Over TCP what was received before and not used is dropped.
    void beginTry();
    // In one piece over TCP, byte by byte on a serial line.
    void expectUnit(std::string_view unit);
    void expectByte(Byte byte);
    void expectEnd() const;

    // A byte of the dialogue, and one inside a block or behind a refusal, where every value is data.
    Byte answerByte() { return link == Link::tcp ? tcpByte(false) : serialByte(); }
    Byte dataByte() { return link == Link::tcp ? tcpByte(true) : serialByte(); }

private:
    Byte tcpByte(bool passThrough);
    Byte serialByte();
    bool isSilent(const WireEvent& event, Milliseconds step);
    Byte takeReceived();
    void expectSent(std::string_view bytes);
    // The next event; a Deviation when there is none.
    const WireEvent& next(std::string_view due);
    [[nodiscard]] bool nextIs(WireEvent::Act act) const
    {
        return position < events.size() && events[position].act == act;
    }
    [[nodiscard]] Milliseconds lastMoment() const;

    std::span<const WireEvent> events;
    Link link;
    std::size_t position = 0;
    std::string received;
};

} // namespace telvofm::test::sweep
