#include "virtual_printer/faults/faults.h"

#include <algorithm>
#include <utility>

namespace virtual_printer {
namespace {

// Otherwise it has acted as it was armed.
bool meetsRequests(const Fault& fault)
{
    return (ruleOf(fault.kind).parameters & hasNoSelection) == 0;
}

bool isSelected(const Fault& fault, const Occasion& occasion)
{
    const bool isOfConnection = fault.at == FaultMoment::connection;
    if (isOfConnection || occasion.kind == Occasion::Kind::connection) {
        return isOfConnection && occasion.kind == Occasion::Kind::connection;
    }
    return (!fault.commandCode || *fault.commandCode == occasion.command) &&
           (fault.commandName.empty() || fault.commandName == occasion.commandName ||
            (occasion.isBlock && fault.commandName == nameOfBlocks));
}

// The blocks of an upload belong to the call that announces it; where only blocks are selected each is a
// call.
bool beginsCall(const Fault& fault, const Occasion& occasion)
{
    return occasion.beginsCall && (!occasion.isBlock || fault.commandName == nameOfBlocks);
}

bool hasHitItsCalls(const Armed& one)
{
    return one.fault.calls && one.callsHit == *one.fault.calls;
}

} // namespace

std::uint64_t Faults::arm(Fault fault)
{
    if (!fault.requests && !fault.calls) {
        fault.requests = 1;
    }
    chances.push_back({following, std::mt19937(fault.seed.value_or(1))});
    Armed one;
    one.number = following++;
    one.fault = std::move(fault);
    one.hasEnded = !meetsRequests(one.fault);
    armed.push_back(std::move(one));
    tell(armed.back(), Event::armed);
    return armed.back().number;
}

bool Faults::disarm(std::uint64_t number)
{
    const auto found =
        std::find_if(armed.begin(), armed.end(), [number](const Armed& one) { return one.number == number; });
    if (found == armed.end()) {
        return false;
    }
    const Armed gone = std::move(*found);
    armed.erase(found);
    std::erase_if(chances, [number](const Chance& chance) { return chance.number == number; });
    tell(gone, Event::disarmed);
    return true;
}

void Faults::disarmAll()
{
    while (!armed.empty()) {
        disarm(armed.front().number);
    }
}

void Faults::endDeeds()
{
    for (const Armed& one : armed) {
        if (meetsRequests(one.fault)) {
            tell(one, Event::stopped);
        }
    }
}

std::vector<Faults::Hit> Faults::hitsOf(const Occasion& occasion)
{
    std::vector<Hit> all;
    for (Armed& one : armed) {
        if (hits(one, occasion)) {
            all.push_back({one.number, one.fault});
        }
    }
    return all;
}

bool Faults::hits(Armed& one, const Occasion& occasion)
{
    const Fault& fault = one.fault;
    if (beginsCall(fault, occasion)) { // whichever it is, it is another one
        one.hasEnded = one.hasEnded || hasHitItsCalls(one);
    }
    if (one.hasEnded || !isSelected(fault, occasion)) {
        return false;
    }
    if (beginsCall(fault, occasion) || one.requestsMet == 0) { // it may be armed in the middle of a call
        ++one.callsMet;
        one.callIsHit = false;
        one.callIsDrawn.reset();
    }
    ++one.requestsMet;
    return one.requestsMet >= fault.fromRequest && one.callsMet >= fault.fromCall && isDrawn(one);
}

void Faults::hasDone(std::uint64_t number, std::uint64_t exchange)
{
    constexpr std::size_t mostExchanges = 100;
    const auto found =
        std::find_if(armed.begin(), armed.end(), [number](const Armed& one) { return one.number == number; });
    if (found == armed.end()) {
        return;
    }
    found->callsHit += found->callIsHit ? 0 : 1;
    found->callIsHit = true;
    ++found->requestsHit;
    found->hasEnded = found->fault.requests && found->requestsHit == *found->fault.requests;
    if (exchange != 0) {
        found->exchanges.push_back(exchange);
    }
    if (found->exchanges.size() > mostExchanges) {
        found->exchanges.erase(found->exchanges.begin());
    }
    tell(*found, Event::changed);
}

void Faults::endCalls(bool isUploading)
{
    for (Armed& one : armed) {
        const bool isOver = !isUploading || one.fault.commandName == nameOfBlocks;
        if (isOver && !one.hasEnded && hasHitItsCalls(one)) {
            one.hasEnded = true;
            tell(one, Event::changed);
        }
    }
}

// Once for a whole call where calls are counted, otherwise for each request.
bool Faults::isDrawn(Armed& one)
{
    if (one.fault.probability >= 1) {
        return true;
    }
    if (!one.fault.calls) {
        return draw(one);
    }
    if (!one.callIsDrawn) {
        one.callIsDrawn = draw(one);
    }
    return *one.callIsDrawn;
}

// The generator is the same everywhere; distributions are not.
bool Faults::draw(const Armed& one)
{
    const auto chance = std::find_if(chances.begin(), chances.end(),
                                     [&](const Chance& own) { return own.number == one.number; });
    constexpr double outOf = 4294967296.0;
    return static_cast<double>(chance->generator()) / outOf < one.fault.probability;
}

void Faults::tell(const Armed& one, Event event) const
{
    for (const Observer& observer : observers) {
        observer(one, event);
    }
}

} // namespace virtual_printer
