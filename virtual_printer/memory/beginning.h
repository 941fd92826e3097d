// What a memory held at some moment, to go back to: the state, and how far the journal went, as a memory only
// grows. Before anything takes away from it after all, everything is copied.
#pragma once

#include "virtual_printer/fiscal/state.h"
#include "virtual_printer/memory/journal.h"
#include "virtual_printer/memory/kept_state.h"

#include <optional>

namespace virtual_printer {

class Beginning
{
public:
    Beginning(const KeptState& kept, const Journal& journal);

    // The memory is about to lose something that it held then.
    void copyBefore(const Database& changed);
    // Inside no transaction; whole or not at all.
    void bringBack(Database& database, const KeptState& kept, const Journal& journal) const;

private:
    void takeBack(Database& database, const KeptState& kept, const Journal& journal) const;

    std::optional<State> state;
    std::optional<Backup> backup;
    Journal::Ends ends;
    std::optional<Database> copy;
};

} // namespace virtual_printer
