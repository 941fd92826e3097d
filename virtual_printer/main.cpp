// The virtual printer: a fiscal printer in a program, whose paper is standard output.
//
//     telvofm-printer --listen 127.0.0.1:0      over TCP; 0 takes any free port
//     telvofm-printer --pty                     on a serial line of its own, a pseudo-terminal
//     telvofm-printer --serial /dev/ttyUSB0     on a real serial line
//
// The first line of its output says where it can be reached. One till is served at a time.
#include "virtual_printer/moments.h"
#include "virtual_printer/protocol_server.h"

#include <CLI/CLI.hpp>
#include <array>
#include <csignal>
#include <cstdio>
#include <ctime>
#include <unistd.h>

namespace {

using namespace virtual_printer;

std::string systemTime()
{
    const std::time_t now = std::time(nullptr);
    std::tm parts{};
    ::localtime_r(&now, &parts);
    std::array<char, 32> text{};
    std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M", &parts);
    return text.data();
}

void say(std::string_view line)
{
    std::printf("%.*s\n", static_cast<int>(line.size()), line.data());
    std::fflush(stdout);
}

void serveTcp(const std::string& address, Printer& printer)
{
    const std::size_t colon = address.rfind(':');
    if (colon == std::string::npos) {
        throw std::runtime_error(address + " has no port; name an address as 127.0.0.1:0");
    }
    const int listener = listenOn(address.substr(0, colon), address.substr(colon + 1));
    say("listening on " + addressOf(listener));
    for (;;) {
        const int till = acceptOn(listener);
        if (till != -1) {
            DescriptorStream stream(till, true);
            ProtocolServer(stream, printer).serve();
        }
    }
}

void serveLine(int line, Printer& printer)
{
    DescriptorStream stream(line, false);
    ProtocolServer(stream, printer).serve();
}

int run(int count, char** arguments)
{
    CLI::App app("A virtual fiscal printer; its paper is standard output");
    std::string address;
    std::string device;
    std::string fixedTime;
    std::string logoFolder;
    bool wantsPseudoTerminal = false;
    auto* links = app.add_option_group("link");
    links->add_option("--listen", address, "Listen for tills on HOST:PORT");
    links->add_flag("--pty", wantsPseudoTerminal, "Make a pseudo-terminal and print its path");
    links->add_option("--serial", device, "Use a serial device");
    links->require_option(1);
    app.add_option("--logo-png", logoFolder, "Write uploaded pictures as PNG files into this folder")
        ->check(CLI::ExistingDirectory);
    app.add_option("--clock", fixedTime, "Print this as the time, instead of the system's");
    CLI11_PARSE(app, count, arguments);

    if (!fixedTime.empty()) {
        const auto moment = parseMoment(fixedTime, Edge::first);
        if (!moment) {
            throw std::runtime_error(fixedTime + " is no time; write it as \"2026-01-31 12:00\"");
        }
        fixedTime = *moment;
    }
    // Nothing is held that would have to be put away.
    static_cast<void>(std::signal(SIGTERM, [](int) { ::_exit(0); }));
    static_cast<void>(std::signal(SIGINT, [](int) { ::_exit(0); }));
    const CodePage texts = address.empty() ? CodePage::cp852 : CodePage::windows1250;
    Printer printer(texts, say, [&] { return fixedTime.empty() ? systemTime() : fixedTime; });
    printer.uploads().writeLogosTo(logoFolder);
    if (!address.empty()) {
        serveTcp(address, printer);
    } else if (wantsPseudoTerminal) {
        std::string path;
        const int line = openPseudoTerminal(path);
        say("serial line " + path);
        serveLine(line, printer);
    } else {
        const int line = openTerminal(device);
        say("serial line " + device);
        serveLine(line, printer);
    }
    return 0;
}

} // namespace

int main(int count, char** arguments)
{
    try {
        return run(count, arguments);
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "telvofm-printer: %s\n", failure.what());
    } catch (...) {
        std::fputs("telvofm-printer: something went wrong that cannot be told; start it again\n", stderr);
    }
    return 1;
}
