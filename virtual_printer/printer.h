// The whole device behind its protocol: takes a request and answers with an acceptance, a refusal or data,
// prints, and remembers.
#pragma once

#include "virtual_printer/fiscal_state.h"
#include "virtual_printer/paper.h"
#include "virtual_printer/storage.h"

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

    // Writes every uploaded picture as logo-N.png into the folder.
    void writeLogosTo(std::string folder) { logoFolder = std::move(folder); }

    Answer execute(const Request& request);
    // Data of an upload that a request has announced, block by block.
    void takeUpload(const std::string& data, bool isLast);

private:
    Refusal sell(const Request& request);
    Answer report(const Request& request);
    Answer data(const Request& request);
    Answer variable(const Request& request);
    void printReport(const std::string& title);

    Paper paper;
    Storage storage;
    FiscalState receipt;
    void takeLogo(const std::string& data);

    unsigned char uploadCommand = 0;
    std::string upload;
    std::string logoFolder;
    int logoCount = 0;
};

} // namespace virtual_printer
