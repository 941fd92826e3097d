// The library, loaded and told which printer to talk to, for as long as a command calls its functions.
#pragma once

#include "tools/loaded_library.h"

#include <string>

namespace telvofm::tools {

// What the command line says about it. Texts are as they were given, in UTF-8.
struct PrinterOptions
{
    std::string library;
    std::string address; // empty: none is opened
    unsigned baud = 0;   // 0: the library's own choice
    unsigned stopBits = 0;
    std::string callLog; // empty: none is written
    std::string rawLog;
};

// Throws a Failure when a log cannot be written, of which the library says nothing; one without a name is
// none.
void requireWritable(const std::string& log);

class PrinterSession
{
public:
    // Opens no printer yet. Throws a Failure when the library is missing, or a log cannot be written.
    explicit PrinterSession(PrinterOptions given);
    PrinterSession(const PrinterSession&) = delete;
    PrinterSession& operator=(const PrinterSession&) = delete;
    ~PrinterSession();

    // Throws a Failure when the printer cannot be reached. A session that is open is closed first.
    void open();
    void close();
    [[nodiscard]] bool isOpen() const { return hasOpened; }

    LoadedLibrary library;

private:
    PrinterOptions options;
    bool hasOpened = false;
};

} // namespace telvofm::tools
