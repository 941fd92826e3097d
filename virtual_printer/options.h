// The command line of telvofm-printer.
#pragma once

#include "virtual_printer/fiscal/moment.h"
#include "virtual_printer/transport/address.h"
#include "virtual_printer/transport/second_till.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace virtual_printer {

// The names of the printers that have no other.
inline constexpr const char* nameOfListening = "printer";
inline constexpr const char* nameOnPseudoTerminal = "pty";
inline constexpr const char* nameOnSerialPort = "serial";

struct NetworkPrinter
{
    std::string name;
    Address address;
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
    std::string scenarioFile;       // whose faults every printer is armed with
    std::optional<Moment> start;    // of the clock
    std::optional<Address> control; // where tests control the printers
    std::string token;              // that they must know
    SecondTill secondTill = SecondTill::busy;
    bool isFactoryNew = false;
    bool endsWithParent = false;

    // Help or the version was asked for: all has been said.
    bool hasEnded = false;
};

// Throws std::runtime_error with a sentence for the user when they are wrong.
Options readOptions(int count, const char* const* arguments);

} // namespace virtual_printer
