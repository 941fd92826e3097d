#include "tests/sweep/fault.h"

#include <span>
#include <utility>

namespace telvofm::test::sweep {
namespace {

// A byte that means nothing, and all that mean something.
constexpr auto insertedBytes =
    std::to_array<Byte>({0x5A, 0x03, 0x04, 0x06, 0x11, 0x13, 0x15, 0x17, 0x1C, 0x3A, 0x00});

// Just under and just over each wait of three tries: the first one, and the one behind its probe.
constexpr auto tcpDelays =
    std::to_array<int>({2999, 3001, 5999, 6001, 8999, 9001, 11999, 12001, 14999, 15001, 17999, 18001});
// The same for the wait of a byte, and the time that a printer with its lines on may be silent for.
constexpr auto serialDelays = std::to_array<int>({14999, 15001, 29999, 30001});
constexpr int longBusy = 40000;

class Faults
{
public:
    explicit Faults(Link on) : link(on) {}

    // In front of the byte; behind the last one where none is left.
    void addAround(Direction direction, std::size_t position, bool isAtEnd)
    {
        place = {Fault::Kind::none, direction, position, 0, Milliseconds(0), isAtEnd};
        add(Fault::Kind::closed);
        add(Fault::Kind::lost);
        for (const Byte value : insertedBytes) {
            add(Fault::Kind::inserted, value);
        }
    }

    void addOf(Direction direction, std::size_t position)
    {
        constexpr int bits = 8;
        place = {Fault::Kind::none, direction, position};
        for (int bit = 0; bit < bits; ++bit) {
            add(Fault::Kind::flipped, static_cast<Byte>(1 << bit));
        }
        add(Fault::Kind::deleted);
        add(Fault::Kind::doubled);
        const auto delays = link == Link::tcp ? std::span<const int>(tcpDelays) : serialDelays;
        for (const int delay : delays) {
            add(Fault::Kind::delayed, 0, delay);
        }
    }

    void addBusy() { add(Fault::Kind::busy, 0, longBusy); }

    std::vector<Fault> take() { return std::move(faults); }

private:
    void add(Fault::Kind kind, Byte value = 0, int delay = 0)
    {
        Fault fault = place;
        fault.kind = kind;
        fault.value = value;
        fault.delay = Milliseconds(delay);
        faults.push_back(fault);
    }

    Link link;
    Fault place;
    std::vector<Fault> faults;
};

} // namespace

std::string textOf(const Fault& fault)
{
    const std::string place =
        std::string(fault.direction == Direction::toTill ? "to the till" : "to the printer") + ", byte " +
        std::to_string(fault.position) + ": ";
    const std::string value = std::to_string(fault.value);
    switch (fault.kind) {
    case Fault::Kind::none:
        return "no fault";
    case Fault::Kind::closed:
        return place + "closed";
    case Fault::Kind::lost:
        return place + "line lost";
    case Fault::Kind::flipped:
        return place + "bits " + value + " flipped";
    case Fault::Kind::inserted:
        return place + value + " inserted";
    case Fault::Kind::deleted:
        return place + "deleted";
    case Fault::Kind::doubled:
        return place + "doubled";
    case Fault::Kind::delayed:
        return place + std::to_string(fault.delay.count()) + " ms late";
    case Fault::Kind::busy:
        return place + "busy for " + std::to_string(fault.delay.count()) + " ms";
    }
    return {};
}

std::vector<Fault> allFaults(const Extent& extent, Link link)
{
    Faults faults(link);
    for (std::size_t position = 0; position < extent.toPrinter; ++position) {
        faults.addAround(Direction::toPrinter, position, false);
        faults.addOf(Direction::toPrinter, position);
    }
    faults.addAround(Direction::toPrinter, extent.toPrinter, true);
    for (std::size_t position = 0; position < extent.toTill.size(); ++position) {
        faults.addAround(Direction::toTill, position, false);
        faults.addOf(Direction::toTill, position);
        // Over TCP a printer says that it is busy before it says something, and not in the middle of it.
        const Role role = extent.toTill[position];
        if (link == Link::serial || role == Role::answer || role == Role::blockStart) {
            faults.addBusy();
        }
    }
    faults.addAround(Direction::toTill, extent.toTill.size(), true);
    return faults.take();
}

} // namespace telvofm::test::sweep
