// The same on a pseudo-terminal.
#include "tests/sweep/chosen_part.h"
#include "tests/system/serial_printer.h"
#include "tests/unit/own_folder.h"

#include <gtest/gtest.h>

namespace telvofm::test::sweep {
namespace {

TEST(LinkSweepTest, OnAPseudoTerminal)
{
    const OwnFolder folder;
    SerialPrinter terminal(folder.file("lines"));
    PrinterOnLink printer(terminal.line(), betweenLooks, [&](bool areOn) { terminal.setLines(areOn, true); });
    const auto port = [&] {
        printer.plugAgain([&] { terminal.plugAgain(); });
        return terminal.name();
    };
    LinkSweep sweep(Link::serial, port, printer, folder.path.string());
    sweepChosenPart(sweep, 156800);
}

} // namespace
} // namespace telvofm::test::sweep
