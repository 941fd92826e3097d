// One till's connection to a printer, without a socket: bytes in, bytes out.
#pragma once

#include "virtual_printer/language/exchange.h"
#include "virtual_printer/printers/codes.h"
#include "virtual_printer/printers/recorder.h"
#include "virtual_printer/printers/station.h"

#include <chrono>
#include <string>
#include <string_view>

namespace virtual_printer {

class TillSession
{
public:
    TillSession(Station& at, CodePage textsOfLink, const Codes& refusalCodes)
        : printer(at.printer), codePage(textsOfLink), codes(refusalCodes), recorder(at, textsOfLink)
    {
    }

    using Time = std::chrono::steady_clock::time_point;

    // What the printer sends upon these bytes, which came now. A request that a till has not gone on with for
    // five seconds is none: on a serial line the till that began it may have ended, and the next one's
    // requests would be taken for the rest of it.
    std::string take(std::string_view bytes, Time now);
    // All that `take` has given has been handed over.
    void hasSent(Time now) { recorder.hasSent(now); }

private:
    std::string answerTo(const Incoming& incoming, Time now);
    std::string answerProbe(Time now);
    std::string refuseDamaged(Exchanged::Kind kind, Time now);
    std::string settle(Exchanged exchanged, Answer answer, Time now);
    std::string bytesOf(const Answer& answer);

    Printer& printer;
    CodePage codePage;
    const Codes& codes;
    Exchange exchange;
    Recorder recorder;
    std::string heard; // since the last exchange was complete
    Time lastByte{};
};

} // namespace virtual_printer
