#include "virtual_printer/memory/database.h"

#include <sqlite3.h>

namespace virtual_printer {
namespace {

// Each page that a commit touches goes whole into the log: with small ones a commit costs half.
constexpr std::int64_t bytesOfPage = 1024;
constexpr const char* choosePage = "PRAGMA page_size = 1024";
constexpr const char* chooseLog = "PRAGMA journal_mode = WAL";

// One thread uses all databases of the process: no locks around them, and no count of their memory, which
// needs one. Only before the first database is opened; a process that has used one already goes on as it is.
bool configure()
{
    return sqlite3_config(SQLITE_CONFIG_SINGLETHREAD) == SQLITE_OK &&
           sqlite3_config(SQLITE_CONFIG_MEMSTATUS, 0) == SQLITE_OK;
}

DatabaseError::Cause causeOf(int code)
{
    switch (code) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return DatabaseError::Cause::inUse;
    case SQLITE_NOTADB:
        return DatabaseError::Cause::notADatabase;
    case SQLITE_CORRUPT:
    case SQLITE_ERROR: // a table that is not there
        return DatabaseError::Cause::damaged;
    case SQLITE_CANTOPEN:
        return DatabaseError::Cause::cannotBeOpened;
    case SQLITE_READONLY:
        return DatabaseError::Cause::readOnly;
    default:
        return DatabaseError::Cause::other;
    }
}

[[noreturn]] void fail(sqlite3* connection)
{
    const int code = sqlite3_errcode(connection);
    throw DatabaseError(causeOf(code), sqlite3_errmsg(connection));
}

[[noreturn]] void fail(sqlite3_stmt* statement)
{
    fail(sqlite3_db_handle(statement));
}

struct Binding // of one parameter
{
    sqlite3_stmt* statement;
    int index;

    int operator()(std::monostate /*none*/) const { return sqlite3_bind_null(statement, index); }
    int operator()(std::int64_t value) const { return sqlite3_bind_int64(statement, index, value); }
    int operator()(std::string_view text) const
    {
        return sqlite3_bind_text64(statement, index, text.data(), text.size(), SQLITE_STATIC, SQLITE_UTF8);
    }
    int operator()(Bytes value) const
    {
        return sqlite3_bind_blob64(statement, index, value.bytes.data(), value.bytes.size(), SQLITE_STATIC);
    }
};

} // namespace

Rows::~Rows()
{
    sqlite3_reset(statement);
}

bool Rows::next()
{
    const int code = sqlite3_step(statement);
    if (code != SQLITE_ROW && code != SQLITE_DONE) {
        fail(statement);
    }
    return code == SQLITE_ROW;
}

bool Rows::isNull(int column) const
{
    return sqlite3_column_type(statement, column) == SQLITE_NULL;
}

std::int64_t Rows::whole(int column) const
{
    return sqlite3_column_int64(statement, column);
}

std::string_view Rows::bytes(int column) const
{
    const auto* const first = static_cast<const char*>(sqlite3_column_blob(statement, column));
    return {first, static_cast<std::size_t>(sqlite3_column_bytes(statement, column))};
}

void Statement::Finalize::operator()(sqlite3_stmt* prepared) const
{
    sqlite3_finalize(prepared);
}

void Statement::run(std::span<const Parameter> parameters) const
{
    Rows all = rows(parameters);
    while (all.next()) {
    }
}

Rows Statement::rows(std::span<const Parameter> parameters) const
{
    int index = 0;
    for (const Parameter& parameter : parameters) {
        if (std::visit(Binding{statement.get(), ++index}, parameter) != SQLITE_OK) {
            fail(statement.get());
        }
    }
    return Rows(statement.get());
}

void Database::Close::operator()(sqlite3* opened) const
{
    sqlite3_close(opened);
}

Database::Database()
{
    open("");
    run("PRAGMA journal_mode = MEMORY");
}

Database::Database(const std::filesystem::path& file)
{
    const std::u8string name = file.u8string();
    open(std::string(name.begin(), name.end()));
    run(chooseLog);
    run("PRAGMA synchronous = FULL");
}

