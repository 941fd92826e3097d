// One till's connection to a printer, without a socket: bytes in, bytes out.
#pragma once

#include "virtual_printer/language/exchange.h"
#include "virtual_printer/printers/codes.h"
#include "virtual_printer/printers/printer.h"

#include <string>
#include <string_view>

namespace virtual_printer {

class TillSession
{
public:
    TillSession(Printer& device, CodePage textsOfLink, const Codes& refusalCodes)
        : printer(device), codePage(textsOfLink), codes(refusalCodes)
    {
    }

    // What the printer sends upon these bytes.
    std::string take(std::string_view bytes);

private:
    std::string answerTo(const Incoming& incoming);
    std::string bytesOf(const Answer& answer);

    Printer& printer;
    CodePage codePage;
    const Codes& codes;
    Exchange exchange;
};

} // namespace virtual_printer
