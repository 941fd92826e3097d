#include "tools/printer_session.h"

#include "api/telvofm.h"
#include "tools/console.h"
#include "tools/ending.h"
#include "tools/exported_function.h"
#include "tools/paths.h"

#include <fstream>
#include <utility>

namespace telvofm::tools {

void requireWritable(const std::string& log)
{
    if (!log.empty() && !std::ofstream(pathOf(log), std::ios::app)) {
        throw Failure(Ending::noFile,
                      "the log " + log + " cannot be written; name a file in a folder that is there");
    }
}

PrinterSession::PrinterSession(PrinterOptions given)
    : library(loadLibrary(given.library)), options(std::move(given))
{
    requireWritable(options.callLog);
    requireWritable(options.rawLog);
    if (options.callLog.empty()) {
        exported<decltype(setLogginOff)>("setLogginOff")();
    } else {
        exported<decltype(setLogginOn)>("setLogginOn")(nameForLibrary(options.callLog).c_str());
    }
    if (!options.rawLog.empty()) {
        exported<decltype(setRawLogginOn)>("setRawLogginOn")(nameForLibrary(options.rawLog).c_str());
    }
}

// Also what a call has opened by itself.
PrinterSession::~PrinterSession()
{
    close();
}

void PrinterSession::open()
{
    if (hasOpened) {
        close();
    }
    const char* const name = options.address.c_str();
    int opened = 0;
    if (options.baud != 0) {
        opened = exported<decltype(openFMBaud)>("openFMBaud")(name, options.baud);
    } else if (options.stopBits != 0) {
        opened = exported<decltype(openFMStopBit)>("openFMStopBit")(name, options.stopBits);
    } else {
        opened = exported<decltype(openFM)>("openFM")(name);
    }
    hasOpened = true; // a failed open is to be closed as well
    if (opened != 0) {
        throw Failure(Ending::noAnswer, "the printer at " + options.address +
                                            " cannot be opened; 'telvofm doctor --printer " +
                                            options.address + "' says why");
    }
}

void PrinterSession::close()
{
    exported<decltype(closeFM)>("closeFM")();
    hasOpened = false;
}

} // namespace telvofm::tools
