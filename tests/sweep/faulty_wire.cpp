#include "tests/sweep/faulty_wire.h"

#include <algorithm>

namespace telvofm::test::sweep {
namespace {

constexpr int nobodys = -2;     // a byte that nobody has sent
constexpr int alreadyGone = -1; // the fault stands behind this byte

std::size_t indexOf(Direction direction)
{
    return direction == Direction::toPrinter ? 0 : 1;
}

} // namespace

void FaultyWire::arm(const Fault& next)
{
    fault = next;
    struck = false;
    passed[0] = passed[1] = 0;
    rolesToTill.clear();
    if (fault.kind == Fault::Kind::closed && fault.position == 0 && fault.direction == Direction::toPrinter) {
        isClosed = struck = true; // before anything is said
    }
}

void FaultyWire::beginCall()
{
    ++transmission;
    events.clear();
    metLateAnswer = false;
}

void FaultyWire::note(WireEvent::Act act, std::string_view bytes, Milliseconds lasted)
{
    events.push_back({act, std::string(bytes), lasted, clock});
}

void FaultyWire::push(Direction direction, Byte value, int ofTransmission)
{
    Queue& queue = direction == Direction::toPrinter ? toPrinter : toTill;
    Milliseconds due = std::max(clock, heldUntil[indexOf(direction)]);
    if (!queue.empty()) {
        due = std::max(due, queue.back().due);
    }
    queue.push_back({value, due, ofTransmission});
}

// A byte goes on its way, and the fault with it when it is its turn.
void FaultyWire::put(Direction direction, Byte value, int ofTransmission, Role role)
{
    if (isLost || isClosed) {
        return;
    }
    if (direction == Direction::toTill && role == Role::flow && clock < linesOffUntil) {
        toTill.push_front({value, clock, ofTransmission}); // ahead of what a busy printer has not said yet
        return;
    }
    const std::size_t position = passed[indexOf(direction)]++;
    if (direction == Direction::toTill) {
        rolesToTill.push_back(role);
    }
    const bool isArmed = fault.kind != Fault::Kind::none && !struck && fault.direction == direction;
    if (isArmed && position == fault.position) {
        strike(direction, value, ofTransmission);
        return;
    }
    push(direction, value, ofTransmission);
    if (isArmed && fault.isAtEnd && position + 1 == fault.position) {
        strike(direction, value, alreadyGone);
    }
}

void FaultyWire::strike(Direction direction, Byte value, int ofTransmission)
{
    struck = true;
    switch (fault.kind) {
    case Fault::Kind::none:
        break;
    case Fault::Kind::closed:
        isClosed = true;
        return;
    case Fault::Kind::lost:
        isLost = true;
        return;
    case Fault::Kind::flipped:
        push(direction, static_cast<Byte>(value ^ fault.value), ofTransmission);
        return;
    case Fault::Kind::inserted:
        push(direction, fault.value, nobodys);
        break;
    case Fault::Kind::deleted:
        return;
    case Fault::Kind::doubled:
        push(direction, value, ofTransmission);
        break;
    case Fault::Kind::busy:
        printer.beBusyUntil(clock + fault.delay);
        linesOffUntil = clock + fault.delay;
        [[fallthrough]];
    case Fault::Kind::delayed:
        heldUntil[indexOf(direction)] = clock + fault.delay;
        writeBlocked = direction == Direction::toPrinter ? fault.delay : Milliseconds(0);
        break;
    }
    if (ofTransmission != alreadyGone) {
        push(direction, value, ofTransmission);
    }
}

void FaultyWire::letPrinterSpeak()
{
    for (const SaidByte& byte : printer.takeSaid()) {
        const auto heard = static_cast<std::size_t>(byte.unit);
        put(Direction::toTill, byte.value, heard > 0 ? transmissionsHeard[heard - 1] : nobodys, byte.role);
    }
}

void FaultyWire::advanceTo(Milliseconds moment)
{
    while (!toPrinter.empty() && toPrinter.front().due <= moment) {
        const Travelling byte = toPrinter.front();
        toPrinter.pop_front();
        clock = std::max(clock, byte.due);
        printer.hear(byte.value, clock);
        transmissionsHeard.resize(printer.unitsHeard(), byte.transmission);
        letPrinterSpeak();
    }
    clock = std::max(clock, moment);
}

bool FaultyWire::send(std::string_view bytes)
{
    // The first send after the peer has gone is taken, and its answer refuses the next.
    if (isClosed && sendsAfterEnd++ > 0) {
        note(WireEvent::Act::sendFailed, bytes);
        return false;
    }
    note(WireEvent::Act::sent, bytes);
    transmission += bytes.size() > 1 ? 1 : 0; // no probe, checksum byte or answer
    for (const char byte : bytes) {
        put(Direction::toPrinter, static_cast<Byte>(byte), transmission, Role::answer);
    }
    advanceTo(clock);
    return true;
}

// A byte that the line does not take yet is waited for here.
bool FaultyWire::write(Byte byte, Milliseconds limit)
{
    const char single = static_cast<char>(byte);
    if (!isClosed) {
        put(Direction::toPrinter, byte, transmission, Role::answer);
    }
    const Milliseconds blocked = std::exchange(writeBlocked, Milliseconds(0));
    if (isClosed || blocked > limit) {
        advanceTo(clock + std::min(blocked, limit));
        note(WireEvent::Act::sendFailed, {&single, 1});
        return false;
    }
    advanceTo(clock + blocked);
    note(WireEvent::Act::sent, {&single, 1});
    return true;
}

bool FaultyWire::hasCome() const
{
    return !toTill.empty() && toTill.front().due <= clock;
}

FaultyWire::Wait FaultyWire::wait(Milliseconds limit)
{
    const Milliseconds begin = clock;
    const Milliseconds deadline = clock + limit;
    advanceTo(clock);
    for (;;) {
        if (hasCome()) {
            return Wait::bytes;
        }
        const bool printerHears = !toPrinter.empty() && toPrinter.front().due <= deadline;
        const bool tillHears = !toTill.empty() && toTill.front().due <= deadline;
        if (printerHears && (!tillHears || toPrinter.front().due <= toTill.front().due)) {
            advanceTo(toPrinter.front().due);
        } else if (tillHears) {
            advanceTo(toTill.front().due);
        } else if (isClosed && toTill.empty()) {
            return Wait::broken;
        } else {
            break;
        }
    }
    advanceTo(deadline);
    note(WireEvent::Act::silent, {}, clock - begin);
    return Wait::silence;
}

std::size_t FaultyWire::take(std::span<char> target)
{
    std::size_t count = 0;
    while (count < target.size() && hasCome()) {
        target[count++] = static_cast<char>(toTill.front().value);
        const int answered = toTill.front().transmission;
        metLateAnswer = metLateAnswer || (answered >= 0 && answered < transmission);
        toTill.pop_front();
    }
    note(count == 0 ? WireEvent::Act::closed : WireEvent::Act::received, {target.data(), count});
    return count;
}

bool FaultyWire::purge()
{
    ++transmission; // each try on a serial line begins so, but for those that leave nothing to be late
    while (hasCome()) {
        toTill.pop_front();
    }
    note(isClosed ? WireEvent::Act::closed : WireEvent::Act::purged);
    return !isClosed;
}

bool FaultyWire::isClearToSend()
{
    if (!areLinesOn()) {
        note(WireEvent::Act::linesOff);
    }
    return areLinesOn();
}

void FaultyWire::pause(Milliseconds time)
{
    advanceTo(clock + time);
    note(WireEvent::Act::paused, {}, time);
}

FaultyWire& wire()
{
    static FaultyWire current;
    return current;
}

void resetWire(Link link)
{
    wire() = FaultyWire(link);
}

} // namespace telvofm::test::sweep
