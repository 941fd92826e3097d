// A wire of which only the printer's end is known, as on a real link: what was sent and said, and in which
// order it passed there, but not at which of its waits the till met a byte, or what it dropped before a try.
// Each choice that the record leaves open is one of the `Choices`.
#pragma once

#include "tests/sweep/choices.h"
#include "tests/sweep/lived_wire.h"
#include "tests/sweep/wire_event.h"

#include <span>
#include <vector>

namespace telvofm::test::sweep {

// A session at the printer's end.
struct Overheard
{
    struct Passed
    {
        Byte value;
        std::size_t place; // among all that passed
    };

    Overheard(std::span<const WireEvent> events, const Fault& itsFault);

    std::vector<Passed> fromTill; // before a fault has changed it
    std::vector<Passed> toTill;   // as the fault has left it
    Fault fault;
};

class OverheardWire final : public LivedWire
{
public:
    OverheardWire(const Overheard& session, Link kindOfLink, Choices& ways)
        : LivedWire(kindOfLink), record(session), choices(ways)
    {
    }

    void beginCall();
    // Silence that the call has waited through, at least.
    [[nodiscard]] Milliseconds silence() const { return waited; }
    // The call has taken a byte that had passed before the unit which it seems to answer.
    [[nodiscard]] bool hasMetEarlierByte() const { return metEarlierByte; }
    // The till has sent what no call of this way sends.
    [[nodiscard]] bool hasMore() const { return nextSent < record.fromTill.size(); }

    void expectPause(Milliseconds /*time*/) override {}
    void expectPurge() override;
    void beginTry() override;
    void expectUnit(std::string_view unit) override;
    void expectByte(Byte byte) override;
    void expectEnd() const override {} // the next call may follow

private:
    bool isSilentStep() override;
    Byte takeReceived() override;
    Byte serialByte() override;

    enum class Met
    {
        byte,
        silence,
        end
    };
    Met met();
    void expectSent(Byte byte);
    [[nodiscard]] std::size_t placeOfNextSent() const;
    // Bytes that lie before the till, or may.
    [[nodiscard]] std::size_t waiting() const;
    [[nodiscard]] bool mayHaveEnded() const { return record.fault.kind == Fault::Kind::closed && !hasMore(); }

    const Overheard& record;
    Choices& choices;
    std::size_t nextSent = 0;
    std::size_t nextCome = 0;
    std::size_t unitBegins = 0;
    bool isUnseen = false; // what was sent last has not reached the printer's end
    Milliseconds waited{0};
    bool metEarlierByte = false;
};

} // namespace telvofm::test::sweep
