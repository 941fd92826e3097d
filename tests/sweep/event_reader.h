// The wire of which everything is known: the record of all that happened at the till's end, each wait and
// each byte.
#pragma once

#include "tests/sweep/lived_wire.h"
#include "tests/sweep/wire_event.h"

#include <span>
#include <string>
#include <string_view>

namespace telvofm::test::sweep {

class EventReader final : public LivedWire
{
public:
    EventReader(std::span<const WireEvent> all, Link kindOfLink) : LivedWire(kindOfLink), events(all) {}

    void expectPause(Milliseconds time) override;
    void expectPurge() override;
    void beginTry() override;
    void expectUnit(std::string_view unit) override;
    void expectByte(Byte byte) override;
    void expectEnd() const override;

private:
    bool isSilentStep() override;
    Byte takeReceived() override;
    Byte serialByte() override;
    bool isSilent(const WireEvent& event, Milliseconds step);
    void expectSent(std::string_view bytes);
    // The next event; a Deviation when there is none.
    const WireEvent& next(std::string_view due);
    [[nodiscard]] bool nextIs(WireEvent::Act act) const
    {
        return position < events.size() && events[position].act == act;
    }
    [[nodiscard]] Milliseconds lastMoment() const;

    std::span<const WireEvent> events;
    std::size_t position = 0;
    std::string received;
};

} // namespace telvofm::test::sweep
