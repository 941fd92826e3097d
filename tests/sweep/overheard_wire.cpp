#include "tests/sweep/overheard_wire.h"

#include <array>
#include <limits>

namespace telvofm::test::sweep {

Overheard::Overheard(std::span<const WireEvent> events, const Fault& itsFault) : fault(itsFault)
{
    using Act = WireEvent::Act;
    for (std::size_t place = 0; place < events.size(); ++place) {
        const WireEvent& event = events[place];
        const bool isFromTill = event.act == Act::sent || event.act == Act::sendFailed;
        for (const char byte : event.bytes) {
            (isFromTill ? fromTill : toTill).push_back({static_cast<Byte>(byte), place});
        }
    }
}

void OverheardWire::beginCall()
{
    waited = Milliseconds(0);
    metEarlierByte = false;
}

std::size_t OverheardWire::placeOfNextSent() const
{
    return hasMore() ? record.fromTill[nextSent].place : std::numeric_limits<std::size_t>::max();
}

// A byte that the printer says behind what the till sends next cannot have been read before that.
std::size_t OverheardWire::waiting() const
{
    std::size_t count = 0;
    while (nextCome + count < record.toTill.size() &&
           record.toTill[nextCome + count].place < placeOfNextSent()) {
        ++count;
    }
    return count;
}

OverheardWire::Met OverheardWire::met()
{
    std::array<Met, 3> possible{};
    std::size_t count = 0;
    if (waiting() > 0) {
        possible[count++] = Met::byte;
    }
    if (!isUnseen) { // what was sent before a silence has come to the printer's end
        possible[count++] = Met::silence;
    }
    if (mayHaveEnded()) {
        possible[count++] = Met::end;
    }
    if (count == 0) {
        throw Deviation{"a byte was read that had not come"};
    }
    const Met one = possible[choices.among(count)];
    if (one == Met::end) {
        throw CallEnds{transportFailed};
    }
    return one;
}

bool OverheardWire::isSilentStep()
{
    const bool isSilent = met() == Met::silence;
    waited += isSilent ? tcpStep : Milliseconds(0);
    return isSilent;
}

// A step of silence ends a call when the lines are on, and costs nothing when they are off.
Byte OverheardWire::serialByte()
{
    if (met() == Met::silence) {
        waited += serialStep;
        throw CallEnds{silentAlthoughReady};
    }
    return takeReceived();
}

Byte OverheardWire::takeReceived()
{
    const Overheard::Passed& byte = record.toTill[nextCome++];
    metEarlierByte = metEarlierByte || byte.place < unitBegins;
    return byte.value;
}

// Drops what has come, and some of what is on its way may have. With its lines off a port drops what the
// printer has not yet taken, too.
void OverheardWire::expectPurge()
{
    if (mayHaveEnded() && choices.among(2) == 1) {
        throw CallEnds{transportFailed};
    }
    isUnseen = false;
    const std::size_t most = waiting();
    nextCome += most - choices.among(most + 1);
}

// How much the driver had taken from the socket is not known.
void OverheardWire::beginTry()
{
    nextCome += link == Link::tcp ? choices.among(waiting() + 1) : 0;
}

void OverheardWire::expectUnit(std::string_view unit)
{
    const bool linesMayBeOff = record.fault.kind == Fault::Kind::busy || mayHaveEnded();
    if (link == Link::serial && linesMayBeOff && choices.among(2) == 1) {
        throw CallEnds{notReady};
    }
    unitBegins = placeOfNextSent();
    for (const char byte : unit) {
        expectSent(static_cast<Byte>(byte));
    }
}

void OverheardWire::expectByte(Byte byte)
{
    expectSent(byte);
}

// What the record does not have may still have been on its way in the end.
void OverheardWire::expectSent(Byte byte)
{
    if (!isUnseen && hasMore() && record.fromTill[nextSent].value == byte) {
        ++nextSent;
        return;
    }
    if (mayHaveEnded() && choices.among(2) == 1) {
        throw CallEnds{transportFailed};
    }
    const bool mayBeDropped = link == Link::serial && record.fault.kind == Fault::Kind::busy;
    if (hasMore() && !mayBeDropped) {
        throw Deviation{"the till sent something else, or less"};
    }
    isUnseen = true;
}

} // namespace telvofm::test::sweep
