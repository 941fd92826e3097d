// A disk that is full when the control interface is to change what a printer keeps: each such request is
// refused in the same way, nothing of it has happened, and it goes on once there is room.
#include "tests/unit/control/controlled_till.h"
#include "tests/unit/own_folder.h"
#include "tests/unit/printer/simulated_disk.h"

#include <array>
#include <sqlite3.h>

namespace virtual_printer {
namespace {

// Before the till is there: databases that are opened from here on lie on it.
class DiskOfItsOwn
{
protected:
    void fill()
    {
        disk.failureOf = [this](const test::SimulatedDisk::Operation& operation) {
            const bool isWrite = operation.kind == test::SimulatedDisk::Operation::Kind::write;
            return isWrite && operation.file.starts_with(file) ? SQLITE_FULL : SQLITE_OK;
        };
    }
    void makeRoom() { disk.failureOf = nullptr; }

    telvofm::test::OwnFolder folder;
    std::string file = folder.file("printer.db");
    test::SimulatedDisk disk;
};

class FullDiskUnderControl : protected DiskOfItsOwn, public ControlledTill
{
protected:
    FullDiskUnderControl()
    {
        printer = Printer(Memory(file), readyToSell(), printer.currentClock());
        printer.remember();
    }
};

TEST_F(FullDiskUnderControl, RefusesEachChangeAlike)
{
    ASSERT_EQ(post(at("snapshots"), R"({"name": "morning"})").status, 201);
    beginDay();
    sell("12.50");
    const std::vector<std::array<std::string, 3>> changes = {
        {"PATCH", "settings", R"({"columns": 48})"}, {"POST", "reset", R"({"to": "started"})"},
        {"POST", "reset", R"({"to": "new"})"},       {"POST", "restore", R"({"name": "morning"})"},
        {"POST", "reset", R"({"to": "started"})"}, // to what it was before it became another one
    };
    for (const auto& [method, path, body] : changes) {
        SCOPED_TRACE(path + body);
        const Json before = get(at("state"));
        fill();
        EXPECT_THAT(
            refusedWith(409, ask(method, at(path), body)),
            testing::AllOf(testing::StartsWith("The printer's memory " + file + " could not be written: "),
                           testing::EndsWith("; make room on its disk, or give another folder.")));
        EXPECT_EQ(get(at("state")), before);
        makeRoom();
        EXPECT_EQ(ask(method, at(path), body).status, 200);
    }
}

TEST_F(FullDiskUnderControl, LetsATillReadOnWhenAChangeIsRefused)
{
    ASSERT_EQ(post(at("snapshots"), R"({"name": "morning"})").status, 201);
    beginDay();
    for (int count = 0; count < 8; ++count) {
        sell("12.50");
    }
    constexpr std::size_t block = ReplyData::mostOfABlock + 4; // its frame
    ASSERT_EQ(tillSays(telvofm::test::request(0x9F)).size(), block);
    for (const auto& [path, body] : std::vector<std::pair<std::string, std::string>>{
             {"reset", R"({"to": "started"})"}, {"reset", "{}"}, {"restore", R"({"name": "morning"})"}}) {
        fill();
        refusedWith(409, post(at(path), body));
        makeRoom();
        EXPECT_EQ(tillSays("\x06").size(), block) << path << body;
    }
}

} // namespace
} // namespace virtual_printer
