#include "virtual_printer/options.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <fstream>
#include <map>
#include <stdexcept>
#include <system_error>
#include <utility>

namespace virtual_printer {
namespace {

// "NAME=HOST:PORT".
NetworkPrinter parsePrinter(const std::string& text)
{
    const std::size_t equals = text.find('=');
    const std::string name = text.substr(0, equals);
    const bool isName = !name.empty() && std::all_of(name.begin(), name.end(), [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' ||
               c == '_';
    });
    if (equals == std::string::npos || !isName) {
        throw std::runtime_error(text +
                                 " is no printer; write it as NAME=127.0.0.1:9100, with letters, digits, "
                                 "- and _ in its name");
    }
    return {name, parseAddress(std::string_view(text).substr(equals + 1))};
}

void requireDifferentNames(const Options& options)
{
    std::vector<std::string> names;
    if (options.hasPseudoTerminal) {
        names.emplace_back(nameOnPseudoTerminal);
    }
    if (!options.serialPort.empty()) {
        names.emplace_back(nameOnSerialPort);
    }
    for (const NetworkPrinter& printer : options.network) {
        if (std::find(names.begin(), names.end(), printer.name) != names.end()) {
            throw std::runtime_error("two printers are called " + printer.name +
                                     "; give each a name of its own");
        }
        names.push_back(printer.name);
    }
}

std::filesystem::path toPath(const std::string& utf8)
{
    return std::u8string(utf8.begin(), utf8.end());
}

// What is wrong with it, in the parser's own words; its own checks know no UTF-8 on Windows.
std::string noFolder(const std::string& name)
{
    std::error_code ignored;
    return std::filesystem::is_directory(toPath(name), ignored) ? "" : "Directory does not exist: " + name;
}

std::string noFile(const std::string& name)
{
    std::error_code ignored;
    const auto found = std::filesystem::status(toPath(name), ignored);
    const bool isFile = std::filesystem::exists(found) && !std::filesystem::is_directory(found);
    return isFile ? "" : "File does not exist: " + name;
}

// The first line of the file, which nobody has to see but its owner.
std::string tokenIn(const std::string& file)
{
    std::string token;
    std::ifstream stream(toPath(file));
    std::getline(stream, token);
    if (token.ends_with('\r')) {
        token.pop_back();
    }
    if (token.empty()) {
        throw std::runtime_error("there is no token in " + file + "; write one into its first line");
    }
    return token;
}

// A cookie takes it, too.
void requireToken(const Options& options)
{
    constexpr std::size_t shortest = 16;
    const std::string& token = options.token;
    const bool isVisible = std::all_of(token.begin(), token.end(), [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' ||
               c == '_' || c == '.';
    });
    if (!token.empty() && (token.size() < shortest || !isVisible)) {
        throw std::runtime_error(
            "the token is none; give one of 16 characters at least, letters, digits, -, _ and .");
    }
    if (!token.empty() && !options.control && !options.web) {
        throw std::runtime_error(
            "--token belongs to --control or --web, and neither is there; give one of them, too");
    }
}

} // namespace

Options readOptions(std::vector<std::string> arguments)
{
    Options options;
    std::string address;
    std::vector<std::string> printers;
    std::string startOfClock;
    std::string data;
    std::string ready;
    std::string refusals;
    std::string scenario;
    std::string logos;
    std::string control;
    std::string web;
    std::string tokenFile;
    std::string second = "busy";
    const std::map<std::string, SecondTill> policies = {
        {"busy", SecondTill::busy}, {"wait", SecondTill::wait}, {"takeover", SecondTill::takeover}};

    CLI::App app("A virtual fiscal printer; its paper is standard output", "telvofm-printer");
    app.allow_windows_style_options(
        false); // the options are the same everywhere, and a path may begin with "/"
    app.set_version_flag("--version", std::string("telvofm-printer ") + TELVOFM_VERSION_TEXT);
    app.add_option("--listen", address, "Listen for tills on HOST:PORT; port 0 takes any that is free");
    app.add_option("--printer", printers, "One printer of several: NAME=HOST:PORT")->allow_extra_args(false);
    app.add_flag("--pty", options.hasPseudoTerminal, "Make a pseudo-terminal and print its path");
    app.add_option("--serial", options.serialPort, "Use a serial port");
    app.add_option("--baud", options.baud, "The speed of the serial port")
        ->check(CLI::IsMember({57600, 115200}));
    app.add_option("--data", data, "Keep each printer's memory in this folder")->check(noFolder);
    app.add_option("--second", second, "A second till is turned away (busy), waits or takes over")
        ->check(CLI::IsMember({"busy", "wait", "takeover"}));
    app.add_option("--ready", ready, "Write the addresses into this file once they are there");
    app.add_flag("--exit-with-parent", options.endsWithParent, "End when the starting process has gone");
    app.add_option("--codes", refusals, "Numbers of the refusals, as a JSON file")->check(noFile);
    app.add_option("--scenario", scenario, "Arm the printers with the faults of this JSON file")
        ->check(noFile);
    app.add_option("--logo-png", logos, "Write uploaded pictures as PNG files into this folder")
        ->check(noFolder);
    app.add_option("--clock", startOfClock, "Start the clock at this moment, as \"2026-01-31 12:00\"");
    app.add_option("--control", control, "Let tests control the printers over HTTP on HOST:PORT");
    app.add_option("--web", web, "Show the printers on a page at http://HOST:PORT/, for a person");
    auto* const token =
        app.add_option("--token", options.token,
                       "What those must know who use --control or --web, of 16 characters at least");
    app.add_option("--token-file", tokenFile, "The same as the first line of a file")
        ->check(noFile)
        ->excludes(token);
    app.add_flag("--factory-new", options.isFactoryNew, "Start in training, without VAT rates");
    try {
        std::reverse(arguments.begin(), arguments.end()); // as the parser takes them
        app.parse(std::move(arguments));
    } catch (const CLI::Success& helpOrVersion) {
        app.exit(helpOrVersion);
        options.hasEnded = true;
        return options;
    } catch (const CLI::ParseError& wrong) {
        throw std::runtime_error(std::string(wrong.what()) + "; --help lists the options");
    }

    options.dataFolder = toPath(data);
    options.readyFile = toPath(ready);
    options.codesFile = toPath(refusals);
    options.scenarioFile = toPath(scenario);
    options.logoFolder = toPath(logos);
    options.secondTill = policies.at(second);
    if (!address.empty()) {
        options.network.push_back({nameOfListening, parseAddress(address)});
    }
    std::transform(printers.begin(), printers.end(), std::back_inserter(options.network), parsePrinter);
    requireDifferentNames(options);
    if (options.network.empty() && !options.hasPseudoTerminal && options.serialPort.empty()) {
        throw std::runtime_error(
            "no link is named; start it with --listen 127.0.0.1:9100, --pty or --serial PORT");
    }
    if (!control.empty()) {
        options.control = parseAddress(control);
    }
    if (!web.empty()) {
        options.web = parseAddress(web);
    }
    if (!tokenFile.empty()) {
        options.token = tokenIn(tokenFile);
    }
    requireToken(options);
    if (!startOfClock.empty()) {
        options.start = parseMoment(startOfClock, Edge::first);
        if (!options.start) {
            throw std::runtime_error(startOfClock + " is no time; write it as \"2026-01-31 12:00\"");
        }
    }
    return options;
}

} // namespace virtual_printer
