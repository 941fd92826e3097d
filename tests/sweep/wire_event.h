// What happened at the till's end of a wire, in order: all that the rules of a link speak of.
#pragma once

#include "tests/sweep/simulated_printer.h"

#include <string>

namespace telvofm::test::sweep {

struct WireEvent
{
    enum class Act
    {
        sent,       // bytes, in one call
        sendFailed, // the same, and the link refused them
        received,   // bytes
        silent,     // a wait of `lasted` ended without a byte
        closed,     // the peer has gone, or the port has
        purged,     // what had come was thrown away
        paused,     // for `lasted`
        linesOff    // a look at the lines found CTS off
    };

    Act act;
    std::string bytes;
    Milliseconds lasted{0};
    Milliseconds at{0}; // when it was over

    bool operator==(const WireEvent& other) const = default;
};

} // namespace telvofm::test::sweep
