// One exchange between a till and a printer: what came, what it meant, what was decided and kept, and what
// was sent. The trace holds them; whoever watches a printer reads them.
#pragma once

#include "virtual_printer/fiscal/moment.h"
#include "virtual_printer/language/commands.h"

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace virtual_printer {

struct Exchanged
{
    enum class Kind
    {
        request,
        damagedRequest, // its checksum byte does not fit
        block,          // of an upload
        damagedBlock,
        probe // the till asks whether somebody is there
    };

    std::uint64_t number = 0; // the trace gives it; the first is 1
    std::uint64_t till = 0;   // which connection, from 1
    Moment moment{};          // of the printer's clock
    Kind kind = Kind::request;

    // All bytes of both directions, also those of the blocks of a reply. At most `mostBytes` of each.
    std::string fromTill;
    std::string toTill;
    bool isCut = false; // there were more bytes or more data than are kept

    unsigned char address = 0;
    unsigned char command = 0;
    const CommandRule* rule = nullptr; // none for an unknown command and for what is no request
    std::vector<std::string> fields;   // in UTF-8, those of requests only

    // The exchange that this one repeats byte for byte, because that one's answer was no acceptance or has
    // not reached the till; 0 for none.
    std::uint64_t repeatOf = 0;
    std::chrono::steady_clock::time_point came{};
    std::chrono::milliseconds repeatedAfter{0}; // that one came so long before
    // Which try of the till's call this is: a serial link sends a refused request three times by itself, TCP
    // what has met silence. 1 begins a call.
    int attempt = 1;

    Refusal refusal = Refusal::none; // what the printer decided
    std::string detail;              // and what in particular was wrong
    unsigned char code = 0;          // its number on the wire; 0 for none
    bool isExecuted = false;
    bool isCommitted = false; // something was written into the memory
    std::string answer;       // the data of the reply, in UTF-8
    // What the till has been told, and what it has confirmed.
    bool isAcknowledged = false; // an acceptance or a reply has left the printer whole
    bool isTaken = false;        // the till has confirmed the last block of a reply
    // Nothing more becomes of it: its acceptance or refusal has left the printer, its reply was taken or
    // given up, or all has been done that is done instead of answering it.
    bool isOver = false;
    bool isSilenced = false; // its answer was put off, and then did not come

    std::vector<std::string> faults; // what they did, a sentence each

    std::chrono::steady_clock::time_point known{}; // its answer: decided, and on its way
    // How long each took; the answer from its being known to its last byte's being handed over.
    std::chrono::microseconds decided{0};
    std::chrono::microseconds committed{0};
    std::chrono::microseconds answered{0};

    static constexpr std::size_t mostBytes = 65'536;

    // The command's, or what it is otherwise: "unknown", "block", "probe" ...
    [[nodiscard]] std::string_view name() const;
    void heard(std::string_view bytes) { append(fromTill, bytes); }
    void said(std::string_view bytes) { append(toTill, bytes); }
    void replied(std::string_view data) { append(answer, data); }
    // What it takes to keep.
    [[nodiscard]] std::size_t size() const;

private:
    void append(std::string& all, std::string_view more);
};

} // namespace virtual_printer
