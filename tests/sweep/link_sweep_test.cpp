// A sample of the sweep over real sockets and by the real clock, against the shared library; under Wine
// against the DLL.
#include "tests/sweep/chosen_part.h"
#include "tests/unit/own_folder.h"

#include <gtest/gtest.h>

namespace telvofm::test::sweep {
namespace {

TEST(LinkSweepTest, OverSockets)
{
    const OwnFolder folder;
    PrinterOnLink printer(betweenLooks);
    LinkSweep sweep(
        Link::tcp, [&] { return printer.address(); }, printer, folder.path.string());
    sweepChosenPart(sweep, 199587);
}

} // namespace
} // namespace telvofm::test::sweep
