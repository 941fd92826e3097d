// Sockets that follow a script: link/socket.h without a network and without a clock. Every call is noted down
// in order, and each wait and receive takes the next event that the script has ready.
#pragma once

#include "link/socket.h"

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace telvofm::test {

// What the network does when it is waited for.
struct Event
{
    enum class Kind
    {
        bytes,
        silence,    // the whole wait passes
        closed,     // the peer has closed: readable, and 0 bytes
        brokenRead, // readable, but receiving fails
        brokenWait, // the wait itself fails
        throwing    // readable, but receiving throws a run-time exception with `bytes` as its text
    };

    Kind kind;
    std::string bytes;
};

inline Event arrive(std::string bytes)
{
    return {Event::Kind::bytes, std::move(bytes)};
}
inline const Event silence{Event::Kind::silence, {}};
inline const Event closed{Event::Kind::closed, {}};
inline const Event brokenRead{Event::Kind::brokenRead, {}};
inline const Event brokenWait{Event::Kind::brokenWait, {}};
inline Event throwing(std::string text)
{
    return {Event::Kind::throwing, std::move(text)};
}

struct ScriptedNetwork
{
    bool startsUp = true;
    // How many addresses the name resolves to; nothing when it does not resolve.
    std::optional<int> addresses = 1;
    // The addresses (from 1) for which no socket can be made, and those that refuse the connection.
    std::vector<int> withoutSocket;
    std::vector<int> refusing;
    // The number of the send (from 1) that fails.
    int failingSend = 0;
    std::deque<Event> events;

    // Every call in order: "resolve printer 64000", "connect 1", "send 1c01e004", "wait 3000", ...
    std::vector<std::string> calls;
    bool keepsCalls = true; // who makes millions of them does not
    int sends = 0;

    void play(std::initializer_list<Event> script) { events.assign(script); }
    // What another thread does while a call that begins like this runs, after `before` others of the kind.
    void meanwhile(std::string call, std::function<void()> action, int before = 0);
    // The calls since the last time.
    std::vector<std::string> takeCalls() { return std::exchange(calls, {}); }

    std::string accompaniedCall;
    std::function<void()> accompaniment;
    int callsBeforeAccompaniment = 0;
};

// The network of the running test; `resetNetwork` gives each test its own.
ScriptedNetwork& network();
void resetNetwork();

} // namespace telvofm::test
