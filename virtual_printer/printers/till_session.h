// One till's connection to a printer, without a socket: bytes in, and out the steps that the printer takes
// upon them. Here faults come in between: between exchange, decision, commit and answer.
#pragma once

#include "virtual_printer/faults/damage.h"
#include "virtual_printer/faults/disturb.h"
#include "virtual_printer/language/exchange.h"
#include "virtual_printer/printers/codes.h"
#include "virtual_printer/printers/lasting_faults.h"
#include "virtual_printer/printers/recorder.h"
#include "virtual_printer/printers/station.h"

#include <chrono>
#include <string>
#include <string_view>
#include <vector>

namespace virtual_printer {

class TillSession
{
public:
    TillSession(Station& at, CodePage textsOfLink, const Codes& refusalCodes)
        : station(at), codePage(textsOfLink), codes(refusalCodes), recorder(at, textsOfLink),
          begun(at.trace.begin())
    {
    }

    using Time = std::chrono::steady_clock::time_point;

    // What the printer does as the till connects: nothing, without a fault.
    Steps greet();
    // What the printer does upon these bytes, which came now. A request that a till has not gone on with for
    // five seconds is none: on a serial line the till that began it may have ended, and the next one's
    // requests would be taken for the rest of it.
    Steps take(std::string_view bytes, Time now);
    // What this fault still does here ends; what others do goes on.
    void endFault(std::uint64_t number) { lasting.end(number); }
    // On a serial line a printer that is off for so long hears and says nothing, and its lines are off.
    Steps switchOff(std::uint64_t fault, std::chrono::milliseconds duration, Time now);
    // The answer of this exchange has been handed over whole.
    void hasAcknowledged(std::uint64_t number, Time now);
    // The step with which this exchange ends has been taken.
    void hasEnded(std::uint64_t number);
    // This step, which was put off, is never taken.
    void hasLost(const Step& step);
    // The link is closed, from whichever side.
    void hasGone();

private:
    void answer(const Incoming& incoming, Time now);
    void answerProbe(Time now);
    void goOn(const MoreOfReply& more);
    void execute(const Request& request, Time now);
    void takeBlock(const Block* block, Time now);
    void settle(Exchanged exchanged, Answer answer, const Hits& hits, Time now);
    static Hindrance hindranceOf(const Hits& hits, const CommandRule* rule);
    Answer ask(const Request& request, const Hits& hits, const CommandRule* rule);
    std::string bytesOf(Answer& answer);
    void disturb(Exchanged exchanged, const std::string& whole, const Hits& hits, bool isAsked, Time now);
    void tellDone(const Hits& done, std::uint64_t exchangeHit);
    void letEnd(std::uint64_t number, Steps& all);
    [[nodiscard]] bool isSerial() const { return codePage == CodePage::cp852; }
    void followThePrinter();
    void endCalls();

    Station& station;
    CodePage codePage;
    const Codes& codes;
    Exchange exchange;
    Recorder recorder;
    std::string heard;           // since the last exchange was complete
    unsigned char uploading = 0; // the command whose blocks come, or came last
    Time lastByte{};
    Steps steps; // that `take` gives

    std::uint64_t lastBlock = 0; // the exchange of the one that was taken last
    std::uint64_t begun = 0;     // the beginning of the printer that it talks to

    LastingFaults lasting;
    std::string answerBefore;
};

} // namespace virtual_printer
