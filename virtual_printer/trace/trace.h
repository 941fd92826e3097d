// What has gone between a printer and its tills, the newest exchanges of it: a ring that is bounded in number
// and in bytes. Numbers go on for ever, so that whoever asks for what is no longer there is told so.
#pragma once

#include "virtual_printer/trace/exchanged.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <vector>

namespace virtual_printer {

class Trace
{
public:
    struct Limits
    {
        std::size_t exchanges = 10'000;
        std::size_t bytes = std::size_t{16} * 1024 * 1024;
    };
    // Called with an exchange that is new, and each time that it has changed.
    using Observer = std::function<void(const Exchanged&)>;
    using Change = std::function<void(Exchanged&)>;

    Trace() : Trace(Limits()) {}
    explicit Trace(Limits largest) : limits(largest) {}

    // Gives it its number and says which.
    std::uint64_t add(Exchanged exchanged);
    // Does nothing when it is no longer there.
    void change(std::uint64_t number, const Change& change);

    // The numbers of those that are there are from `first` up to, and without, `end`.
    [[nodiscard]] std::uint64_t first() const { return end() - ring.size(); }
    [[nodiscard]] std::uint64_t end() const { return following; }
    // The newest that is no probe; 0 when there has been none.
    [[nodiscard]] std::uint64_t newestButProbes() const { return newest; }
    // Null for one that is no longer there, or not yet.
    [[nodiscard]] const Exchanged* find(std::uint64_t number) const;
    [[nodiscard]] bool isGone(std::uint64_t number) const { return number < first(); }
    // Nothing more becomes of one that is there: whoever asks something else has given up what was to come,
    // and whoever only probes still waits for it; but for what another printer had still to say.
    [[nodiscard]] bool isOver(const Exchanged& exchanged) const;
    // How often one that was there has changed.
    [[nodiscard]] std::uint64_t changes() const { return changesForgotten + changed.size(); }
    // The numbers of those that have changed after so many changes, one perhaps several times; nothing when
    // there have been too many since to know.
    [[nodiscard]] std::optional<std::vector<std::uint64_t>> changedAfter(std::uint64_t changesKnown) const;
    // Forgets all of them; the numbers go on.
    void clear();
    // The printer has become another one, by a reset or a snapshot: what comes from here on has nothing to do
    // with what was before.
    void beginAnew() { beginning = following; }
    [[nodiscard]] std::uint64_t begin() const { return beginning; }

    // Returns a number for `unwatch`. An observer must not watch or unwatch while it is called.
    std::uint64_t watch(Observer observer);
    void unwatch(std::uint64_t observer) { observers.erase(observer); }

private:
    void forgetTheOldest();
    void tell(const Exchanged& exchanged) const;

    Limits limits;
    std::deque<Exchanged> ring;
    std::size_t bytes = 0;
    std::uint64_t following = 1;
    std::uint64_t newest = 0;
    std::deque<std::uint64_t> changed;
    std::uint64_t changesForgotten = 0;
    std::uint64_t beginning = 1;
    std::map<std::uint64_t, Observer> observers;
    std::uint64_t followingObserver = 1;
};

} // namespace virtual_printer
