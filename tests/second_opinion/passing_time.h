// Waits of the library's that would be in vain pass at once: the pause before a serial query, and the silence
// of the printer on a TCP link.
#pragma once

#include "tests/second_opinion/playing_printer.h"

namespace telvofm::test {

// For the calls of this thread, until the object goes.
class PassingTime
{
public:
    explicit PassingTime(PlayingPrinter& other);
    ~PassingTime();
    PassingTime(const PassingTime&) = delete;
    PassingTime& operator=(const PassingTime&) = delete;

    PlayingPrinter& printer;
    std::size_t sent = 0; // over TCP
    int pauses = 0;       // of the length that a serial query makes
};

} // namespace telvofm::test
