// Writes one till's exchanges into the trace of its printer, and tells repeats from new calls.
#pragma once

#include "virtual_printer/language/exchange.h"
#include "virtual_printer/printers/station.h"

#include <chrono>
#include <string>
#include <string_view>

namespace virtual_printer {

class Recorder
{
public:
    using Time = std::chrono::steady_clock::time_point;

    Recorder(Station& at, CodePage textsOfLink) : trace(at.trace), till(at.newTill()), codePage(textsOfLink)
    {
    }

    // An exchange that these bytes of the till have completed; before it is decided.
    [[nodiscard]] Exchanged begin(Exchanged::Kind kind, std::string_view bytes, Time now) const;
    // Whether it is the block just before it, which was carried out and whose acceptance has not reached the
    // till: blocks have no numbers, and any other that is the same is the next one.
    [[nodiscard]] bool hasBeenTaken(const Exchanged& block) const;
    // It is decided and `answer` will be sent. Says its number.
    std::uint64_t keep(Exchanged exchanged, std::string_view answer, Time now);
    // What the till's answer to a block of a reply means for the reply.
    enum class Reply
    {
        goesOn,
        taken,
        givenUp
    };
    // A block of its reply was answered by the till, and that is what comes upon it, with further data of the
    // reply, in UTF-8.
    void goOn(std::string_view bytes, std::string_view answer, std::string_view data, Reply reply);
    // Its answer, or the first block of it, has been handed over whole to the link.
    void hasAcknowledged(std::uint64_t number, Time now);
    // All has been done that is done upon it, though its answer is not whole.
    void hasEnded(std::uint64_t number);
    // What was to come of its answer does not come any more.
    void hasBeenSilenced(std::uint64_t number);
    // No further try of the till's last call can come: what does come is another one.
    [[nodiscard]] bool isCallOver() const;
    // The till has gone: nothing more becomes of what it was not told.
    void hasGone();

private:
    [[nodiscard]] const Exchanged* findRepeated(const Exchanged& exchanged) const;
    [[nodiscard]] int attemptOf(const Exchanged& exchanged, Time now) const;

    Trace& trace;
    std::uint64_t till;
    CodePage codePage;
    std::uint64_t first = 0;   // of this till
    std::uint64_t present = 0; // the exchange whose reply the till acknowledges
    std::uint64_t last = 0;    // of this till, probes left out
    Time lastBegan{};
    bool lastIsAnswered = false; // accepted or refused, with an answer that has left the printer whole
};

} // namespace virtual_printer
