// A link of the library's own kind, for requests as they stood in a raw log: no function of the library takes
// those.
#pragma once

#include "link/link_driver.h"
#include "tools/exchanges.h"
#include "tools/printer_session.h"

#include <memory>

namespace telvofm::tools {

// Opened, with a raw log of its own when one is named. Throws a Failure when the printer cannot be reached,
// or the log cannot be written.
std::unique_ptr<LinkDriver> openRawLink(const PrinterOptions& printer);

// What comes of the request and its uploads now.
struct RepeatedExchange
{
    Outcome outcome = Outcome::none;
    int code = 0; // of a refusal, or of a failure of the link
    std::string reply;
};
RepeatedExchange repeat(LinkDriver& link, const Exchange& exchange);

} // namespace telvofm::tools
