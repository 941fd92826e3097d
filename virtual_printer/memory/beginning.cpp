#include "virtual_printer/memory/beginning.h"

namespace virtual_printer {

Beginning::Beginning(const KeptState& kept, const Journal& journal)
    : state(kept.load()), backup(kept.backup()), ends(journal.ends())
{
}

void Beginning::copyBefore(const Database& changed)
{
    if (!copy) {
        Database all;
        all.copyFrom(changed);
        copy.emplace(std::move(all));
    }
}

void Beginning::bringBack(Database& database, const KeptState& kept, const Journal& journal) const
{
    if (copy) {
        database.copyFrom(*copy);
    }
    database.synchronizeCommits(true);
    Transaction transaction(database);
    journal.cutBehind(ends);
    kept.replace(state, backup);
    transaction.commit();
}

} // namespace virtual_printer
