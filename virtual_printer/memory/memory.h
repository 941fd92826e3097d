// What a printer keeps when it is switched off: its state, the journal of all documents and the fiscal memory
// of all closures, in one database. Whatever has been committed survives the end of the process at any
// moment; documents, closures and everything but the lines of the open receipt have also reached the disk
// when `commit` returns. Lines are not worth a synchronisation each: when power is lost, the receipt is open
// as it was at one of its lines since the last one.
#pragma once

#include "virtual_printer/fiscal/draft.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace virtual_printer {

// The database could not be written; nothing of the commit has happened.
class DiskFull : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

// What the database holds cannot be read, or is not what a printer has written.
class MemoryDamaged : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

// Which documents are wanted; what is not set does not matter.
struct DocumentQuery
{
    std::vector<Document::Kind> kinds{};
    std::optional<std::pair<int, int>> numbers{};
    std::optional<std::pair<Moment, Moment>> moments{};
    std::optional<int> closure{};
    std::optional<std::string> invoice{};
    std::optional<std::string> transaction{};
    // From the first to the last of these places in the journal, which begin with 1.
    std::optional<std::pair<std::int64_t, std::int64_t>> positions{};
    std::optional<std::string> text{}; // within a line of it (searched_lines.h)
    bool onlyLast = false;             // the newest of them
    bool newestFirst = false;
    // A page of them: so many at most, without the first ones.
    std::optional<std::int64_t> most{};
    std::int64_t skip = 0;

    bool operator==(const DocumentQuery&) const = default;
};

// From the first to the last of these places in the journal.
using PlacesInARow = std::pair<std::int64_t, std::int64_t>;

// With its place in the journal, from 1.
using DocumentReader = std::function<bool(const Document&, std::int64_t position)>;

class TextSearch;

// Settings and pictures as they were when the last closure was committed. The passwords are not in it.
struct Backup
{
    std::shared_ptr<const Settings> settings;
    std::shared_ptr<const Pictures> pictures;
};

// Whatever it throws has a sentence for the user: what failed, why, and what to do. Everything that only
// reads throws MemoryDamaged.
class Memory
{
public:
    // In a database of its own that goes with the object.
    Memory();
    // In the file, which is made when it is not there. Throws std::runtime_error: another process holds it,
    // it is of a later version, it is no such file, it may not be written, it is damaged.
    explicit Memory(const std::filesystem::path& file);
    ~Memory();
    Memory(Memory&&) noexcept;
    Memory& operator=(Memory&&) noexcept;
    Memory(const Memory&) = delete;
    Memory& operator=(const Memory&) = delete;

    // The state as it was committed last; nothing in a new database.
    [[nodiscard]] std::optional<State> load() const;

    // One transaction: the parts of the state that changed, the documents and closures that are done, the
    // service. `before` is the state that was committed last. Synchronised to the disk unless all that
    // changed is the receipt that is open. A closure backs up settings and pictures. Throws DiskFull.
    void commit(const State& before, const Draft& draft);

    // What Draft::Service::restore is for: the caller puts it into the draft's state before the commit.
    // Nothing before the first closure.
    [[nodiscard]] std::optional<Backup> backup() const;
    // Takes the place of everything that is kept, whole or not at all. Throws DiskFull.
    void copyFrom(const Memory& other);
    // Remembers what is kept now, at no cost while it only grows, to go back to it, as often as one likes,
    // whatever has been committed or copied since. Throws DiskFull.
    void remember();
    void goBack();
    // Beyond this many bytes the disk is full.
    void limitSize(std::int64_t bytes);

    // One after the other, until the reader returns false: a whole journal need not be held at once.
    void read(const DocumentQuery& query, const DocumentReader& reader) const;
    [[nodiscard]] std::vector<Document> documents(const DocumentQuery& query) const;
    // For a reading that goes on piece by piece (journal_reading.h): where the documents are that are wanted,
    // from the first on, of a query without a text and an order. All of them, or nothing when they are more
    // than `most`; or those of a query with positions and a page, by going through these positions.
    [[nodiscard]] std::optional<std::vector<PlacesInARow>> fewPlacesOf(const DocumentQuery& query,
                                                                       std::size_t most) const;
    [[nodiscard]] std::vector<PlacesInARow> nextPlacesOf(const DocumentQuery& query) const;
    [[nodiscard]] std::int64_t lastPlace() const; // 0 without a document
    // The one at a place, if there is one.
    [[nodiscard]] std::optional<Document> documentAt(std::int64_t place) const;
    // Another one when the journal has been cleared or replaced: places mean other documents then.
    [[nodiscard]] std::uint64_t journalNumber() const;
    // One more step of a search for a text; false when there is a further one. `read` makes them all at once.
    bool goOn(TextSearch& search) const;
    // Numbers only: for look-ups.
    [[nodiscard]] std::vector<int> numbersOf(const DocumentQuery& query) const;
    [[nodiscard]] std::vector<Closure> closures(std::optional<std::pair<int, int>> numbers,
                                                std::optional<std::pair<Moment, Moment>> moments) const;
    // Whether the documents of this closure still have the checksum that the closure keeps of them; also when
    // the journal has been cleared since. False when there is no such closure.
    [[nodiscard]] bool isJournalWhole(int closure) const;

private:
    struct Contents;
    std::unique_ptr<Contents> contents;
};

} // namespace virtual_printer
