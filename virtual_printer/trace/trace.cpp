#include "virtual_printer/trace/trace.h"

#include <utility>

namespace virtual_printer {

std::uint64_t Trace::add(Exchanged exchanged)
{
    exchanged.number = following++;
    newest = exchanged.kind == Exchanged::Kind::probe ? newest : exchanged.number;
    bytes += exchanged.size();
    ring.push_back(std::move(exchanged));
    forgetTheOldest();
    tell(ring.back());
    return ring.back().number;
}

void Trace::change(std::uint64_t number, const Change& change)
{
    if (find(number) == nullptr) {
        return;
    }
    Exchanged& exchanged = ring[number - first()];
    bytes -= exchanged.size();
    change(exchanged);
    bytes += exchanged.size();
    constexpr std::size_t mostChangesKnown = 1000;
    changed.push_back(number);
    if (changed.size() > mostChangesKnown) {
        changed.pop_front();
        ++changesForgotten;
    }
    tell(exchanged);
    forgetTheOldest();
}

std::optional<std::vector<std::uint64_t>> Trace::changedAfter(std::uint64_t changesKnown) const
{
    if (changesKnown < changesForgotten || changesKnown > changes()) {
        return std::nullopt;
    }
    const auto known = static_cast<std::ptrdiff_t>(changesKnown - changesForgotten);
    return std::vector<std::uint64_t>(changed.begin() + known, changed.end());
}

const Exchanged* Trace::find(std::uint64_t number) const
{
    return number < first() || number >= end() ? nullptr : &ring[number - first()];
}

void Trace::clear()
{
    ring.clear();
    bytes = 0;
}

bool Trace::isOver(const Exchanged& exchanged) const
{
    const bool isLast = exchanged.number + 1 == end();
    return exchanged.isOver || exchanged.number < newest || (exchanged.number < beginning && !isLast);
}

std::uint64_t Trace::watch(Observer observer)
{
    observers.emplace(followingObserver, std::move(observer));
    return followingObserver++;
}

// The newest stays, however large it is.
void Trace::forgetTheOldest()
{
    while (ring.size() > 1 && (ring.size() > limits.exchanges || bytes > limits.bytes)) {
        bytes -= ring.front().size();
        ring.pop_front();
    }
}

void Trace::tell(const Exchanged& exchanged) const
{
    for (const auto& [number, observer] : observers) {
        observer(exchanged);
    }
}

} // namespace virtual_printer
