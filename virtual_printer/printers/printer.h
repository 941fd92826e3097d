// One printer: its state and its memory, and the way of every request through it: decide, commit, answer,
// show. It knows no socket.
#pragma once

#include "virtual_printer/fiscal/decide.h"
#include "virtual_printer/language/code_page.h"
#include "virtual_printer/language/reply_data.h"
#include "virtual_printer/memory/memory.h"
#include "virtual_printer/printers/clock.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace virtual_printer {

struct Answer
{
    Refusal refusal = Refusal::none;
    std::string detail{}; // of the refusal: what in particular was wrong
    // What the request asks for, in the code page of its link, enough for the first block fetched; nothing
    // when it only wants to be accepted.
    std::optional<ReplyData> data{};

    // What faults have made of it: it never came, or it is refused with this number, whatever it is.
    bool isLost = false;
    std::optional<unsigned char> refusesWith{};
    // A block that has come again: nothing was decided.
    bool isTakenAgain = false;

    // For the trace.
    bool isExecuted = false;
    std::optional<Moment> moment{};    // at which it was decided
    const CommandRule* rule = nullptr; // none for an unknown command
    std::vector<std::string> fields{}; // of the request, in UTF-8
    bool isCommitted = false;          // something was written into the memory
    std::chrono::microseconds decided{0};
    std::chrono::microseconds committed{0};
};

// What faults do to the carrying out of a request.
struct Hindrance
{
    bool diskIsFull = false;
    bool paperIsOut = false;
    bool doesNothing = false; // what is accepted is not carried out
};

// What has happened, for paper, standard output and page. It comes after the answer is given.
struct Happened
{
    Refusal refusal = Refusal::none;
    std::string command; // its name
    std::vector<Shown> shown;
    // The place in the journal of the document that was printed or is being printed, from 1; 0 for none.
    int document = 0;
    std::uint64_t exchange = 0; // of the trace; 0 when it was none
    std::string detail{};       // of the refusal
    bool clearsJournal = false; // places in it mean other documents from here on
};

class Printer
{
public:
    // Continues where the memory stands. A receipt that was open goes on after a line that says so. Throws
    // what the memory throws.
    Printer(Memory memory, State stateWhenNew, Clock startedClock);

    // `request` as it came, with texts in `codePage`.
    Answer execute(const Request& request, CodePage codePage, const Hindrance& hindrance = {});
    Answer takeBlock(std::string_view data, bool isLast, CodePage codePage, const Hindrance& hindrance = {});
    [[nodiscard]] bool expectsBlocks() const;
    // As when its power has gone and come: it goes on from what the memory holds. Paper, cover and drawer are
    // as they were, the displays are empty. A memory that cannot be written or read is told as a refusal of
    // "start": then it goes on without the line about the power, or from where it stood.
    void restart();
    // The trace has given this number to the request that was carried out or refused last.
    void wasExchange(std::uint64_t number);
    // What is to be shown of the requests answered since the last call; the caller answers first.
    std::vector<Happened> takeHappened();

    [[nodiscard]] const State& state() const { return current; }
    [[nodiscard]] const Memory& memory() const { return kept; }
    // Never before the last document, the day and the receipt that are open: a clock that would be starts
    // there, and one that is moved back stands still until it has come there again.
    [[nodiscard]] Moment now() const;
    // The latest of these.
    [[nodiscard]] Moment earliest() const;
    // Paper, cover: what a person at the printer does.
    void changeHardware(const Hardware& hardware);

    // What no till can do, and a test may. Each happens between two requests, whole or not at all.
    // Settings as they are to be from now on. Throws DiskFull.
    void changeSettings(Settings settings);
    // Everything that `other` keeps takes the place of what is kept here; there is paper, cover
    // and drawer are closed, and the displays are empty. Throws what the memory throws.
    void takeOver(const Memory& other);
    // Remembers what is kept now; `goBack` takes that over again, whatever has happened since.
    void remember() { kept.remember(); }
    void goBack();
    // Everything that is kept, in a memory of its own.
    [[nodiscard]] Memory snapshot() const;
    // The clock shows `moment` now, and is `started` from there: standing, running, running faster.
    void setClock(Moment moment, const std::function<Clock(Moment)>& started);
    // Without the offset that the printer itself keeps.
    void setClock(Clock started) { clock = std::move(started); }
    [[nodiscard]] const Clock& currentClock() const { return clock; }

private:
    [[nodiscard]] Moment ownClock() const;
    // The same, also beyond the last moment.
    [[nodiscard]] Moment runningClock() const;
    void start();
    Answer carryOut(Decision decision, const Hindrance& hindrance = {});

    Memory kept;
    State whenNew;
    State current;
    Clock clock;
    std::vector<Happened> happened;
};

} // namespace virtual_printer
