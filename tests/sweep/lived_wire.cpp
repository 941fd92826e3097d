#include "tests/sweep/lived_wire.h"

namespace telvofm::test::sweep {

// A step of three seconds, a probe, and another step; what the printer says of itself begins the wait anew,
// but for "ready" behind a probe.
Byte LivedWire::tcpByte(bool passThrough)
{
    constexpr Byte xon = 0x11;
    constexpr Byte xoff = 0x13;
    bool hasProbed = false;
    for (;;) {
        while (isSilentStep()) {
            if (hasProbed) {
                throw CallEnds{timedOut};
            }
            expectByte(xon);
            hasProbed = true;
        }
        const Byte byte = takeReceived();
        if (passThrough || (byte != xon && byte != xoff)) {
            return byte;
        }
        if (hasProbed && byte == xon) {
            throw CallEnds{timedOut};
        }
        hasProbed = false;
    }
}

} // namespace telvofm::test::sweep
