// What a printer does upon the bytes of a till, as data: a list of steps, each with its time. A session makes
// the list, faults change it, and the transport carries it out.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <variant>
#include <vector>

namespace virtual_printer {

struct Send
{
    std::string bytes;
    // The exchange whose answer is whole with the last of these bytes; 0 when it is not.
    std::uint64_t acknowledges = 0;
    bool isAnswer = true; // and not what a busy printer says before it
};
struct CloseLink // on a serial line: hang up
{
};
struct ResetLink
{
};
// The till is not heard any more and hears nothing, not even that the connection has ended.
struct AbandonLink
{
    std::uint64_t fault = 0; // by which
};
// Whoever connects meanwhile is refused by the system, as by a printer that is switched off.
struct RefuseConnections
{
    std::chrono::milliseconds duration{0};
    std::uint64_t fault = 0; // by which
};
// What the steps before it would still do does not come any more: the printer has no power. Lines that are
// off for want of power stay so.
struct ForgetSteps
{
};
// Of a serial line, as the till sees them: a fault holds some off, and with both on lets go of them.
struct SetLines
{
    bool clearToSend = true;
    bool dataSetReady = true;
    std::uint64_t fault = 0;
};
using Action =
    std::variant<Send, CloseLink, ResetLink, AbandonLink, RefuseConnections, ForgetSteps, SetLines>;

// Longer than any printer runs.
inline constexpr std::chrono::milliseconds untilDisarmed = std::chrono::hours(24 * 365 * 100);

// A fault that goes before a step is taken: the step goes with it, or was only put off and is taken so much
// earlier.
struct PutOff
{
    std::uint64_t fault = 0;
    std::chrono::milliseconds by{0};
    bool goesAlong = false;
};

struct Step
{
    std::chrono::milliseconds after{0}; // the bytes that the steps follow
    Action action;
    // The exchange that ends with it, whether or not its answer is whole; 0 for none.
    std::uint64_t ends = 0;
    std::vector<PutOff> putOff{};
};
using Steps = std::vector<Step>;

} // namespace virtual_printer
