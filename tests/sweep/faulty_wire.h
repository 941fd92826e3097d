// A wire in memory with a printer at its other end, a clock of its own and one fault. The twins of the
// library's socket and serial port (socket_on_wire.cpp, serial_port_on_wire.cpp) stand on it, so that the
// library runs unchanged and waits take no time.
#pragma once

#include "tests/sweep/fault.h"
#include "tests/sweep/simulated_printer.h"
#include "tests/sweep/wire_event.h"

#include <deque>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace telvofm::test::sweep {

class FaultyWire
{
public:
    explicit FaultyWire(Link kindOfLink = Link::tcp) : link(kindOfLink) {}

    // From here on bytes are counted for the fault.
    void arm(const Fault& next);
    // Bytes since then.
    [[nodiscard]] Extent extent() const { return {passed[0], rolesToTill}; }
    [[nodiscard]] bool hasStruck() const { return struck; }

    // What the till does. `send` and `write` are false when the link refuses.
    bool send(std::string_view bytes);
    bool write(Byte byte, Milliseconds limit);
    enum class Wait
    {
        bytes,
        silence,
        broken
    };
    Wait wait(Milliseconds limit);
    // What has come; on a closed wire nothing is noted as its end.
    std::size_t take(std::span<char> target);
    bool purge();
    bool isClearToSend();
    [[nodiscard]] bool areLinesOn() const { return link == Link::tcp || clock >= linesOffUntil; }
    void pause(Milliseconds time);
    [[nodiscard]] Milliseconds now() const { return clock; }
    void advanceTo(Milliseconds moment);
    [[nodiscard]] bool hasCome() const;
    // Nothing more comes.
    [[nodiscard]] bool hasEnded() const { return isClosed && toTill.empty(); }
    // Nobody does anything for so long.
    void rest(Milliseconds time) { advanceTo(clock + time); }

    SimulatedPrinter printer;
    std::vector<WireEvent> events;
    void beginCall();
    // The till has taken a byte that answers an earlier request or block than the one it had sent last.
    bool metLateAnswer = false;

private:
    struct Travelling
    {
        Byte value;
        Milliseconds due;
        int transmission; // that it is part of, or that it answers
    };
    using Queue = std::deque<Travelling>;

    void put(Direction direction, Byte value, int ofTransmission, Role role);
    void push(Direction direction, Byte value, int ofTransmission);
    void strike(Direction direction, Byte value, int ofTransmission);
    void letPrinterSpeak();
    void note(WireEvent::Act act, std::string_view bytes = {}, Milliseconds lasted = Milliseconds(0));

    Link link;
    int transmission = 0; // of a request or a block; tries are transmissions of their own
    std::vector<int> transmissionsHeard;
    Milliseconds clock{1000};
    Queue toPrinter;
    Queue toTill;
    std::size_t passed[2] = {0, 0};
    std::vector<Role> rolesToTill;
    Fault fault;
    bool struck = false;
    bool isClosed = false;
    bool isLost = false;
    int sendsAfterEnd = 0;
    Milliseconds heldUntil[2] = {Milliseconds(0), Milliseconds(0)};
    Milliseconds linesOffUntil{0};
    Milliseconds writeBlocked{0};
};

// The wire that the twins stand on.
FaultyWire& wire();
void resetWire(Link link);

} // namespace telvofm::test::sweep
