// Which files are opened as a printer's memory, and what is said of the others.
#include "tests/unit/own_folder.h"
#include "tests/unit/printer/simulated_disk.h"
#include "virtual_printer/fiscal/draft.h"
#include "virtual_printer/memory/memory.h"
#include "virtual_printer/printers/new_printer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sqlite3.h>
#include <unistd.h>

#include <fstream>

namespace virtual_printer {
namespace {

using telvofm::test::OwnFolder;
using test::SimulatedDisk;
using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

class MemoryFile : public testing::Test
{
protected:
    // Why the file is not opened; empty when it is.
    static std::string refusalOf(const std::filesystem::path& file)
    {
        try {
            const Memory memory(file);
        } catch (const std::runtime_error& error) {
            // What has failed, why, and what to do.
            EXPECT_THAT(error.what(), AllOf(StartsWith("The printer's memory " + file.string()),
                                            HasSubstr("; "), EndsWith(".")));
            return error.what();
        }
        return "";
    }

    void change(const char* sql) const
    {
        sqlite3* database = nullptr;
        ASSERT_EQ(sqlite3_open(path.string().c_str(), &database), SQLITE_OK);
        EXPECT_EQ(sqlite3_exec(database, sql, nullptr, nullptr, nullptr), SQLITE_OK);
        sqlite3_close(database);
    }

    OwnFolder folder;
    const std::filesystem::path path = folder.path / u8"printer ž.db";
    const std::filesystem::path note = folder.path / u8"printer ž.db-holder";
};

TEST_F(MemoryFile, IsMadeAndOpenedAgain)
{
    EXPECT_EQ(refusalOf(path), "");
    EXPECT_TRUE(std::filesystem::exists(path));
    EXPECT_EQ(refusalOf(path), "");
}

TEST_F(MemoryFile, LeavesNothingBesideItWhenItIsClosed)
{
    {
        const Memory memory(path);
    }
    const std::filesystem::directory_iterator files(folder.path);
    EXPECT_EQ(std::distance(begin(files), end(files)), 1);
}

TEST_F(MemoryFile, IsRefusedWhileAnotherHoldsItAndSaysWho)
{
    {
        const Memory memory(path);
        EXPECT_THAT(refusalOf(path), HasSubstr("in use by process " + std::to_string(getpid()) + ";"));
        EXPECT_THAT(refusalOf(path), HasSubstr("in use by process " + std::to_string(getpid()) + ";"));
    }
    EXPECT_EQ(refusalOf(path), "");
}

TEST_F(MemoryFile, IsRefusedWithoutANoteOfItsHolderToo)
{
    const Memory memory(path);
    std::filesystem::remove(note);
    EXPECT_THAT(refusalOf(path), HasSubstr("in use by another process"));
}

TEST_F(MemoryFile, IsOpenedBesideTheNoteOfAProcessThatWasKilled)
{
    std::ofstream(note) << "process 1";
    EXPECT_EQ(refusalOf(path), "");
}

// As those of earlier builds were; a snapshot is restored into a memory page by page.
TEST_F(MemoryFile, OfLargerPagesIsReadAndTakesOverTheContentsOfAnother)
{
    Memory other;
    other.commit(State(), Draft(readyToSell(), Moment()));
    {
        Memory memory(path);
        memory.copyFrom(other);
    }
    change("PRAGMA journal_mode = DELETE; PRAGMA page_size = 4096; VACUUM");
    Memory memory(path);
    EXPECT_TRUE(memory.load());
    EXPECT_NO_THROW(memory.copyFrom(other));
    EXPECT_TRUE(memory.load());
}

TEST_F(MemoryFile, IsRefusedWhenALaterVersionHasWrittenIt)
{
    {
        const Memory memory(path);
    }
    change("PRAGMA user_version = 3");
    EXPECT_THAT(refusalOf(path), HasSubstr("later version"));
}

TEST_F(MemoryFile, IsRefusedWhenItIsAnotherDatabase)
{
    change("CREATE TABLE cats (name TEXT)");
    EXPECT_THAT(refusalOf(path), HasSubstr("is no such memory"));
}

TEST_F(MemoryFile, IsRefusedWhenItIsNoDatabase)
{
    std::ofstream(path) << std::string(5000, 'x');
    EXPECT_THAT(refusalOf(path), HasSubstr("is no such memory"));
    EXPECT_EQ(telvofm::test::contentOf(path), std::string(5000, 'x')) << "it is left as it was";
}

TEST_F(MemoryFile, IsRefusedWhenItIsDamaged)
{
    {
        const Memory memory(path);
    }
    std::fstream(path, std::ios::in | std::ios::out | std::ios::binary).seekp(100) // behind the database's
                                                                                   // header
        << std::string(1000, '\xFF');
    EXPECT_THAT(refusalOf(path), HasSubstr("is damaged: "));
}

TEST_F(MemoryFile, IsRefusedWhenATableIsMissing)
{
    {
        const Memory memory(path);
    }
    change("DROP TABLE contents");
    EXPECT_THAT(refusalOf(path), HasSubstr("is damaged: "));
}

TEST_F(MemoryFile, IsRefusedInAFolderThatDoesNotExist)
{
    EXPECT_THAT(refusalOf(folder.file("none/printer.db")), HasSubstr("cannot be opened"));
}

TEST_F(MemoryFile, IsRefusedWhenItsDiskIsFull)
{
    SimulatedDisk disk;
    disk.failureOf = [](const SimulatedDisk::Operation& operation) {
        return operation.kind == SimulatedDisk::Operation::Kind::write ? SQLITE_FULL : SQLITE_OK;
    };
    EXPECT_THAT(refusalOf(path), HasSubstr("make room on its disk"));
}

TEST_F(MemoryFile, IsRefusedWhenItMayNotBeWritten)
{
    SimulatedDisk disk;
    {
        const Memory memory(path);
    }
    disk.isReadOnly = true;
    EXPECT_THAT(refusalOf(path), HasSubstr("may not be written"));
}

} // namespace
} // namespace virtual_printer
