// Texts of a raw log for a printer on the other kind of link: a serial line has them in code page 852, TCP in
// Windows-1250. They are converted as the library converts them, so that the printer reads the same words.
#pragma once

#include "tools/exchanges.h"

#include <string>

namespace telvofm::tools {

// Whether the exchange holds a character that the two kinds of links write differently.
bool dependsOnLink(const Exchange& exchange);

class LinkTexts
{
public:
    LinkTexts(bool ofSerialLog, bool forSerialPrinter)
        : isFromSerial(ofSerialLog), isToSerial(forSerialPrinter)
    {
    }

    // The logged exchange with the texts that the till sent as the printer's link has them.
    [[nodiscard]] Exchange forPrinter(Exchange logged) const;

    // The printer's answer as it would stand in the log.
    [[nodiscard]] std::string asInLog(std::string reply) const;

private:
    bool isFromSerial;
    bool isToSerial;
};

} // namespace telvofm::tools
