// What an assertion expects to have been received, executed and acknowledged, and how many requests to have
// been repeated. It remembers what it has counted: of a trace that has grown it looks only at what is new.
#pragma once

#include "virtual_printer/control/exchange_pattern.h"
#include "virtual_printer/trace/trace.h"

#include <bitset>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace virtual_printer {

class ExpectedExchanges
{
public:
    // Throws ControlRefusal: it is not understood, or no exchange could ever fit.
    ExpectedExchanges(const Json& assertion, const Codes& codes);

    // From the exchange `since` on. Both throw ControlRefusal when the trace has not got all of them.
    bool hold(const Trace& trace, std::uint64_t since);
    // A sentence for each difference.
    std::vector<std::string> differences(const Trace& trace, std::uint64_t since);

    // An assertion has so many entries, those of `committed` counted in.
    static constexpr std::size_t mostEntries = 100;

private:
    struct Entry
    {
        std::string list; // "received"
        ExchangePattern pattern;
        std::int64_t wanted;
        std::int64_t count = 0;
        // Of what counts for it, when nothing fits, while sentences are made.
        const Exchanged* nearest = nullptr;
        std::size_t distance = 0;
    };
    // Which entries an exchange has been counted for; the last one of them: it repeats another.
    using Counted = std::bitset<mostEntries + 1>;

    void take(const Json& assertion, const std::string& list, Stage stage, const Codes& codes);
    void update(const Trace& trace, std::uint64_t since);
    void forget(std::uint64_t since);
    void look(const Exchanged& exchanged);
    void add(const Counted& these, std::int64_t sign);
    void findNearest(const Trace& trace);
    [[nodiscard]] static std::string nearestOf(const Entry& entry);
    [[nodiscard]] std::string repeats(const Trace& trace) const;

    std::vector<Entry> entries;
    std::optional<std::int64_t> repeatsWanted;
    std::int64_t repeatCount = 0;

    std::uint64_t begin = 0; // where it has begun to count; 0: it has not
    std::uint64_t changesKnown = 0;
    std::vector<Counted> counted; // of each exchange from there on
};

} // namespace virtual_printer
