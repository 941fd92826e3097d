// The virtual printer: fiscal printers in a program, whose paper is standard output.
//
//     telvofm-printer --listen 127.0.0.1:0      over TCP; 0 takes any free port
//     telvofm-printer --pty                     on a serial line of its own, a pseudo-terminal
//     telvofm-printer --serial /dev/ttyUSB0     on a real serial line
//
// The first lines of its output say where the printers can be reached.
#include "virtual_printer/console.h"
#include "virtual_printer/options.h"
#include "virtual_printer/service.h"

#include <cstdio>
#include <cstdlib>
#include <exception>

namespace {

constexpr int wrongUse = 2;

// What went wrong in one sentence, which the exception has.
void say(const std::exception& failure)
{
    std::fprintf(stderr, "telvofm-printer: %s\n", failure.what());
}

int run(const virtual_printer::Options& options)
{
    try {
        return virtual_printer::serve(options);
    } catch (const std::exception& failure) {
        say(failure);
        return EXIT_FAILURE;
    }
}

} // namespace

int main(int count, char** arguments)
{
    try {
        virtual_printer::writeInUtf8();
        const auto options = virtual_printer::readOptions(virtual_printer::commandLine(count, arguments));
        return options.hasEnded ? EXIT_SUCCESS : run(options);
    } catch (const std::exception& wrong) {
        say(wrong);
    }
    return wrongUse;
}
