// What the rules promise of a call with a single fault: the waits that must be waited through, the damage
// that is repaired, and the bytes that are passed over.
#include "tests/sweep/memory_sweep.h"

namespace telvofm::test::sweep {
namespace {

constexpr Milliseconds tcpWait{3000};
constexpr Milliseconds tcpWaitWithProbe{6000};
constexpr Milliseconds serialWait{15000};
constexpr Milliseconds serialSilence{30000};

bool isDialogue(Role role)
{
    return role == Role::answer || role == Role::blockStart;
}

// Behind a pause in its middle the printer has given a request up, so only its first byte may be late.
bool isWaitedFor(const Fault& fault, Role role, Link link)
{
    if (fault.direction == Direction::toPrinter) {
        return fault.position == 0 && fault.delay < (link == Link::tcp ? tcpWait : serialWait);
    }
    if (link == Link::serial) {
        return fault.delay < serialSilence;
    }
    return fault.delay < (isDialogue(role) ? tcpWaitWithProbe : tcpWait);
}

bool isRepaired(const Fault& fault, Role role, Link link, std::span<const HeardRequest> heard)
{
    if (fault.direction == Direction::toPrinter) { // by another try, once the printer has seen it
        return link == Link::serial && !heard.empty() &&
               heard.front().refusal == SimulatedPrinter::damagedUnit;
    }
    return role == Role::blockData || role == Role::blockTerminator || role == Role::blockChecksum;
}

} // namespace

bool mustGoThrough(const Rehearsal& rehearsal, const Circumstances& circumstances, const Fault& fault,
                   std::span<const HeardRequest> heard)
{
    const Link link = circumstances.link;
    const bool hasRole =
        fault.direction == Direction::toTill && fault.position < rehearsal.extent.toTill.size();
    const Role role = hasRole ? rehearsal.extent.toTill[fault.position] : Role::flow;
    switch (fault.kind) {
    case Fault::Kind::none:
        return true;
    case Fault::Kind::delayed:
        return isWaitedFor(fault, role, link);
    case Fault::Kind::busy:
        return link == Link::serial || isDialogue(role);
    case Fault::Kind::flipped:
        return isRepaired(fault, role, link, heard);
    case Fault::Kind::inserted:
        return link == Link::tcp && hasRole && fault.position == 0 &&
               (fault.value == 0x11 || fault.value == 0x13);
    case Fault::Kind::closed:
    case Fault::Kind::lost:
    case Fault::Kind::deleted:
    case Fault::Kind::doubled:
        return false;
    }
    return false;
}

} // namespace telvofm::test::sweep
