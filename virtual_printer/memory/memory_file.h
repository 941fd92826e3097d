// Opening the database of a memory: who holds it, whose it is, which version, and its tables.
#pragma once

#include "virtual_printer/memory/database.h"

#include <filesystem>
#include <string>
#include <string_view>

namespace virtual_printer {

// Says to other processes which one holds a file, by a small file beside it. It holds nothing itself: when
// its process was killed it stays and means nothing.
class HolderNote
{
public:
    explicit HolderNote(const std::filesystem::path& file);
    ~HolderNote();
    HolderNote(const HolderNote&) = delete;
    HolderNote& operator=(const HolderNote&) = delete;

    // "process 1234", as far as it is known.
    static std::string read(const std::filesystem::path& file);

private:
    static std::filesystem::path noteOf(const std::filesystem::path& file);

    std::filesystem::path note;
};

// Held by this process from here on. Throws std::runtime_error with a sentence for the user, in which the
// memory has this name.
Database openMemoryFile(const std::filesystem::path& file, const std::string& name);
// With the tables, for a memory that is not kept.
Database openTemporaryMemory();

// For the user.
std::string sentenceOfDamage(const std::string& name, std::string_view why);

} // namespace virtual_printer
