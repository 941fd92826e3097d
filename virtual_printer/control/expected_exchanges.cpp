#include "virtual_printer/control/expected_exchanges.h"

#include "virtual_printer/control/body.h"
#include "virtual_printer/control/difference.h"

#include <limits>

namespace virtual_printer {
namespace {

constexpr std::int64_t largestCount = 1'000'000;

void requireTrace(const Trace& trace, std::uint64_t since)
{
    if (trace.isGone(since)) {
        throw ControlRefusal(status::gone,
                             "The trace begins at exchange " + std::to_string(trace.first()) +
                                 " and the assertion at " + std::to_string(since) +
                                 ", which is forgotten; assert sooner, or give a later \"since\".");
    }
    if (since > trace.end()) {
        throw ControlRefusal(status::gone, "The assertion begins at exchange " + std::to_string(since) +
                                               ", and the next one is " + std::to_string(trace.end()) +
                                               "; give an earlier \"since\".");
    }
}

} // namespace

ExpectedExchanges::ExpectedExchanges(const Json& assertion, const Codes& codes)
{
    take(assertion, "received", Stage::received, codes);
    take(assertion, "executed", Stage::executed, codes);
    take(assertion, "acknowledged", Stage::acknowledged, codes);
    const Members members(assertion, "");
    if (members.find("repeated") != nullptr) {
        repeatsWanted = members.whole("repeated", 0, 0, largestCount);
    }
}

void ExpectedExchanges::take(const Json& assertion, const std::string& list, Stage stage, const Codes& codes)
{
    const auto found = assertion.find(list);
    if (found == assertion.end()) {
        return;
    }
    for (std::size_t index = 0; index < found->size(); ++index) {
        const Json& entry = (*found)[index];
        const std::string place = list + "[" + std::to_string(index) + "]";
        if (entry.empty()) {
            throw ControlRefusal(status::badRequest,
                                 "\"" + place +
                                     R"(" says nothing; name a part of an exchange, or "count" alone for )"
                                     "how many there are of any.");
        }
        const std::int64_t wanted = Members(entry, place).whole("count", 1, 0, largestCount);
        entries.push_back({list, ExchangePattern(entry, stage, codes, place), wanted});
    }
}

bool ExpectedExchanges::hold(const Trace& trace, std::uint64_t since)
{
    if (entries.empty() && !repeatsWanted) {
        return true;
    }
    update(trace, since);
    return repeatCount == repeatsWanted.value_or(repeatCount) &&
           std::all_of(entries.begin(), entries.end(),
                       [](const Entry& entry) { return entry.count == entry.wanted; });
}

std::vector<std::string> ExpectedExchanges::differences(const Trace& trace, std::uint64_t since)
{
    std::vector<std::string> found;
    if (hold(trace, since)) {
        return found;
    }
    findNearest(trace);
    for (const Entry& entry : entries) {
        if (entry.count != entry.wanted) {
            found.push_back(entry.list + ": " + std::to_string(entry.count) + " exchanges are " +
                            shown(entry.pattern.text()) + ", " + std::to_string(entry.wanted) +
                            " are expected" + nearestOf(entry));
        }
    }
    if (repeatCount != repeatsWanted.value_or(repeatCount)) {
        found.push_back("repeated: " + std::to_string(repeatCount) + " requests repeat an earlier one, " +
                        std::to_string(*repeatsWanted) + " are expected" + repeats(trace));
    }
    return found;
}

void ExpectedExchanges::update(const Trace& trace, std::uint64_t since)
{
    requireTrace(trace, since);
    const auto changed = trace.changedAfter(changesKnown);
    if (begin != since || !changed) {
        forget(since);
    } else {
        for (const std::uint64_t number : *changed) {
            if (number >= begin && number - begin < counted.size()) {
                add(counted[number - begin], -1);
                look(*trace.find(number));
            }
        }
    }
    changesKnown = trace.changes();
    while (begin + counted.size() < trace.end()) {
        counted.emplace_back();
        look(*trace.find(begin + counted.size() - 1));
    }
}

void ExpectedExchanges::forget(std::uint64_t since)
{
    begin = since;
    counted.clear();
    repeatCount = 0;
    for (Entry& entry : entries) {
        entry.count = 0;
    }
}

void ExpectedExchanges::look(const Exchanged& exchanged)
{
    ExchangeView view(exchanged);
    Counted these;
    for (std::size_t index = 0; index < entries.size(); ++index) {
        these[index] = entries[index].pattern.fits(view);
    }
    these[mostEntries] = exchanged.repeatOf != 0;
    counted[exchanged.number - begin] = these;
    add(these, 1);
}

void ExpectedExchanges::add(const Counted& these, std::int64_t sign)
{
    if (these.none()) {
        return;
    }
    for (std::size_t index = 0; index < entries.size(); ++index) {
        entries[index].count += these[index] ? sign : 0;
    }
    repeatCount += these[mostEntries] ? sign : 0;
}

// For all entries together: what one exchange is made of is made once.
void ExpectedExchanges::findNearest(const Trace& trace)
{
    for (Entry& entry : entries) {
        entry.nearest = nullptr;
    }
    for (std::uint64_t number = begin; number < trace.end(); ++number) {
        ExchangeView view(*trace.find(number));
        for (Entry& entry : entries) {
            if (entry.count != 0 || entry.wanted == 0 || !entry.pattern.counts(view.exchanged())) {
                continue;
            }
            const std::size_t distance = entry.pattern.distanceTo(view);
            if (entry.nearest == nullptr || distance < entry.distance) {
                entry.nearest = &view.exchanged();
                entry.distance = distance;
            }
        }
    }
}

std::string ExpectedExchanges::nearestOf(const Entry& entry)
{
    if (entry.count != 0) {
        return "";
    }
    if (entry.nearest == nullptr) {
        return "; nothing was " + entry.list;
    }
    ExchangeView view(*entry.nearest);
    return "; the nearest is exchange " + std::to_string(entry.nearest->number) + ": " +
           entry.pattern.differenceFrom(view);
}

std::string ExpectedExchanges::repeats(const Trace& trace) const
{
    constexpr std::int64_t mostNamed = 20;
    std::string which;
    std::int64_t named = 0;
    for (std::uint64_t number = begin; number < trace.end() && named < mostNamed; ++number) {
        const Exchanged& exchanged = *trace.find(number);
        if (exchanged.repeatOf != 0) {
            ++named;
            which += (which.empty() ? ": " : ", ") + std::to_string(number) + " " +
                     std::string(exchanged.name()) + " repeats " + std::to_string(exchanged.repeatOf);
        }
    }
    return which + (named < repeatCount ? " ..." : "");
}

} // namespace virtual_printer
