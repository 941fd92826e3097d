// The printer's state in the database: one row for each part, and for the open receipt one more for each of
// its lines, so that a sold item writes one line and not the receipt again.
#pragma once

#include "virtual_printer/fiscal/state.h"
#include "virtual_printer/memory/database.h"
#include "virtual_printer/memory/memory.h"

#include <optional>
#include <string_view>

namespace virtual_printer {

// Which parts are not the same in two states.
struct ChangedParts
{
    ChangedParts(const State& before, const State& next);

    bool standing;
    bool settings;
    bool pictures;
    bool receipt;
};

class KeptState
{
public:
    explicit KeptState(const Database& shared);

    [[nodiscard]] std::optional<State> load() const;
    // No state has been kept yet.
    [[nodiscard]] bool isEmpty() const;
    void write(const ChangedParts& changed, const State& before, const State& next) const;

    // These in place of everything.
    void replace(const std::optional<State>& state, const std::optional<Backup>& backup) const;

    // Keeps settings and pictures as they are now, in place of the last backup; the passwords not.
    void backUp() const;
    void forgetBackup() const;
    [[nodiscard]] std::optional<Backup> backup() const;

private:
    template <typename Part>
    std::shared_ptr<const Part> loadPart(std::string_view name) const;
    [[nodiscard]] std::shared_ptr<const Receipt> loadReceipt() const;
    void writeReceipt(const Receipt* before, const Receipt* next) const;

    const Database& database;
    Statement writePart;
    Statement readPart;
    Statement copyPart;
    Statement removePart;
    Statement writeReceiptRow;
    Statement readReceipt;
    Statement cutReceipt;
};

} // namespace virtual_printer
