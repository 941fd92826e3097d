// The command line of telvofm-printer.
#pragma once

#include "virtual_printer/fiscal/moment.h"
#include "virtual_printer/transport/tcp_link.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace virtual_printer {

struct NetworkPrinter
{
    std::string name;
    std::string address;
};

struct Options
{
    std::vector<NetworkPrinter> network;
    bool hasPseudoTerminal = false;
    std::string serialPort;
    std::uint32_t baud = 57600;
    std::string dataFolder;
    std::string readyFile;
    std::string codesFile;
    std::string logoFolder;
    std::optional<Moment> start; // of the clock
    SecondTill secondTill = SecondTill::busy;
    bool isFactoryNew = false;
    bool endsWithParent = false;

    // Help or the version was asked for, or the options were wrong: all has been said.
    bool hasEnded = false;
    int exitCode = 0;
};

// Throws std::runtime_error with a sentence for the user.
Options readOptions(int count, const char* const* arguments);

} // namespace virtual_printer
