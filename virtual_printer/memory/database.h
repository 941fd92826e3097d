// One SQLite database, its statements and transactions, as objects that clean up after themselves; the only
// place that knows SQLite's header. Users: the other files of this room.
#pragma once

#include <cstdint>
#include <filesystem>
#include <initializer_list>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <variant>

struct sqlite3;
struct sqlite3_stmt;

namespace virtual_printer {

// SQLite could not do what it was asked for; nothing of it has been done.
class DatabaseError : public std::runtime_error
{
public:
    enum class Cause
    {
        inUse, // by another process, or another object of ours
        notADatabase,
        damaged,
        cannotBeOpened,
        readOnly,
        other // a full or broken disk most of all
    };

    DatabaseError(Cause found, const std::string& sentence) : runtime_error(sentence), cause(found) {}

    Cause cause;
};

struct Bytes // a text is kept as text, these as they are
{
    std::string_view bytes;
};
// What stands for a `?` of a statement; monostate is no value at all.
using Parameter = std::variant<std::monostate, std::int64_t, std::string_view, Bytes>;
using Parameters = std::initializer_list<Parameter>;

// What a statement finds, row by row. It must go before the statement is used again.
class Rows
{
public:
    explicit Rows(sqlite3_stmt* running) : statement(running) {}
    ~Rows();
    Rows(const Rows&) = delete;
    Rows& operator=(const Rows&) = delete;

    // False when there is no further row; before the first row it must be called once.
    bool next();
    [[nodiscard]] bool isNull(int column) const;
    [[nodiscard]] std::int64_t whole(int column) const;
    // Until the next row.
    [[nodiscard]] std::string_view bytes(int column) const;

private:
    sqlite3_stmt* statement;
};

class Statement
{
public:
    // Throws DatabaseError, as `rows` and `next` do. What it changes is rolled back with the transaction.
    void run(Parameters parameters = {}) const { run(std::span(parameters.begin(), parameters.size())); }
    void run(std::span<const Parameter> parameters) const;
    // The parameters' texts must live as long as the rows.
    [[nodiscard]] Rows rows(Parameters parameters = {}) const
    {
        return rows(std::span(parameters.begin(), parameters.size()));
    }
    [[nodiscard]] Rows rows(std::span<const Parameter> parameters) const;

private:
    friend class Database;
    struct Finalize
    {
        void operator()(sqlite3_stmt* prepared) const;
    };

    std::unique_ptr<sqlite3_stmt, Finalize> statement;
};

class Database
{
public:
    // Private to this object, gone with it: in memory while it is small, otherwise in a temporary file.
    Database();
    // The file, made when it is not there, with a write-ahead log. From here on no other process can use it.
    explicit Database(const std::filesystem::path& file);

    [[nodiscard]] Statement prepare(std::string_view sql) const;
    // Statements without parameters and rows.
    void run(const char* sql) const;
    // The number of the row that was inserted last.
    [[nodiscard]] std::int64_t lastRow() const;
    // The value in the first column of the first row.
    [[nodiscard]] std::int64_t whole(std::string_view sql) const;

    // Whether a commit returns only when the disk has everything; what was committed without reaches the disk
    // with the next one that does. The log is whole at any time either way.
    void synchronizeCommits(bool areSynchronized);
    // Writes a file whose pages have another size than those of new files once more: only what has the same
    // can be copied from each other. Where there is no room for that it stays as it is.
    void takeOverPages() const;
    // Everything that the other one holds takes the place of everything here, at once or not at all.
    void copyFrom(const Database& other);
    // Refuses to grow beyond this many bytes, as a full disk would.
    void limitSize(std::int64_t bytes) const;

private:
    friend class Transaction;
    void open(const std::string& name);
    void rollBack(bool wasCommitting) const;

    struct Close
    {
        void operator()(sqlite3* opened) const;
    };

    std::unique_ptr<sqlite3, Close> connection;
    Statement begin;
    Statement commit;
    bool isSynchronized = true;
};

// Everything between its making and `commit` happens whole or not at all.
class Transaction
{
public:
    explicit Transaction(const Database& changed);
    ~Transaction();
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    void commit();

private:
    enum class Stage
    {
        changing,
        committing,
        done
    };

    const Database& database;
    Stage stage = Stage::changing;
};

} // namespace virtual_printer
