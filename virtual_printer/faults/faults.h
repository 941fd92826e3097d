// The faults that a printer is armed with: which of them hit a request, and what each has done so far.
#pragma once

#include "virtual_printer/faults/fault.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <random>
#include <string_view>
#include <vector>

namespace virtual_printer {

// What may be hit.
struct Occasion
{
    enum class Kind
    {
        request,
        connection
    };

    Kind kind = Kind::request;
    unsigned char command = 0;
    std::string_view commandName{}; // by which faults select it
    bool isBlock = false;           // of the upload that this command has announced
    bool beginsCall = true;         // a link that sends it again by itself begins none
};

struct Armed
{
    std::uint64_t number = 0; // from 1, never used again
    Fault fault;
    int requestsMet = 0; // that it selects by their command
    int callsMet = 0;
    int requestsHit = 0; // where it has done something
    int callsHit = 0;
    // Of the call that goes on: whether it is hit, and what was drawn for it.
    bool callIsHit = false;
    std::optional<bool> callIsDrawn{};
    bool hasEnded = false;
    std::vector<std::uint64_t> exchanges; // the last that it has hit
};

class Faults
{
public:
    enum class Event
    {
        armed,
        changed, // it has done something, or has ended
        stopped, // what it still does ends, and it may act again
        disarmed
    };
    using Observer = std::function<void(const Armed&, Event)>;

    // At most so many at once, those that have ended included: each request meets all of them.
    static constexpr std::size_t mostArmed = 100;

    // Its number. It acts from the next request on.
    std::uint64_t arm(Fault fault);
    // Whether there was such a fault. What has no end of its own ends now.
    bool disarm(std::uint64_t number);
    void disarmAll();
    // The printer has become another one, which nothing has hit: what they still do upon a request ends. What
    // needs no request goes on.
    void endDeeds();
    // Also those that have ended, until they are disarmed.
    [[nodiscard]] const std::vector<Armed>& list() const { return armed; }

    // Those that are to hit; nothing when nothing is armed, which costs nothing. What each then comes to is
    // told by `hasDone`: one that could do nothing is not used up.
    struct Hit
    {
        std::uint64_t number = 0;
        Fault fault;
    };
    std::vector<Hit> meet(const Occasion& occasion)
    {
        return armed.empty() ? std::vector<Hit>() : hitsOf(occasion);
    }

    // This one has done something to an exchange of the trace; to a connection with 0.
    void hasDone(std::uint64_t number, std::uint64_t exchange);
    // No further try of the last call can come: who has hit enough of them ends. While an upload goes on only
    // its block has been a call.
    void endCalls(bool isUploading);

    void watch(Observer observer) { observers.push_back(std::move(observer)); }

private:
    struct Chance
    {
        std::uint64_t number;
        std::mt19937 generator;
    };

    std::vector<Hit> hitsOf(const Occasion& occasion);
    bool hits(Armed& one, const Occasion& occasion);
    bool isDrawn(Armed& one);
    bool draw(const Armed& one);
    void tell(const Armed& one, Event event) const;

    std::vector<Armed> armed;
    std::vector<Chance> chances;
    std::vector<Observer> observers;
    std::uint64_t following = 1;
};

using Hits = std::vector<Faults::Hit>;

} // namespace virtual_printer
