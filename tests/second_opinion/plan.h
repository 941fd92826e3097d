// What the printer of the second opinion does in one call.
#pragma once

#include "tests/second_opinion/draw.h"

#include <cstddef>
#include <deque>
#include <string>

namespace telvofm::test {

// What the printer says to one request, block or single byte of the library's.
struct Step
{
    std::string bytes;        // none: it stays silent
    bool isBlock = false;     // which the library has to answer
    bool staysSilent = false; // although more is wanted: the library asks whether it is still there
};

struct Plan
{
    // After these the printer acknowledges requests and blocks, and leaves other bytes unanswered.
    std::deque<Step> steps;
    // What is sent is this long, checksum byte and all, where it need not look like a request.
    std::size_t givenLength = 0;
    // Bytes for rawWrite: nothing is answered.
    bool listensOnly = false;
    bool isSilentAtTimes = false;
    // All data of a reply, however often it is sent: no buffer need be larger.
    std::size_t replyLength = 0;
};

enum class Exchange
{
    command,
    query,
    strictQuery,
    upload
};

Plan drawPlan(Draw& draw, Exchange exchange, bool isSerial);

} // namespace telvofm::test
