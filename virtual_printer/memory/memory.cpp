#include "virtual_printer/memory/memory.h"

#include "virtual_printer/memory/beginning.h"
#include "virtual_printer/memory/journal.h"
#include "virtual_printer/memory/kept_state.h"
#include "virtual_printer/memory/memory_file.h"
#include "virtual_printer/memory/record.h"

namespace virtual_printer {

namespace {

// What reading gives; a database that cannot be read is damaged.
template <typename Read>
auto readFrom(const std::string& name, Read read)
{
    try {
        return read();
    } catch (const DatabaseError& error) {
        throw MemoryDamaged(sentenceOfDamage(name, error.what()));
    } catch (const DamagedRecord& error) {
        throw MemoryDamaged(sentenceOfDamage(name, error.what()));
    }
}

} // namespace

struct Memory::Contents
{
    Contents(Database opened, std::string called)
        : name(std::move(called)), database(std::move(opened)), state(database), journal(database)
    {
    }

    // Something of it is about to go.
    void copyBeginning()
    {
        if (beginning) {
            beginning->copyBefore(database);
        }
    }

    std::string name; // for the user
    Database database;
    KeptState state;
    Journal journal;
    bool isEmpty = state.isEmpty(); // no state has been kept yet
    std::uint64_t journalNumber = 0;
    std::optional<Beginning> beginning;
    std::optional<HolderNote> note; // goes first: afterwards the next holder's may lie there
};

Memory::Memory() : contents(std::make_unique<Contents>(openTemporaryMemory(), "The printer's memory")) {}

Memory::Memory(const std::filesystem::path& file)
{
    const std::string name = "The printer's memory " + file.string();
    Database database = openMemoryFile(file, name);
    contents = readFrom(name, [&] { return std::make_unique<Contents>(std::move(database), name); });
    contents->note.emplace(file);
}

Memory::~Memory() = default;
Memory::Memory(Memory&&) noexcept = default;
Memory& Memory::operator=(Memory&&) noexcept = default;

std::optional<State> Memory::load() const
{
    return readFrom(contents->name, [&] { return contents->state.load(); });
}

void Memory::commit(const State& before, const Draft& draft)
try {
    ChangedParts changed(before, draft.next);
    if (contents->isEmpty) {
        changed.standing = changed.settings = changed.pictures = true;
    }
    const bool changesOnlyReceipt = !changed.standing && !changed.settings && !changed.pictures &&
                                    draft.documents.empty() && draft.closures.empty() &&
                                    draft.service == Draft::Service::none;
    if (changesOnlyReceipt && !changed.receipt) {
        return;
    }
    if (draft.service == Draft::Service::clearJournal || draft.service == Draft::Service::clearClosures) {
        contents->copyBeginning();
    }
    contents->database.synchronizeCommits(!changesOnlyReceipt);
    Transaction transaction(contents->database);
    if (draft.service == Draft::Service::clearJournal) {
        contents->journal.clearDocuments();
    } else if (draft.service == Draft::Service::clearClosures) {
        contents->journal.clearClosures();
        contents->state.forgetBackup(); // it was that of a closure
    }
    contents->state.write(changed, before, draft.next);
    for (const Document& document : draft.documents) {
        contents->journal.keep(document);
    }
    for (const Closure& closure : draft.closures) {
        contents->journal.keep(closure);
    }
    if (!draft.closures.empty()) {
        contents->state.backUp();
    }
    transaction.commit();
    contents->isEmpty = false;
    if (draft.service == Draft::Service::clearJournal) {
        ++contents->journalNumber;
    }
} catch (const DatabaseError& error) {
    throw DiskFull(contents->name + " could not be written: " + error.what() +
                   "; make room on its disk, or give another folder.");
}

std::optional<Backup> Memory::backup() const
{
    return readFrom(contents->name, [&] { return contents->state.backup(); });
}

void Memory::copyFrom(const Memory& other)
try {
    contents->copyBeginning();
    contents->database.copyFrom(other.contents->database);
    ++contents->journalNumber;
    contents->isEmpty = other.contents->isEmpty;
} catch (const DatabaseError& error) {
    throw DiskFull(contents->name + " could not be written: " + error.what() +
                   "; make room on its disk, or give another folder.");
}

void Memory::remember()
{
    contents->beginning =
        readFrom(contents->name, [&] { return Beginning(contents->state, contents->journal); });
}

void Memory::goBack()
try {
    contents->beginning->bringBack(contents->database, contents->state, contents->journal);
    ++contents->journalNumber;
    contents->isEmpty = contents->state.isEmpty();
} catch (const DatabaseError& error) {
    throw DiskFull(contents->name + " could not be written: " + error.what() +
                   "; make room on its disk, or give another folder.");
}

void Memory::limitSize(std::int64_t bytes)
{
    contents->database.limitSize(bytes);
}

void Memory::read(const DocumentQuery& query, const DocumentReader& reader) const
{
    readFrom(contents->name, [&] { contents->journal.read(query, reader); });
}

std::vector<Document> Memory::documents(const DocumentQuery& query) const
{
    std::vector<Document> found;
    read(query, [&](const Document& document, std::int64_t /*position*/) {
        found.push_back(document);
        return true;
    });
    return found;
}

std::int64_t Memory::lastPlace() const
{
    return readFrom(contents->name, [&] { return contents->journal.ends().document; });
}

std::optional<std::vector<PlacesInARow>> Memory::fewPlacesOf(const DocumentQuery& query,
                                                             std::size_t most) const
{
    return readFrom(contents->name, [&] { return contents->journal.fewPlacesOf(query, most); });
}

std::vector<PlacesInARow> Memory::nextPlacesOf(const DocumentQuery& query) const
{
    return readFrom(contents->name, [&] { return contents->journal.nextPlacesOf(query); });
}

std::optional<Document> Memory::documentAt(std::int64_t place) const
{
    return readFrom(contents->name, [&] { return contents->journal.documentAt(place); });
}

std::uint64_t Memory::journalNumber() const
{
    return contents->journalNumber;
}

bool Memory::goOn(TextSearch& search) const
{
    return readFrom(contents->name, [&] { return contents->journal.goOn(search); });
}

std::vector<int> Memory::numbersOf(const DocumentQuery& query) const
{
    return readFrom(contents->name, [&] { return contents->journal.numbersOf(query); });
}

std::vector<Closure> Memory::closures(std::optional<std::pair<int, int>> numbers,
                                      std::optional<std::pair<Moment, Moment>> moments) const
{
    return readFrom(contents->name, [&] { return contents->journal.closures(numbers, moments); });
}

bool Memory::isJournalWhole(int closure) const
{
    return readFrom(contents->name, [&] { return contents->journal.isWhole(closure); });
}

} // namespace virtual_printer
