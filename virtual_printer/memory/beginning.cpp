#include "virtual_printer/memory/beginning.h"

namespace virtual_printer {

Beginning::Beginning(const KeptState& kept, const Journal& journal)
    : state(kept.load()), backup(kept.backup()), ends(journal.ends())
{
}

void Beginning::copyBefore(const Database& changed)
{
    if (copy) {
        return;
    }
    Database all;
    all.copyFrom(changed);
    takeBack(all, KeptState(all),
             Journal(all)); // what has come since, so that it is brought back in one step
    copy.emplace(std::move(all));
}

void Beginning::bringBack(Database& database, const KeptState& kept, const Journal& journal) const
{
    if (copy) {
        database.copyFrom(*copy);
    } else {
        takeBack(database, kept, journal);
    }
}

void Beginning::takeBack(Database& database, const KeptState& kept, const Journal& journal) const
{
    database.synchronizeCommits(true);
    Transaction transaction(database);
    journal.cutBehind(ends);
    kept.replace(state, backup);
    transaction.commit();
}

} // namespace virtual_printer
