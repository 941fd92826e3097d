// The whole device behind its protocol: takes a request and answers with an acceptance, a refusal or data,
// prints, and remembers.
#pragma once

#include "virtual_printer/fiscal_state.h"
#include "virtual_printer/paper.h"
#include "virtual_printer/storage.h"
#include "virtual_printer/uploads.h"

#include <functional>
#include <optional>
#include <string>

namespace virtual_printer {

struct Answer
{
    Refusal refusal = Refusal::none;
    // Data that the request asks for; nothing when it only wants to be accepted.
    std::optional<std::string> data;
};

class Printer
{
public:
    Printer(CodePage texts, Paper::Output paperOutput, std::function<std::string()> clock);

    Answer execute(const Request& request);
    // Where what requests announce goes.
    Uploads& uploads() { return received; }

private:
    Answer carryOut(const Request& request);
    Refusal sell(const Request& request);
    Refusal set(const Request& request);
    Refusal report(const Request& request);
    Answer variable(const Request& request);

    Paper paper;
    Uploads received;
    Storage storage;
    std::function<std::string()> now;
    FiscalState receipt;
};

} // namespace virtual_printer
