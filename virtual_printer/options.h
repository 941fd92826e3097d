// The command line of telvofm-printer.
#pragma once

#include "virtual_printer/fiscal/moment.h"
#include "virtual_printer/transport/address.h"
#include "virtual_printer/transport/second_till.h"

#include <cstdint>
#include <filesystem>
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
    std::filesystem::path dataFolder;
    std::filesystem::path readyFile;
    std::filesystem::path codesFile;
    std::filesystem::path logoFolder;
    std::filesystem::path scenarioFile; // whose faults every printer is armed with
    std::optional<Moment> start;        // of the clock
    std::optional<Address> control;     // where tests control the printers
    std::optional<Address> web;         // where a person watches them, on a page
    std::string token;                  // that they must know
    SecondTill secondTill = SecondTill::busy;
    bool isFactoryNew = false;
    bool endsWithParent = false;

    // Help or the version was asked for: all has been said.
    bool hasEnded = false;
};

// From the command line without the program's name, in UTF-8. Throws std::runtime_error with a sentence for
// the user when they are wrong.
Options readOptions(std::vector<std::string> arguments);

} // namespace virtual_printer
