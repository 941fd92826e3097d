// One till's connection to a printer, without a socket: bytes in, bytes out.
#pragma once

#include "virtual_printer/language/exchange.h"
#include "virtual_printer/printers/printer.h"

#include <string>
#include <string_view>

namespace virtual_printer {

class TillSession
{
public:
    TillSession(Printer& device, CodePage textsOfLink) : printer(device), codePage(textsOfLink) {}

    // What the printer sends upon these bytes.
    std::string take(std::string_view bytes);

private:
    std::string answerTo(const Incoming& incoming);
    std::string bytesOf(Answer answer);

    Printer& printer;
    CodePage codePage;
    Exchange exchange;
};

} // namespace virtual_printer
