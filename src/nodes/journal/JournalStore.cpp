#include "nodes/journal/JournalStore.h"

#include "nodes/journal/SqliteJournal.h"
#include "nodes/journal/postgresql/PostgresJournal.h"

namespace Nodes {

StoreTable<JournalStore> &JournalStores()
{
    static StoreTable<JournalStore> stores = [] {
        StoreTable<JournalStore> builtIn;
        builtIn.Add("",
                    [](const std::string &file) { return std::make_unique<SqliteJournal>(file); });
        for (const char *scheme : PostgresLocation::Schemes)
            builtIn.Add(scheme, [](const std::string &location) {
                return std::make_unique<PostgresJournal>(location);
            });
        return builtIn;
    }();
    return stores;
}

} // namespace Nodes