void Database::open(const std::string& name)
{
    [[maybe_unused]] static const bool isWithoutLocks = configure();
    sqlite3* opened = nullptr;
    const int code = sqlite3_open_v2(
        name.c_str(), &opened, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX, nullptr);
    connection.reset(opened);
    if (code != SQLITE_OK) {
        fail(opened);
    }
    if (sqlite3_db_readonly(opened, "main") != 0) {
        throw DatabaseError(DatabaseError::Cause::readOnly, "read-only");
    }
    run(choosePage); // of a new file; one that is there keeps its own
    // Before anything reads the file: the log then needs no memory shared with other processes.
    run("PRAGMA locking_mode = EXCLUSIVE");
    run("PRAGMA cache_size = -1000"); // kilobytes: fifty printers in a process must not take what they like
    begin = prepare("BEGIN IMMEDIATE");
    commit = prepare("COMMIT");
}

Statement Database::prepare(std::string_view sql) const
{
    sqlite3_stmt* prepared = nullptr;
    if (sqlite3_prepare_v3(connection.get(), sql.data(), static_cast<int>(sql.size()),
                           SQLITE_PREPARE_PERSISTENT, &prepared, nullptr) != SQLITE_OK) {
        fail(connection.get());
    }
    Statement statement;
    statement.statement.reset(prepared);
    return statement;
}

void Database::run(const char* sql) const
{
    if (sqlite3_exec(connection.get(), sql, nullptr, nullptr, nullptr) != SQLITE_OK) {
        fail(connection.get());
    }
}

std::int64_t Database::lastRow() const
{
    return sqlite3_last_insert_rowid(connection.get());
}

std::int64_t Database::whole(std::string_view sql) const
{
    const Statement statement = prepare(sql);
    Rows rows = statement.rows();
    return rows.next() ? rows.whole(0) : 0;
}

void Database::synchronizeCommits(bool areSynchronized)
{
    if (areSynchronized != isSynchronized) {
        run(areSynchronized ? "PRAGMA synchronous = FULL" : "PRAGMA synchronous = NORMAL");
        isSynchronized = areSynchronized;
    }
}

void Database::copyFrom(const Database& other)
{
    synchronizeCommits(true);
    sqlite3_backup* copy = sqlite3_backup_init(connection.get(), "main", other.connection.get(), "main");
    if (copy == nullptr) {
        fail(connection.get());
    }
    constexpr int allPages = -1;
    sqlite3_backup_step(copy, allPages);
    if (sqlite3_backup_finish(copy) != SQLITE_OK) {
        fail(connection.get());
    }
}

void Database::takeOverPages() const
{
    if (whole("PRAGMA page_size") == bytesOfPage) {
        return;
    }
    try {
        run("PRAGMA journal_mode = DELETE"); // the log fixes the size of a page
        run(choosePage);
        run("VACUUM");
    } catch (const DatabaseError& error) {
        if (error.cause != DatabaseError::Cause::other) {
            throw;
        }
    }
    sqlite3_exec(connection.get(), chooseLog, nullptr, nullptr,
                 nullptr); // or goes on without, for want of room
}

void Database::limitSize(std::int64_t bytes) const
{
    const std::int64_t pageSize = whole("PRAGMA page_size");
    const std::int64_t pages = pageSize == 0 ? 1 : bytes / pageSize;
    run(("PRAGMA max_page_count = " + std::to_string(pages)).c_str());
}

void Database::rollBack(bool wasCommitting) const
{
    if (sqlite3_get_autocommit(connection.get()) == 0) {
        sqlite3_exec(connection.get(), "ROLLBACK", nullptr, nullptr, nullptr);
    }
    if (wasCommitting) {
        // The log may end with all of a commit that then could not be synchronised and was refused: cut off,
        // it cannot come back at the next start.
        sqlite3_wal_checkpoint_v2(connection.get(), nullptr, SQLITE_CHECKPOINT_TRUNCATE, nullptr, nullptr);
    }
}

Transaction::Transaction(const Database& changed) : database(changed)
{
    database.begin.run();
}

Transaction::~Transaction()
{
    if (stage != Stage::done) {
        database.rollBack(stage == Stage::committing);
    }
}

void Transaction::commit()
{
    stage = Stage::committing;
    database.commit.run();
    stage = Stage::done;
}

} // namespace virtual_printer
