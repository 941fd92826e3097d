#include "virtual_printer/printers/recorder.h"

#include <algorithm>
#include <array>

namespace virtual_printer {
namespace {

// What has met silence is sent again by a till that has waited; at once it is another call.
constexpr std::chrono::milliseconds shortestSilence{2500};
constexpr int triesOfACall = 3;
// How far back a repeat is looked for.
constexpr std::uint64_t longestLookBack = 64;

bool isSame(const Exchanged& a, const Exchanged& b)
{
    return a.kind == b.kind && a.fromTill.starts_with(b.fromTill) && a.kind != Exchanged::Kind::probe;
}

// Also where a fault has put the refusal in the place of the answer.
bool endsWithRefusal(std::string_view bytes)
{
    constexpr char refused = 0x15;
    return bytes.size() >= 2 && bytes[bytes.size() - 2] == refused;
}

bool isAccepted(const Exchanged& exchanged)
{
    return exchanged.refusal == Refusal::none && exchanged.isAcknowledged;
}

// It has begun a receipt or the day, or ended a receipt: the same bytes behind it mean something else.
bool isBoundary(const Exchanged& exchanged)
{
    using telvofm::Command;
    constexpr std::array boundaries{Command::sellingDayBegin, Command::paragonBegin, Command::paragonEnd,
                                    Command::destroyParagon};
    return exchanged.kind == Exchanged::Kind::request && exchanged.isExecuted &&
           std::find(boundaries.begin(), boundaries.end(), static_cast<Command>(exchanged.command)) !=
               boundaries.end();
}

// What the till was given for it is all, and it was something.
bool hasSpoken(const Exchanged& exchanged)
{
    return exchanged.isOver && !exchanged.isSilenced && !exchanged.toTill.empty();
}

bool hasBeenSilent(const Exchanged& exchanged)
{
    return exchanged.isOver && (exchanged.isSilenced || exchanged.toTill.empty());
}

} // namespace

Exchanged Recorder::begin(Exchanged::Kind kind, std::string_view bytes, Time now) const
{
    Exchanged exchanged;
    exchanged.till = till;
    exchanged.kind = kind;
    exchanged.came = now;
    exchanged.heard(bytes);
    if (const Exchanged* repeated = findRepeated(exchanged)) {
        exchanged.repeatOf = repeated->number;
        exchanged.attempt = attemptOf(exchanged, now);
    }
    return exchanged;
}

// The one before it that was refused or has had no answer; of those before that only what was carried out
// without the till's knowing, and in the same receipt.
const Exchanged* Recorder::findRepeated(const Exchanged& exchanged) const
{
    bool isBefore = true;
    const std::uint64_t end = trace.end();
    for (std::uint64_t back = 1;
         back <= std::min(longestLookBack, end - std::max(trace.first(), trace.begin())); ++back) {
        const Exchanged& earlier = *trace.find(end - back);
        if (earlier.kind == Exchanged::Kind::probe) {
            continue;
        }
        if (isSame(earlier, exchanged)) {
            const bool isRepeat = !isAccepted(earlier) && (isBefore || earlier.isExecuted);
            return isRepeat ? &earlier : nullptr;
        }
        if (isBoundary(earlier)) {
            return nullptr;
        }
        isBefore = false;
    }
    return nullptr;
}

bool Recorder::hasBeenTaken(const Exchanged& block) const
{
    return block.repeatOf != 0 && block.repeatOf == last && trace.find(last)->isExecuted;
}

// A serial link sends again at once what got any other answer than an acceptance, and gives up when there is
// none; TCP sends again what has met silence.
int Recorder::attemptOf(const Exchanged& exchanged, Time now) const
{
    const Exchanged* before = trace.find(last);
    if (before == nullptr || before->number != exchanged.repeatOf || before->attempt == triesOfACall) {
        return 1;
    }
    const bool hasMetSilence = !lastIsAnswered && !hasSpoken(*before) && now - lastBegan >= shortestSilence;
    const bool isTriedAgain = codePage == CodePage::cp852 ? hasSpoken(*before) : hasMetSilence;
    return isTriedAgain ? before->attempt + 1 : 1;
}

std::uint64_t Recorder::keep(Exchanged exchanged, std::string_view answer, Time now)
{
    const bool isProbe = exchanged.kind == Exchanged::Kind::probe;
    exchanged.said(answer);
    if (const Exchanged* repeated = trace.find(exchanged.repeatOf)) {
        exchanged.repeatedAfter =
            std::chrono::duration_cast<std::chrono::milliseconds>(exchanged.came - repeated->came);
    }
    exchanged.known = now;
    const std::uint64_t number = trace.add(std::move(exchanged));
    first = first == 0 ? number : first;
    if (!isProbe) {
        present = last = number;
        lastBegan = now;
        lastIsAnswered = false;
    }
    return number;
}

void Recorder::goOn(std::string_view bytes, std::string_view answer, std::string_view data, Reply reply)
{
    trace.change(present, [&](Exchanged& exchanged) {
        exchanged.heard(bytes);
        exchanged.said(answer);
        exchanged.replied(data);
        exchanged.isTaken = reply == Reply::taken;
        exchanged.isOver = exchanged.isOver || reply != Reply::goesOn;
    });
}

void Recorder::hasAcknowledged(std::uint64_t number, Time now)
{
    lastIsAnswered = lastIsAnswered || number == last;
    trace.change(number, [now](Exchanged& exchanged) {
        exchanged.answered = std::chrono::duration_cast<std::chrono::microseconds>(now - exchanged.known);
        exchanged.isAcknowledged = exchanged.refusal == Refusal::none && exchanged.code == 0;
        const bool goesOn = exchanged.isAcknowledged && !exchanged.answer.empty(); // block by block
        exchanged.isOver = exchanged.isOver || !goesOn;
    });
}

void Recorder::hasEnded(std::uint64_t number)
{
    const Exchanged* exchanged = trace.find(number);
    if (exchanged != nullptr && !exchanged->isOver) {
        lastIsAnswered = lastIsAnswered || (number == last && endsWithRefusal(exchanged->toTill));
        trace.change(number, [](Exchanged& ended) { ended.isOver = true; });
    }
}

void Recorder::hasBeenSilenced(std::uint64_t number)
{
    const Exchanged* exchanged = trace.find(number);
    if (exchanged != nullptr && !exchanged->isOver) {
        trace.change(number, [](Exchanged& silenced) { silenced.isOver = silenced.isSilenced = true; });
    }
}

bool Recorder::isCallOver() const
{
    const Exchanged* exchanged = trace.find(last);
    if (exchanged == nullptr || isAccepted(*exchanged) || exchanged->attempt == triesOfACall) {
        return true;
    }
    return codePage == CodePage::windows1250 ? lastIsAnswered || hasSpoken(*exchanged)
                                             : hasBeenSilent(*exchanged);
}

void Recorder::hasGone()
{
    for (std::uint64_t number = std::max(first, trace.first()); number < trace.end(); ++number) {
        if (trace.find(number)->till == till) {
            hasEnded(number);
        }
    }
}

} // namespace virtual_printer
