// The printer of one call: plays its steps on the connection in a thread of its own while the call runs.
#pragma once

#include "tests/wire/loopback.h"
#include "tests/wire/script.h"

#include <atomic>
#include <string>
#include <thread>

namespace wire {

class Printer
{
public:
    // Sets the modem lines that the call begins with and begins to play; the connection belongs to the
    // printer until `finish`.
    Printer(Connection& connection, const std::vector<Step>& steps);
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
    void answer(const Step& step);
    bool staysQuiet(const Step& step);
    void lookForMore();

    Connection& connection;
    const std::vector<Step>& steps;
    std::size_t played;
    std::string problem;
    std::atomic<bool> callHasReturned = false;
    std::thread player;
};

} // namespace wire
