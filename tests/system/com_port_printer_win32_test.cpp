// The virtual printer on a COM port of Wine's: what a till at the other end of the line hears.
// tests/wire/serial_under_wine.sh starts this program and leads the line to it.
#include "tests/system/printer_process.h"
#include "tests/wire/loopback.h"
#include "tests/wire/modem_lines.h"

#include <cstdio>

namespace telvofm::test {
namespace {

using namespace std::chrono_literals;
using namespace std::string_literals;

wire::Connection line; // the till's end
std::string port;

// Each carries its checksum byte, worked out by hand: the XOR of all bytes before it.
TEST(ComPortPrinter, AnswersATillAndPrintsForIt)
{
    const PrinterProcess printer({"--serial", port, "--clock", "2026-01-31 12:00"});
    EXPECT_EQ(printer.address("serial line "), port);
    line.send("\x1C\x01\x29\x30\x00\x04\x00"s);
    EXPECT_EQ(line.receive(1, 30s), "\x06");
    line.send("\x1C\x01\x20\x30\x00\x31\x00\x30\x00\x30\x00\x31\x00\x30\x00\x04\x39"s);
    EXPECT_EQ(line.receive(1, 30s), "\x06");
    EXPECT_EQ(printer.line(), "                TELVOFM");
    EXPECT_EQ(printer.line(), "Receipt 1               2026-01-31 12:00");
    line.send("\x1C\x01\xE0\x04\xF8"s);
    EXPECT_EQ(line.receive(1, 30s), "\x15");
    EXPECT_EQ(line.receive(1, 30s), "\x01");
}

} // namespace
} // namespace telvofm::test

// com_port_printer_test --serial-name NAME --modem-lines FILE: prints "port N" and waits there for the
// bridge.
int main(int count, char** arguments)
{
    using namespace telvofm::test;
    ::testing::InitGoogleTest(&count, arguments);
    if (count != 5) {
        std::fputs("com_port_printer_test: serial_under_wine.sh starts this program\n", stderr);
        return 2;
    }
    port = arguments[2];
    wire::resetModemLines(arguments[4]);
    const wire::Listener listener;
    std::printf("port %d\n", listener.port());
    std::fflush(stdout);
    line = listener.accept(60s);
    const int outcome = line.isOpen() ? RUN_ALL_TESTS() : 1;
    line.close();
    return outcome;
}
