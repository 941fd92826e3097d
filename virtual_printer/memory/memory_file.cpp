#include "virtual_printer/memory/memory_file.h"

#include "virtual_printer/memory/record.h"
#include "virtual_printer/memory/search_index.h"

#include <fstream>
#include <system_error>
#include <unistd.h> // on Windows too: the compiler's own

namespace virtual_printer {
namespace {

constexpr std::int64_t applicationId = 0x54464D70;
// Goes up with every change that an older program would misread.
// 2: documents are searched by lines of their own.
constexpr std::int64_t schemaVersion = 2;

// What is looked for lies apart from the contents, so that a search over all documents reads little. Row 0 of
// the receipt is what is said of it as a whole, the rows behind it are its lines.
constexpr const char* tables = R"(
    CREATE TABLE parts (name TEXT PRIMARY KEY, content BLOB NOT NULL);
    CREATE TABLE receipt (position INTEGER PRIMARY KEY, content BLOB NOT NULL);
    CREATE TABLE documents (id INTEGER PRIMARY KEY, kind INTEGER NOT NULL, number INTEGER NOT NULL,
        closure INTEGER NOT NULL, moment INTEGER NOT NULL, invoice TEXT, till_transaction TEXT,
        checksum INTEGER NOT NULL);
    CREATE INDEX documents_by_number ON documents(number);
    CREATE INDEX documents_by_closure ON documents(closure);
    CREATE INDEX documents_by_moment ON documents(moment);
    CREATE INDEX documents_by_invoice ON documents(invoice) WHERE invoice IS NOT NULL;
    CREATE INDEX documents_by_transaction ON documents(till_transaction) WHERE till_transaction IS NOT NULL;
    CREATE TABLE contents (id INTEGER PRIMARY KEY, content BLOB NOT NULL);
    CREATE TABLE closures (number INTEGER PRIMARY KEY, moment INTEGER NOT NULL, checksum INTEGER,
        content BLOB NOT NULL);
)";

void setVersion(const Database& database)
{
    database.run(("PRAGMA user_version = " + std::to_string(schemaVersion)).c_str());
}

void makeTables(const Database& database)
{
    Transaction transaction(database);
    database.run(tables);
    database.run(SearchIndex::table);
    database.run(("PRAGMA application_id = " + std::to_string(applicationId)).c_str());
    setVersion(database);
    transaction.commit();
}

void bringUpToDate(const Database& database)
try {
    Transaction transaction(database);
    database.run(SearchIndex::table);
    SearchIndex(database).makeAnew(database.whole("SELECT max(id) FROM documents"));
    setVersion(database);
    transaction.commit();
} catch (const DamagedRecord& error) {
    throw DatabaseError(DatabaseError::Cause::damaged, error.what());
}

Database openOwnFile(const std::filesystem::path& file, const std::string& name)
{
    Database database(file);
    const std::int64_t application = database.whole("PRAGMA application_id");
    const std::int64_t version = database.whole("PRAGMA user_version");
    if (application == 0 && version == 0 && database.whole("SELECT count(*) FROM sqlite_schema") == 0) {
        makeTables(database);
    } else if (application != applicationId) {
        throw DatabaseError(DatabaseError::Cause::notADatabase, {});
    } else if (version > schemaVersion) {
        throw std::runtime_error(name + " was written by a later version of this program (its format is " +
                                 std::to_string(version) + ", this program knows " +
                                 std::to_string(schemaVersion) + "); use that one.");
    } else if (version < schemaVersion) {
        bringUpToDate(database);
    }
    database.takeOverPages();
    return database;
}

} // namespace

HolderNote::HolderNote(const std::filesystem::path& file) : note(noteOf(file))
{
    std::ofstream(note) << "process " << getpid();
}

HolderNote::~HolderNote()
{
    std::error_code ignored;
    std::filesystem::remove(note, ignored);
}

std::string HolderNote::read(const std::filesystem::path& file)
{
    std::string holder;
    std::ifstream stream(noteOf(file));
    return std::getline(stream, holder) ? holder : "another process";
}

std::filesystem::path HolderNote::noteOf(const std::filesystem::path& file)
{
    std::filesystem::path note = file;
    note += "-holder";
    return note;
}

std::string sentenceOfDamage(const std::string& name, std::string_view why)
{
    return (name + " is damaged: ")
        .append(why)
        .append("; put a copy of it there that is whole, or give another folder.");
}

Database openMemoryFile(const std::filesystem::path& file, const std::string& name)
{
    try {
        return openOwnFile(file, name);
    } catch (const DatabaseError& error) {
        switch (error.cause) {
        case DatabaseError::Cause::inUse:
            throw std::runtime_error(name + " is in use by " + HolderNote::read(file) +
                                     "; end that one first, or give this printer another folder.");
        case DatabaseError::Cause::notADatabase:
            throw std::runtime_error(name + " is no such memory; give another folder.");
        case DatabaseError::Cause::damaged:
            throw std::runtime_error(sentenceOfDamage(name, error.what()));
        case DatabaseError::Cause::cannotBeOpened:
            throw std::runtime_error(name + " cannot be opened: " + error.what() +
                                     "; give a folder that is there and that you may write to.");
        case DatabaseError::Cause::readOnly:
            throw std::runtime_error(name + " may not be written; allow it, or give another folder.");
        case DatabaseError::Cause::other:
            break;
        }
        throw std::runtime_error(name + " cannot be opened: " + error.what() +
                                 "; make room on its disk, or give another folder.");
    }
}

Database openTemporaryMemory()
{
    Database database;
    makeTables(database);
    return database;
}

} // namespace virtual_printer
