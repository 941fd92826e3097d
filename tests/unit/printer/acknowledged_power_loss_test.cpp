// What the till gets an acknowledge byte for is on the disk by then: a till's day at a session, whose bytes
// are all that a link sends, on a disk that loses whatever was not synchronised before each acknowledge.
#include "tests/system/till_bytes.h"
#include "tests/unit/own_folder.h"
#include "tests/unit/printer/simulated_disk.h"
#include "virtual_printer/printers/new_printer.h"
#include "virtual_printer/printers/till_session.h"

#include <gtest/gtest.h>

namespace virtual_printer {
namespace {

using telvofm::test::request;

struct Acknowledged
{
    std::string request;
    bool (*isKept)(const State&);
};

TEST(AcknowledgedRequests, AreOnTheDiskBeforeTheByteIsGiven)
{
    const std::vector<Acknowledged> day = {
        {request(0xBC, {"0000", "1", "Potraviny"}),
         [](const State& state) { return state.settings->header.contains(1); }},
        {request(0x29, {"0"}), [](const State& state) { return state.standing->dayIsOpen; }},
        {request(0x2E, {"0", "", "0", "5.00", "1"}),
         [](const State& state) { return state.standing->day.drawerMovements == 1; }},
        {request(0x20, {"0", "0", "0", "0", "1", "0"}), [](const State&) { return true; }},
        {request(0x24, {"0", "Chlieb", "1.50", "A", "1", "1.50", "ks"}), [](const State&) { return true; }},
        {request(0x30, {"0", "1", "1.50", "1.50", "0", ""}), [](const State&) { return true; }},
        {request(0x22, {"0", "0"}),
         [](const State& state) { return state.standing->receipts == 1 && !state.receipt; }},
        {request(0x50, {"Z", "0"}), [](const State& state) { return state.standing->closures == 1; }},
    };
    const telvofm::test::OwnFolder folder;
    test::SimulatedDisk disk;
    std::vector<std::size_t> operations; // that the disk had seen when the byte was given
    {
        const Codes codes;
        Station station("printer", Printer(Memory(folder.file("printer.db")), readyToSell(), [] {
                            return parseMoment("2026-01-31 12:00", Edge::first).value();
                        }));
        TillSession session(station, CodePage::windows1250, codes);
        for (const Acknowledged& step : day) {
            const Steps steps = session.take(step.request, {});
            ASSERT_EQ(steps.size(), 1U);
            ASSERT_EQ(std::get<Send>(steps.front().action).bytes, "\x06");
            operations.push_back(disk.operations.size());
        }
    }
    const auto all = disk.operations;
    test::PowerLoss powerLoss;
    std::size_t passed = 0;
    for (std::size_t step = 0; step < day.size(); ++step) {
        for (; passed < operations[step]; ++passed) {
            powerLoss.pass(all[passed]);
        }
        disk.files = powerLoss.nothingUnsynchronized();
        const auto kept = Memory(folder.file("printer.db")).load();
        EXPECT_TRUE(kept && day[step].isKept(*kept)) << "step " << step;
    }
}

} // namespace
} // namespace virtual_printer
