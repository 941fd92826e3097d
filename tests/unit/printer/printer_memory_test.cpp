// A printer whose memory cannot be written or read: at its start one sentence says so, later a refusal does.
#include "tests/unit/own_folder.h"
#include "tests/unit/printer/simulated_disk.h"
#include "virtual_printer/printers/new_printer.h"
#include "virtual_printer/printers/printer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sqlite3.h>

namespace virtual_printer {
namespace {

using telvofm::test::OwnFolder;
using test::SimulatedDisk;
using testing::HasSubstr;

class PrinterMemory : public testing::Test
{
protected:
    [[nodiscard]] Printer start() const
    {
        return {Memory(path), readyToSell(),
                [] { return parseMoment("2026-01-31 12:00", Edge::first).value(); }};
    }

    // Why the printer does not start; empty when it does.
    template <typename Failure>
    [[nodiscard]] std::string failureAtStart() const
    {
        try {
            const Printer printer = start();
        } catch (const Failure& failure) {
            return failure.what();
        }
        return "";
    }

    static Refusal send(Printer& printer, unsigned char command, const std::vector<std::string>& fields = {})
    {
        return printer.execute({1, command, fields}, CodePage::windows1250).refusal;
    }

    // One receipt of 0.00, and the end of the process.
    void sell() const
    {
        Printer printer = start();
        EXPECT_EQ(send(printer, 0x29, {"0"}), Refusal::none);
        EXPECT_EQ(send(printer, 0x20, {"0", "1", "0", "0", "1", "0"}), Refusal::none);
        EXPECT_EQ(send(printer, 0x24, {"0", "Chlieb", "0", "A", "1", "0", "ks"}), Refusal::none);
        EXPECT_EQ(send(printer, 0x22, {"0", "0"}), Refusal::none);
    }

    void change(const char* sql) const
    {
        sqlite3* database = nullptr;
        ASSERT_EQ(sqlite3_open(path.c_str(), &database), SQLITE_OK);
        EXPECT_EQ(sqlite3_exec(database, sql, nullptr, nullptr, nullptr), SQLITE_OK);
        sqlite3_close(database);
    }

    OwnFolder folder;
    std::string path = folder.file("printer.db");
};

TEST_F(PrinterMemory, IsNeededToStart)
{
    SimulatedDisk disk;
    {
        const Memory memory(path); // its tables still find room
    }
    disk.failureOf = [](const SimulatedDisk::Operation& operation) {
        return operation.kind == SimulatedDisk::Operation::Kind::write ? SQLITE_FULL : SQLITE_OK;
    };
    EXPECT_EQ(failureAtStart<DiskFull>(), "The printer's memory " + path +
                                              " could not be written: database or disk is full; make room on "
                                              "its disk, or give another folder.");
}

TEST_F(PrinterMemory, MustBeReadableToStart)
{
    sell();
    change("UPDATE parts SET content = x'05' WHERE name = 'settings'");
    EXPECT_EQ(failureAtStart<MemoryDamaged>(),
              "The printer's memory " + path +
                  " is damaged: a record does not end where it should; put a copy "
                  "of it there that is whole, or give another folder.");
}

TEST_F(PrinterMemory, MustBeWholeToStart)
{
    sell();
    change("DELETE FROM parts WHERE name = 'pictures'");
    EXPECT_THAT(failureAtStart<MemoryDamaged>(), HasSubstr("is damaged"));
}

TEST_F(PrinterMemory, IsToldToBeDamagedWhenADocumentCannotBeRead)
{
    sell();
    change("UPDATE contents SET content = x'05'");
    Printer printer = start();
    EXPECT_EQ(send(printer, 0x93), Refusal::journalDamaged); // getLastParagon
    EXPECT_EQ(send(printer, 0x2A), Refusal::journalDamaged); // repeatParagon
    EXPECT_EQ(send(printer, 0x92, {"TOTAL"}), Refusal::none) << "it goes on";
}

// The power comes back, and with it one printer of many: the others must not notice.
TEST_F(PrinterMemory, HasNoRoomForTheLineOfAPowerLossOnAFullDisk)
{
    SimulatedDisk disk;
    Printer printer = start();
    EXPECT_EQ(send(printer, 0x29, {"0"}), Refusal::none);
    EXPECT_EQ(send(printer, 0x20, {"0", "1", "0", "0", "1", "0"}), Refusal::none);
    const auto kept = printer.state().receipt;
    disk.failureOf = [](const SimulatedDisk::Operation& operation) {
        return operation.kind == SimulatedDisk::Operation::Kind::write ? SQLITE_FULL : SQLITE_OK;
    };
    printer.takeHappened();
    printer.restart();
    ASSERT_TRUE(printer.state().receipt);
    EXPECT_EQ(*printer.state().receipt, *kept) << "and no line behind it";
    const std::vector<Happened> told = printer.takeHappened();
    ASSERT_EQ(told.size(), 1U);
    EXPECT_EQ(told.front().command, "start");
    EXPECT_EQ(told.front().refusal, Refusal::diskFull);
    disk.failureOf = nullptr;
    EXPECT_EQ(send(printer, 0x22, {"0", "0"}), Refusal::nothingSold) << "it goes on";
    EXPECT_EQ(send(printer, 0x2B, {"0", ""}), Refusal::none);
}

// More than is held in memory: what it starts from is read from the disk again.
TEST_F(PrinterMemory, CannotBeReadAfterAPowerLoss)
{
    SimulatedDisk disk;
    State withPictures = readyToSell();
    Pictures pictures;
    constexpr int side = 4'096;
    pictures[1] = {side, side, std::vector<bool>(std::size_t{side} * side, true)};
    withPictures.pictures = std::make_shared<const Pictures>(std::move(pictures));
    Printer printer(Memory(path), withPictures,
                    [] { return parseMoment("2026-01-31 12:00", Edge::first).value(); });
    EXPECT_EQ(send(printer, 0x29, {"0"}), Refusal::none);
    const auto files = disk.files;
    for (auto& [name, content] : disk.files) {
        content.assign(content.size(), 'x');
    }
    printer.takeHappened();
    printer.restart();
    EXPECT_TRUE(printer.state().standing->dayIsOpen) << "it stands where it stood";
    const std::vector<Happened> told = printer.takeHappened();
    ASSERT_EQ(told.size(), 1U);
    EXPECT_EQ(told.front().command, "start");
    EXPECT_EQ(told.front().refusal, Refusal::journalDamaged);
    EXPECT_THAT(told.front().detail, HasSubstr("is damaged"));
    disk.files = files;
}

} // namespace
} // namespace virtual_printer
