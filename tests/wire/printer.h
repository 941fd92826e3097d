// The printer of one call: plays its steps on the connection in a thread of its own while the call runs.
#pragma once

#include "tests/wire/loopback.h"
#include "tests/wire/script.h"

#include <atomic>
#include <functional>
#include <string>
#include <thread>

namespace wire {

class Printer
{
public:
    // What is looked at the moment the first request of the call has come: what is wrong, or an empty text.
    using Look = std::function<std::string()>;

    // Sets the modem lines that the call begins with and begins to play; the connection belongs to the
    // printer until `finish`.
    Printer(Connection& connection, const std::vector<Step>& steps, Look lookAtFirstRequest);
    Printer(const Printer&) = delete;
    Printer& operator=(const Printer&) = delete;
    ~Printer() { finish(); }

    // The call has returned: plays what is left, looks for bytes that nobody expected, and says what went
    // wrong (nothing: an empty text).
    std::string finish();

private:
    std::size_t setFirstLines();
    void play();
    bool expect(const Step& step);
    bool looksRight();
    void answer(const Step& step);
    bool staysQuiet(const Step& step);
    void lookForMore();

    Connection& connection;
    const std::vector<Step>& steps;
    Look lookAtFirstRequest;
    std::size_t played;
    std::string problem;
    std::atomic<bool> callHasReturned = false;
    std::thread player;
};

} // namespace wire
